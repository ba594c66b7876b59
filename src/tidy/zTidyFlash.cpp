#include "tidy/zTidyFlash.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/LogCategories.h"
#include "tidy/FlashFolders.h"
#include "tidy/TidyPass.h"

using CacheNames::VersionedName;

namespace {

QString title()
{
    return QStringLiteral("tidy flash");
}

} // namespace

zTidyFlash::zTidyFlash()
    : m_folder(CacheFolders::flashes())
{
}

void zTidyFlash::setUseNames(const QStringList& names)
{
    for (const QString& name : names) {
        const auto flash = VersionedName::split(name);
        if (flash.isValid())
            m_prepare.insert(flash.name, flash.version);
        else
            qCInfo(LogCategories::tidy).noquote()
                << QStringLiteral("tidy flash invalid prepare") << name;
    }
}

void zTidyFlash::tidy()
{
    TidyPass pass(title(), m_folder, TidyPass::Folders);
    pass.run(
        {TidyPass::Used, TidyPass::Removed, TidyPass::Delayed, TidyPass::Ignored},
        [&](const TidyEntry& entry) { tidyFolder(pass, entry); },
        [&] { FlashFolders::sweepTemporary(title(), m_folder); });
}

void zTidyFlash::tidyFolder(TidyPass& pass, const TidyEntry& entry)
{
    const auto flash = VersionedName::split(entry.name);
    if (!flash.isValid()) {
        ++pass.counts().ignored;
        if (entry.name.endsWith(QLatin1Char('_')))
            pass.removeArchiveIfOld(entry);
        return;
    }
    const QString configured = m_prepare.value(flash.name);
    if (configured.isEmpty()) {
        if (FlashFolders::keepHighest(pass, entry, flash, m_seen))
            pass.removeArchiveIfOld(entry);
        return;
    }
    if (flash.version != configured) {
        pass.discard(entry, QStringLiteral("prepare remove"), entry.path);
        return;
    }
    ++pass.counts().use;
    pass.removeArchiveIfOld(entry);
}
