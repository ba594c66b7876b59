#include "tidy/FlashFolders.h"

#include <QFile>

namespace {

void discardLower(TidyPass& pass, const TidyEntry& entry)
{
    pass.discard(entry, QStringLiteral("LowVersion remove"), entry.path);
}

} // namespace

bool FlashFolders::keepHighest(TidyPass& pass, const TidyEntry& entry,
                               const CacheNames::VersionedName& flash, QMap<QString, QString>& seen)
{
    const auto highest = seen.find(flash.name);
    if (highest == seen.end()) {
        ++pass.counts().use;
        seen.insert(flash.name, flash.version);
        return true;
    }
    const qint64 version = flash.version.toLongLong();
    const qint64 highestVersion = highest->toLongLong();
    if (version < highestVersion)
        discardLower(pass, entry);
    if (version <= highestVersion)
        return false;
    const CacheNames::VersionedName lower {flash.name, *highest};
    *highest = flash.version;
    discardLower(pass, pass.entry(lower.in(pass.folder()), lower.whole()));
    return true;
}

void FlashFolders::sweepTemporary(const QString& title, const QString& folder)
{
    TidyPass pass(title + QStringLiteral(" tmp"), QStringLiteral("%1/tmp").arg(folder),
                  TidyPass::Files);
    pass.run({TidyPass::Removed, TidyPass::Delayed}, [&pass](const TidyEntry& entry) {
        if (entry.age != TidyAge::Old) {
            ++pass.counts().delayed;
            return;
        }
        ++pass.counts().removed;
        if (!QFile::remove(entry.path))
            pass.logRemoval(QStringLiteral("remove"), entry.name, false);
    });
}
