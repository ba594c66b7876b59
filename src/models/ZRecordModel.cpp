#include "models/ZRecordModel.h"

#include "datatable/Cells.h"
#include "datatable/TableList.h"
#include "datatable/ZDataTableMgr.h"
#include "models/RowMatch.h"

#include <QDateTime>

#include <algorithm>

namespace {

constexpr int firstComputedRole = Qt::UserRole + 0x1000;
// Every announcement costs the views a walk over their rows.
constexpr int mostRuns = 100;

QString dateText(qint64 seconds)
{
    if (seconds <= 0)
        return QString::number(seconds);
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

bool isNumber(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

QString wordsOn(const ColumnSchema& column)
{
    QString words = QStringLiteral("%1, otherwise %2").arg(column.conversion, column.otherwise);
    if (!column.remark.isEmpty())
        words += QStringLiteral("; ") + column.remark;
    return words;
}

} // namespace

ZRecordModel::ZRecordModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    connect(tables, &ZDataTableMgr::sigTableLoaded, this, [this](const QString& table) {
        if (table == m_table)
            refresh();
    });
    // The start-up empties what two tables share before it tries the first of them.
    connect(tables, &ZDataTableMgr::sigTableFailed, this, [this](const TableFailure& failure) {
        if (failure.table == m_table)
            refresh();
    });
}

ZRecordModel::ZRecordModel(const QString& table, QObject* parent)
    : ZRecordModel(parent)
{
    ZRecordModel::setTable(table);
}

void ZRecordModel::setTable(const QString& table)
{
    if (table == m_table)
        return;
    beginResetModel();
    m_table = table;
    m_entry = tableEntry(table);
    m_columns.clear();
    m_places.clear();
    m_snapshot = {};
    if (m_entry != nullptr) {
        const TableDeclaration& declaration = m_entry->reader.declaration();
        const auto& columns = declaration.schema().columns;
        for (int i = 0; i < columns.size(); ++i) {
            if (columns.at(i).field.isEmpty())
                continue;
            m_places.insert(columns.at(i).name, static_cast<int>(m_columns.size()));
            m_columns.append(i);
        }
        if (columns.isEmpty()) {
            m_places.insert(QStringLiteral("text"), 0);
            m_columns.append(0);
        }
        m_snapshot = declaration.snapshot();
    }
    endResetModel();
    Q_EMIT sigTableChanged();
}

const ColumnSchema* ZRecordModel::schema(int column) const
{
    if (m_entry == nullptr || column < 0 || column >= m_columns.size())
        return nullptr;
    const auto& columns = m_entry->reader.declaration().schema().columns;
    return columns.isEmpty() ? nullptr : &columns.at(m_columns.at(column));
}

QVariant ZRecordModel::value(int row, const QString& column) const
{
    const QModelIndex place = index(row, columnOf(column)); // invalid for what is not there
    return place.isValid() ? data(place, ValueRole) : QVariant();
}

QString ZRecordModel::key(int row) const
{
    if (m_entry == nullptr)
        return {};
    return value(row, m_entry->reader.declaration().schema().key).toString();
}

int ZRecordModel::rowOf(const QString& key) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (this->key(row) == key)
            return row;
    }
    return -1;
}

int ZRecordModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_snapshot.records.size());
}

int ZRecordModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant ZRecordModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role >= firstComputedRole) {
        const auto compute = m_computed.value(role - firstComputedRole);
        return compute ? compute(index.row()) : QVariant();
    }
    if (role == ChangedRole)
        return hasChanged(index.row(), index.column());
    const bool ofColumn = role >= FirstColumnRole && role < FirstColumnRole + columnCount();
    if (!ofColumn && role != ValueRole && role != Qt::DisplayRole && role != Qt::TextAlignmentRole)
        return {};
    const int column = ofColumn ? role - FirstColumnRole : index.column();
    QVariant value = m_entry->reader.declaration().value(m_snapshot.records.at(index.row()),
                                                         m_columns.at(column));
    if (role == Qt::TextAlignmentRole)
        return isNumber(value) ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    if (role != Qt::DisplayRole)
        return value;
    const ColumnSchema* declared = schema(column);
    const bool isDate =
        declared != nullptr && declared->conversion == QLatin1String(Cells::Date::name);
    return isDate ? dateText(value.toLongLong()) : RecordKeys::textOf(value);
}

QVariant ZRecordModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (section < 0 || section >= columnCount())
        return {};
    const ColumnSchema* column = schema(section);
    if (role == Qt::DisplayRole)
        return column == nullptr ? QStringLiteral("text") : column->name;
    if (role == Qt::ToolTipRole && column != nullptr)
        return wordsOn(*column);
    return {};
}

