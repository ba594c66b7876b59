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

using Versions = QMap<QString, QString>; // by the flashes' names

void tidyFolder(TidyPass& pass, const TidyEntry& entry, const Versions& prepare, Versions& seen)
{
    const auto flash = VersionedName::split(entry.name);
    if (!flash.isValid()) {
        pass.keep(entry, TidyDecision::NoVersion, &TidyCounts::ignored);
        if (entry.name.endsWith(QLatin1Char('_')))
            pass.removeArchiveIfOld(entry);
        return;
    }
    const QString configured = prepare.value(flash.name);
    if (configured.isEmpty()) {
        if (FlashFolders::keepHighest(pass, entry, flash, seen))
            pass.removeArchiveIfOld(entry);
        return;
    }
    if (flash.version != configured) {
        pass.discard(entry, TidyDecision::OtherVersion, QStringLiteral("prepare remove"),
                     entry.path);
        return;
    }
    pass.keep(entry, TidyDecision::InUse, &TidyCounts::use);
    pass.removeArchiveIfOld(entry);
}

void walk(const QString& folder, const Versions& prepare, Versions& seen, TidyPlan* plan)
{
    TidyPass pass(title(), folder, TidyPass::Folders, plan);
    pass.run(
        {TidyPass::Used, TidyPass::Removed, TidyPass::Delayed, TidyPass::Ignored},
        [&](const TidyEntry& entry) { tidyFolder(pass, entry, prepare, seen); },
        [&] { FlashFolders::sweepTemporary(title(), folder, plan); });
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
    walk(m_folder, m_prepare, m_seen, nullptr);
}

void zTidyFlash::plan(const QStringList& names, TidyPlan& plan) const
{
    Versions prepare = m_prepare;
    for (const QString& name : names) {
        const auto flash = VersionedName::split(name);
        if (flash.isValid())
            prepare.insert(flash.name, flash.version);
    }
    Versions seen = m_seen;
    walk(m_folder, prepare, seen, &plan);
}
