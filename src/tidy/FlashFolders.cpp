#include "tidy/FlashFolders.h"

namespace {

void discardLower(TidyPass& pass, const TidyEntry& entry)
{
    pass.discard(entry, TidyDecision::LowerVersion, QStringLiteral("LowVersion remove"),
                 entry.path);
}

} // namespace

bool FlashFolders::keepHighest(TidyPass& pass, const TidyEntry& entry,
                               const CacheNames::VersionedName& flash, QMap<QString, QString>& seen)
{
    const auto highest = seen.find(flash.name);
    if (highest == seen.end()) {
        pass.keep(entry, TidyDecision::HighestVersion, &TidyCounts::use);
        seen.insert(flash.name, flash.version);
        return true;
    }
    const qint64 version = flash.version.toLongLong();
    const qint64 highestVersion = highest->toLongLong();
    if (version < highestVersion)
        discardLower(pass, entry);
    if (version == highestVersion)
        pass.keep(entry, TidyDecision::EqualVersion, nullptr);
    if (version <= highestVersion)
        return false;
    pass.keep(entry, TidyDecision::HighestVersion, nullptr);
    const CacheNames::VersionedName lower {flash.name, *highest};
    *highest = flash.version;
    discardLower(pass, pass.entry(lower.in(pass.folder()), lower.whole()));
    return true;
}

void FlashFolders::sweepTemporary(const QString& title, const QString& folder, TidyPlan* plan)
{
    TidyPass pass(title + QStringLiteral(" tmp"), QStringLiteral("%1/tmp").arg(folder),
                  TidyPass::Files, plan);
    pass.run({TidyPass::Removed, TidyPass::Delayed},
             [&pass](const TidyEntry& entry) { pass.discardTemporary(entry); });
}