QHash<int, QByteArray> ZRecordModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractTableModel::roleNames();
    names.insert(ValueRole, "value");
    names.insert(ChangedRole, "changed");
    for (auto place = m_places.begin(); place != m_places.end(); ++place)
        names.insert(FirstColumnRole + place.value(), place.key().toUtf8());
    for (int i = 0; i < m_computedNames.size(); ++i)
        names.insert(firstComputedRole + i, m_computedNames.at(i));
    return names;
}

void ZRecordModel::refresh()
{
    if (m_entry != nullptr)
        take(m_entry->reader.declaration().snapshot());
}

int ZRecordModel::addRole(const QByteArray& name, const std::function<QVariant(int)>& compute)
{
    m_computedNames.append(name);
    m_computed.append(compute);
    return firstComputedRole + static_cast<int>(m_computed.size()) - 1;
}

void ZRecordModel::tellChanges(const QVector<bool>& changed, int role)
{
    const auto runs = RowRun::where(rowCount(), [&](int row) { return changed.at(row); });
    for (const RowRun& run : RowRun::joined(runs, mostRuns))
        Q_EMIT dataChanged(index(run.first, 0), index(run.first + run.count - 1, columnCount() - 1),
                           {role});
}

void ZRecordModel::take(const TableSnapshot& snapshot)
{
    const Records old = m_snapshot.records;
    const Records& now = snapshot.records;
    const RowMatch match({m_entry->reader.declaration(), m_columns}, old, now);
    auto gone = RowRun::where(old.size(), [&](int row) { return match.after.at(row) < 0; });
    auto come = RowRun::where(now.size(), [&](int row) { return match.before.at(row) < 0; });
    const bool inPlace = match.isInOrder() && gone.size() + come.size() <= mostRuns;
    if (!inPlace) {
        Records kept;
        for (const int row : match.before) {
            if (row >= 0)
                kept.append(old.at(row));
        }
        const RowRun rest {static_cast<int>(kept.size()),
                           static_cast<int>(old.size() - kept.size())};
        for (const RowRun& run : gone)
            kept += old.mid(run.first, run.count);
        reorder(kept);
        gone = {rest};
    }
    for (auto run = gone.crbegin(); run != gone.crend(); ++run)
        remove(run->first, run->count);
    if (inPlace) {
        for (const RowRun& run : come)
            insert(run.first, run.count, now.mid(run.first, run.count));
    } else {
        Records added;
        Records placed = now;
        for (int row = 0; row < now.size(); ++row) {
            if (match.before.at(row) < 0)
                added.append(now.at(row));
            else
                placed[row] = old.at(match.before.at(row));
        }
        insert(rowCount(), static_cast<int>(added.size()), added);
        reorder(placed);
    }
    takeChanged(snapshot);
}

void ZRecordModel::remove(int first, int count)
{
    if (count == 0)
        return;
    beginRemoveRows({}, first, first + count - 1);
    m_snapshot.records.remove(first, count);
    endRemoveRows();
}

void ZRecordModel::insert(int first, int count, const Records& records)
{
    if (count == 0)
        return;
    beginInsertRows({}, first, first + count - 1);
    m_snapshot.records.insert(first, count, nullptr);
    std::copy(records.begin(), records.end(), m_snapshot.records.begin() + first);
    endInsertRows();
}

void ZRecordModel::reorder(const Records& records)
{
    if (records == m_snapshot.records)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    QHash<const void*, int> places;
    for (int row = 0; row < records.size(); ++row)
        places.insert(records.at(row), row);
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    for (const QModelIndex& index : from)
        to.append(this->index(places.value(m_snapshot.records.at(index.row())), index.column()));
    m_snapshot.records = records;
    changePersistentIndexList(from, to);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void ZRecordModel::takeChanged(const TableSnapshot& snapshot)
{
    m_before = m_snapshot; // what has just come in is in both
    m_snapshot = snapshot;
    const auto changed = RowRun::where(rowCount(), [&](int row) {
        for (int column = 0; column < columnCount(); ++column) {
            if (hasChanged(row, column))
                return true;
        }
        return false;
    });
    for (const RowRun& run : RowRun::joined(changed, mostRuns)) {
        const int last = run.first + run.count - 1;
        const auto holds = [&](int column) {
            for (int row = run.first; row <= last; ++row) {
                if (hasChanged(row, column))
                    return true;
            }
            return false;
        };
        const auto columns = RowRun::where(columnCount(), holds);
        Q_EMIT dataChanged(index(run.first, columns.first().first),
                           index(last, columns.last().first + columns.last().count - 1));
    }
    m_before = {};
}

bool ZRecordModel::hasChanged(int row, int column) const
{
    if (row >= m_before.records.size())
        return false;
    const void* old = m_before.records.at(row);
    const void* now = m_snapshot.records.at(row);
    return old != now && m_entry->reader.declaration().compare(old, now, m_columns.at(column)) != 0;
}
