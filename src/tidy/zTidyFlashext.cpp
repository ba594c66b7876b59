#include "tidy/zTidyFlashext.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "tidy/FlashFolders.h"
#include "tidy/TidyPass.h"

namespace {

QString title()
{
    return QStringLiteral("tidy flashext");
}

void walk(const QString& folder, QMap<QString, QString>& seen, TidyPlan* plan)
{
    TidyPass pass(title(), folder, TidyPass::Folders, plan);
    pass.run(
        {TidyPass::Used, TidyPass::Removed, TidyPass::Delayed, TidyPass::Ignored},
        [&](const TidyEntry& entry) {
            const auto flash = CacheNames::VersionedName::split(entry.name);
            if (flash.isValid())
                FlashFolders::keepHighest(pass, entry, flash, seen);
            else
                pass.keep(entry, TidyDecision::NoVersion, &TidyCounts::ignored);
        },
        [&] { FlashFolders::sweepTemporary(title(), folder, plan); });
}

} // namespace

zTidyFlashext::zTidyFlashext()
    : m_folder(CacheFolders::extendedFlashes())
{
}

void zTidyFlashext::setUseNames(const QStringList& /*names*/) { }

void zTidyFlashext::tidy()
{
    walk(m_folder, m_seen, nullptr);
}

void zTidyFlashext::plan(TidyPlan& plan) const
{
    QMap<QString, QString> seen = m_seen;
    walk(m_folder, seen, &plan);
}
