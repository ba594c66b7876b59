#include "tidy/zTidyFlash.h"

#include "datatable/CacheNames.h"
#include "tidy/FlashFolders.h"
#include "tidy/TidyPass.h"

#include <QDebug>

using CacheNames::VersionedName;

namespace {

QString title()
{
    return QStringLiteral("tidy flash");
}

} // namespace

zTidyFlash::zTidyFlash()
    : m_folder(QStringLiteral("res/flash"))
{
}

void zTidyFlash::setUseNames(const QStringList& names)
{
    for (const QString& name : names) {
        const auto flash = VersionedName::split(name);
        if (flash.isValid())
            m_prepare.insert(flash.name, flash.version);
        else
            qInfo().noquote() << QStringLiteral("tidy flash invalid prepare") << name;
    }
}

void zTidyFlash::tidy()
{
    const TidyPass pass(title(), m_folder, TidyPass::Folders);
    if (!pass.begin())
        return;
    FlashFolders::sweepTemporary(title(), m_folder);
    TidyCounts counts;
    if (pass.walk([&](const TidyEntry& entry) { tidyFolder(pass, entry, counts); }))
        FlashFolders::logEnd(pass, counts);
}

void zTidyFlash::tidyFolder(const TidyPass& pass, const TidyEntry& entry, TidyCounts& counts)
{
    const auto flash = VersionedName::split(entry.name);
    if (!flash.isValid()) {
        ++counts.ignored;
        if (entry.name.endsWith(QLatin1Char('_')))
            pass.removeArchiveIfOld(entry);
        return;
    }
    const QString configured = m_prepare.value(flash.name);
    if (configured.isEmpty()) {
        if (FlashFolders::keepHighest(pass, entry, flash, m_seen, counts))
            pass.removeArchiveIfOld(entry);
        return;
    }
    if (flash.version != configured) {
        pass.discard(entry, QStringLiteral("prepare remove"), entry.path, counts);
        return;
    }
    ++counts.use;
    pass.removeArchiveIfOld(entry);
}
