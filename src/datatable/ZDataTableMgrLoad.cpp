#include "datatable/CacheFolders.h"
#include "datatable/LogCategories.h"
#include "datatable/TableCatalogue.h"
#include "datatable/TableList.h"
#include "datatable/TableRows.h"
#include "datatable/ZDataTableMgr.h"

#include <QFile>
#include <QFileInfo>

namespace {

void describe(const TableEntry& entry, TableStatus& status)
{
    status.table = QString::fromUtf8(entry.reader.table);
    status.manager = QString::fromUtf8(entry.reader.manager);
    status.loader = QString::fromUtf8(entry.reader.loader);
    status.loadedAtStart = entry.title != nullptr;
    status.declaration = &entry.reader.declaration();
}

/** Why a manager has refused the file. */
QString faultOf(const QString& path, const TableDeclaration& declaration)
{
    if (!QFileInfo::exists(path))
        return QStringLiteral("%1 is not there").arg(path);
    TableRows table;
    QString cause;
    if (!table.read(path, &cause))
        return cause.isEmpty() ? QStringLiteral("%1 is no table").arg(path) : cause;
    return QStringLiteral("%1 has no column \"%2\"")
        .arg(path, declaration.missingColumn(table.header));
}

void addLoad(const QMap<QString, QString>& errors, TableStatus& status)
{
    const auto error = errors.constFind(status.table);
    if (error == errors.constEnd())
        return;
    status.state = error->isEmpty() ? TableStatus::Loaded : TableStatus::Failed;
    if (!error->isEmpty())
        status.error = *error;
}

} // namespace

bool ZDataTableMgr::loadAllTables()
{
    for (const TableEntry& entry : tableList()) {
        if (entry.title == nullptr)
            continue;
        if (entry.before != nullptr)
            entry.before();
        const auto type = static_cast<EDataTable::EDataTableType>(entry.reader.kind);
        if (!load(entry, getTablePath(type)) && entry.essential)
            return false;
        if (entry.afterwards != nullptr)
            entry.afterwards();
    }
    return true;
}

bool ZDataTableMgr::loadTable(EDataTable::EDataTableType type)
{
    const TableEntry* entry = tableEntry(TableCatalogue::name(type));
    return entry != nullptr && load(*entry, getTablePath(type));
}

bool ZDataTableMgr::loadUnversionedTable(const QString& table, const QString& path)
{
    const TableEntry* entry = tableEntry(table);
    return entry != nullptr && entry->reader.kind < 0 && load(*entry, path);
}

bool ZDataTableMgr::load(const TableEntry& entry, const QString& path)
{
    const bool loaded = entry.reader.load(path);
    const QString table = QString::fromUtf8(entry.reader.table);
    const QString error = loaded ? QString() : faultOf(path, entry.reader.declaration());
    m_loadErrors.insert(table, error);
    if (!loaded && entry.essential && m_removesRefused)
        QFile::remove(path);
    if (entry.title != nullptr) {
        const QString outcome = loaded ? QStringLiteral("加载成功") : QStringLiteral("加载失败");
        qCDebug(LogCategories::load).noquote()
            << QString::fromUtf8(entry.title) + outcome << QFileInfo(path).fileName();
    }
    tellLoad(entry.reader.kind, table, error);
    return loaded;
}

void ZDataTableMgr::tellLoad(int kind, const QString& table, const QString& error)
{
    const int version = m_versions.value(kind);
    if (error.isEmpty())
        Q_EMIT sigTableLoaded(table, kind, version);
    else
        Q_EMIT sigTableFailed({TableFailure::Load, table, kind, version, QString(), 0, error,
                               QDateTime::currentDateTimeUtc()});
}

void ZDataTableMgr::loadGiftTable()
{
    updateGiftDataTable().then([this] { loadTable(EDataTable::CS_GiftList); }).fail([] {
    }); // the update has logged why
}

QVector<TableStatus> ZDataTableMgr::getTableStatuses() const
{
    QVector<TableStatus> statuses;
    for (const EDataTable::EDataTableType type : TableCatalogue::types())
        statuses.append(getTableStatus(type));
    for (const TableEntry& entry : tableList()) {
        if (entry.reader.kind >= 0)
            continue;
        TableStatus status;
        describe(entry, status);
        addUpdate(status);
        addLoad(m_loadErrors, status);
        statuses.append(status);
    }
    return statuses;
}

TableStatus ZDataTableMgr::getTableStatus(EDataTable::EDataTableType type) const
{
    TableStatus status;
    status.kind = type;
    status.table = TableCatalogue::name(type);
    if (status.table.isEmpty())
        return status;
    status.version = getTableVersion(type);
    status.path = CacheFolders::tables() + fileNameOf(urlOf(type, status.version));
    const QFileInfo file(status.path);
    status.size = file.isFile() ? file.size() : 0;
    addUpdate(status);
    if (const TableEntry* entry = tableEntry(status.table))
        describe(*entry, status);
    addLoad(m_loadErrors, status);
    return status;
}

void ZDataTableMgr::addUpdate(TableStatus& status) const
{
    status.error = m_updateErrors.value(status.table);
    status.lastFailure = m_failures.value(status.table);
}
