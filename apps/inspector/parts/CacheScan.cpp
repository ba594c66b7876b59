#include "inspector/parts/CacheScan.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

CacheEntry readFolder(const QString& path)
{
    CacheEntry folder;
    folder.path = path;
    folder.isFolder = true;
    const auto infos = QDir(path).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot
                                                | QDir::Hidden | QDir::System);
    for (const QFileInfo& info : infos) {
        const QString inside = path + u'/' + info.fileName();
        CacheEntry entry;
        if (info.isDir() && !info.isSymLink() && !info.isJunction()) {
            entry = readFolder(inside);
        } else {
            entry.path = inside;
            entry.bytes = info.size();
            entry.files = 1;
            entry.modified = info.lastModified();
        }
        folder.bytes += entry.bytes;
        folder.files += entry.files;
        if (!folder.modified.isValid() || entry.modified > folder.modified)
            folder.modified = entry.modified;
        folder.entries.append(entry);
    }
    std::stable_sort(
        folder.entries.begin(), folder.entries.end(),
        [](const CacheEntry& left, const CacheEntry& right) { return left.bytes > right.bytes; });
    return folder;
}

} // namespace

CacheTree CacheScan::read(const QString& folder)
{
    return std::make_shared<const CacheEntry>(readFolder(folder));
}

const CacheEntry* CacheScan::find(const CacheEntry& folder, const QString& path)
{
    if (folder.path == path)
        return &folder;
    for (const CacheEntry& entry : folder.entries) {
        if (path == entry.path || path.startsWith(entry.path + u'/'))
            return find(entry, path);
    }
    return nullptr;
}
