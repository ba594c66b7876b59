#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

#include <memory>

/** A file or folder of the cache. */
struct CacheEntry
{
    QString path; ///< from the working folder
    bool isFolder = false;
    qint64 bytes = 0;   ///< of a folder with all that is in it
    int files = 0;      ///< the same; 1 for a file
    QDateTime modified; ///< of a folder that of the newest file in it; not valid when it is empty
    QVector<CacheEntry> entries; ///< the largest first

    QString name() const { return path.section(u'/', -1); }
};

using CacheTree = std::shared_ptr<const CacheEntry>;

/** Reads folders; any thread. */
namespace CacheScan {

/** All that is in a folder; links are not followed. One that is not there is empty. */
CacheTree read(const QString& folder);

/** The entry of a path below the folder or the folder itself; null when there is none. */
const CacheEntry* find(const CacheEntry& folder, const QString& path);

} // namespace CacheScan
