#include "tidy/FlashFolders.h"

#include <QFile>

namespace {

void discardLower(const TidyPass& pass, const TidyEntry& entry, TidyCounts& counts)
{
    pass.discard(entry, QStringLiteral("LowVersion remove"), entry.path, counts);
}

} // namespace

bool FlashFolders::keepHighest(const TidyPass& pass, const TidyEntry& entry,
                               const CacheNames::VersionedName& flash, QMap<QString, QString>& seen,
                               TidyCounts& counts)
{
    const auto highest = seen.find(flash.name);
    if (highest == seen.end()) {
        ++counts.use;
        seen.insert(flash.name, flash.version);
        return true;
    }
    const qint64 version = flash.version.toLongLong();
    const qint64 highestVersion = highest->toLongLong();
    if (version < highestVersion)
        discardLower(pass, entry, counts);
    if (version <= highestVersion)
        return false;
    const QString lowerName = QStringLiteral("%1_%2").arg(flash.name, *highest);
    *highest = flash.version;
    const QString lowerPath = QStringLiteral("%1/%2").arg(pass.folder(), lowerName);
    discardLower(pass, pass.entry(lowerPath, lowerName), counts);
    return true;
}

void FlashFolders::sweepTemporary(const QString& title, const QString& folder)
{
    const TidyPass pass(title + QStringLiteral(" tmp"), QStringLiteral("%1/tmp").arg(folder),
                        TidyPass::Files);
    if (!pass.begin())
        return;
    TidyCounts counts;
    const bool finished = pass.walk([&](const TidyEntry& entry) {
        if (entry.age != TidyAge::Old) {
            ++counts.delayed;
            return;
        }
        ++counts.removed;
        if (!QFile::remove(entry.path))
            pass.logRemoval(QStringLiteral("remove"), entry.name, false);
    });
    if (finished)
        pass.log(QStringLiteral("end:delete=%1,delay=%2").arg(counts.removed).arg(counts.delayed));
}

void FlashFolders::logEnd(const TidyPass& pass, const TidyCounts& counts)
{
    pass.log(QStringLiteral("end:use=%1,delete=%2,delay=%3,ignore=%4")
                 .arg(counts.use)
                 .arg(counts.removed)
                 .arg(counts.delayed)
                 .arg(counts.ignored));
}
