#include "models/ZTableModel.h"

#include "datatable/ZDataTableMgr.h"

#include <QFileInfo>

namespace {

constexpr const char* names[] {"table",   "kind",  "version",  "size",   "modified",
                               "records", "state", "manager",  "loader", "atStart",
                               "path",    "error", "lastFault"};
static_assert(std::size(names) == ZTableModel::ColumnCount);

} // namespace

ZTableModel::ZTableModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    connect(tables, &ZDataTableMgr::sigTableLoaded, this, &ZTableModel::refreshTable);
    connect(tables, &ZDataTableMgr::sigTableUpdated, this, &ZTableModel::refreshTable);
    connect(tables, &ZDataTableMgr::sigTableFailed, this,
            [this](const TableFailure& failure) { refreshTable(failure.table, failure.kind); });
    connect(tables, &ZDataTableMgr::sigVersionsSaved, this, &ZTableModel::refresh);
    for (const TableStatus& status : tables->getTableStatuses())
        m_rows.append(rowFor(status));
}

int ZTableModel::rowOf(const QString& table) const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).status.table == table)
            return row;
    }
    return -1;
}

int ZTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ZTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ZTableModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows.at(index.row());
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == ValueRole)
        return valueOf(row, index.column());
    if (role >= FirstColumnRole && role < FirstColumnRole + ColumnCount)
        return valueOf(row, role - FirstColumnRole);
    return {};
}

QVariant ZTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole || section < 0
        || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    return QString::fromLatin1(names[section]);
}

QHash<int, QByteArray> ZTableModel::roleNames() const
{
    QHash<int, QByteArray> roles = QAbstractTableModel::roleNames();
    roles.insert(ValueRole, "value");
    for (int column = 0; column < ColumnCount; ++column)
        roles.insert(FirstColumnRole + column, names[column]);
    return roles;
}

Qt::ItemFlags ZTableModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool editable =
        index.isValid() && index.column() == Version && m_rows.at(index.row()).status.kind >= 0;
    return editable ? flags | Qt::ItemIsEditable : flags;
}

bool ZTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    bool isNumber = false;
    const int version = value.toInt(&isNumber);
    if (role != Qt::EditRole || !isNumber || !flags(index).testFlag(Qt::ItemIsEditable))
        return false;
    const int kind = m_rows.at(index.row()).status.kind;
    const auto type = static_cast<EDataTable::EDataTableType>(kind);
    if (!ZDataTableMgr::getInstance()->setTableVersion(type, version, true))
        return false;
    take(index.row(), ZDataTableMgr::getInstance()->getTableStatus(type));
    return true;
}

void ZTableModel::refresh()
{
    const auto statuses = ZDataTableMgr::getInstance()->getTableStatuses();
    for (int row = 0; row < m_rows.size(); ++row)
        take(row, statuses.at(row));
}

ZTableModel::Row ZTableModel::rowFor(const TableStatus& status)
{
    Row row {status, {}, {}};
    const QFileInfo file(status.path);
    if (!status.path.isEmpty() && file.isFile())
        row.modified = file.lastModified();
    if (status.declaration != nullptr)
        row.records = status.declaration->recordCount();
    return row;
}

QVariant ZTableModel::valueOf(const Row& row, int column)
{
    const TableStatus& status = row.status;
    switch (column) {
    case Table:
        return status.table;
    case Kind:
        return status.kind;
    case Version:
        return status.version;
    case Size:
        return status.size;
    case Modified:
        return row.modified;
    case Records:
        return row.records;
    case State:
        return status.state;
    case Manager:
        return status.manager;
    case Loader:
        return status.loader;
    case AtStart:
        return status.loadedAtStart;
    case Path:
        return status.path;
    case Error:
        return status.error;
    default:
        return status.lastFailure.cause;
    }
}

void ZTableModel::refreshTable(const QString& table, int kind)
{
    const int row = rowOf(table);
    if (row < 0)
        return;
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    if (kind >= 0)
        take(row, tables->getTableStatus(static_cast<EDataTable::EDataTableType>(kind)));
    else
        take(row, tables->getTableStatuses().at(row));
}

void ZTableModel::take(int row, const TableStatus& status)
{
    const Row before = m_rows.at(row);
    m_rows[row] = rowFor(status);
    int first = ColumnCount;
    int last = -1;
    for (int column = 0; column < ColumnCount; ++column) {
        if (valueOf(before, column) == valueOf(m_rows.at(row), column))
            continue;
        first = std::min(first, column);
        last = column;
    }
    if (last >= 0)
        Q_EMIT dataChanged(index(row, first), index(row, last));
}
