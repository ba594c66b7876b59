#include "inspector/parts/RawTables.h"

#include "inspector/parts/Background.h"
#include "why/RawTable.h"

namespace {

bool isSame(const Why::Origin& left, const Why::Origin& right)
{
    return left.file == right.file && left.size == right.size && left.modified == right.modified;
}

} // namespace

RawTables::File RawTables::get(const QString& table)
{
    const TableStatus status = Why::statusOf(table);
    const Why::Origin origin = Why::originOf(status);
    const auto kept = m_kept.find(table);
    if (kept == m_kept.end() || !isSame(kept->origin, origin)) {
        read(status, origin);
        return nullptr;
    }
    // Loads come and go without another file.
    kept->file = std::make_shared<const Why::RawTable>(kept->file->with(status));
    return kept->file;
}

Why::Files RawTables::filesFor(const QString& kind)
{
    QHash<QString, File> files;
    bool isAnyRead = false;
    const QStringList tables = Why::tablesOf(kind);
    for (const QString& table : tables) {
        files.insert(table, get(table));
        isAnyRead = isAnyRead || files.value(table) == nullptr;
    }
    if (isAnyRead)
        return {};
    return [files](const QString& table) { return files.value(table); };
}

void RawTables::read(const TableStatus& status, const Why::Origin& origin)
{
    if (m_reading.contains(status.table))
        return; // whoever is told asks anew, and may find that it has changed meanwhile
    m_reading.insert(status.table, origin);
    inBackground(
        *QThreadPool::globalInstance(), this,
        [status] { return std::make_shared<const Why::RawTable>(status); },
        [this](const File& file) {
            const QString table = file->status().table;
            m_kept.insert(table, {file, m_reading.take(table)});
            Q_EMIT sigRead(table);
        });
}
