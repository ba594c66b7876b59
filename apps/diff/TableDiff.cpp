#include "diff/TableDiff.h"

#include "content/FileUse.h"
#include "content/Table.h"
#include "diff/CellText.h"
#include "diff/RowPairs.h"

#include <algorithm>

namespace {

QStringList columnsOf(const Table& table)
{
    QStringList names = table.header().keys();
    std::sort(names.begin(), names.end(), [&table](const QString& left, const QString& right) {
        return table.header().value(left) < table.header().value(right);
    });
    return names;
}

QStringList without(const QStringList& names, const QStringList& others)
{
    QStringList rest;
    for (const QString& name : names) {
        if (!others.contains(name))
            rest.append(name);
    }
    return rest;
}

QString text(const QJsonValue& cell)
{
    return cell.toVariant().toString();
}

QString nameOf(const Table& table, const Row& row)
{
    for (const ColumnSchema& column : table.columns()) {
        QString name = table.cell(row, column.name).toString();
        if (column.use == TextUse::Name && !name.isEmpty())
            return name;
    }
    return {};
}

QStringList filesOf(const Table& table, const Row& row)
{
    QStringList paths;
    for (const ColumnSchema& column : table.columns()) {
        const QJsonValue cell = table.cell(row, column.name);
        if (column.files.isEmpty() || !table.counts(row, column) || !column.fits(cell))
            continue;
        for (const QString& name : FileUse::namesIn(column, table.text(row, column.name))) {
            for (const FileSchema& file : column.files)
                paths.append(FileUse::pathOf(file, table, row, name));
        }
    }
    paths.removeDuplicates();
    return paths;
}

/** What a client makes of a cell that is not what it seems. */
QString remarkOn(const Table& table, const QString& name, const QJsonValue& cell)
{
    const ColumnSchema* column = table.column(name);
    if (table.reader() == nullptr || cell.isUndefined() || table.columns().isEmpty())
        return {};
    if (column == nullptr || column->becomes == nullptr)
        return QStringLiteral("no client reads it");
    return column->fits(cell)
        ? QString()
        : QStringLiteral("a client reads ") + CellText::of(column->becomes(cell));
}

bool isInBoth(const TableChange& change, const QString& column)
{
    return !change.columnsAdded.contains(column) && !change.columnsRemoved.contains(column);
}

/** A record that only one side has, or what it is called that both have. */
RecordChange recordOf(const Table& table, const Row& row, const QString& key, Change kind)
{
    const bool isGone = kind == Change::Removed;
    RecordChange record;
    record.kind = kind;
    record.key = text(table.cell(row, key));
    record.name = nameOf(table, row);
    record.leftOutFor = row.leftOutFor;
    (isGone ? record.rowBefore : record.rowAfter) = row.number;
    (isGone ? record.filesBefore : record.filesAfter) = filesOf(table, row);
    return record;
}

RecordChange wholeRecord(const Table& table, const Row& row, const QString& key, Change kind)
{
    const QJsonValue none(QJsonValue::Undefined);
    const bool isGone = kind == Change::Removed;
    RecordChange record = recordOf(table, row, key, kind);
    for (const QString& column : columnsOf(table)) {
        const QJsonValue cell = table.cell(row, column);
        if (!cell.isUndefined())
            record.fields.append({column, isGone ? cell : none, isGone ? none : cell,
                                  remarkOn(table, column, cell)});
    }
    return record;
}

/** Two tables, and the columns of both. */
struct Sides
{
    const Table& before;
    const Table& after;
    QString key;
    QStringList columns;
};

void addChanged(const Sides& sides, const Row& before, const Row& after, TableChange& change)
{
    RecordChange record = recordOf(sides.after, after, sides.key, Change::Changed);
    for (const QString& column : sides.columns) {
        const QJsonValue old = sides.before.cell(before, column);
        const QJsonValue now = sides.after.cell(after, column);
        // What only one side has a column for says something only where it is filled in.
        const bool isSaid =
            isInBoth(change, column) || !CellText::isEmpty(old) || !CellText::isEmpty(now);
        if (old == now || !isSaid)
            continue;
        const bool readsAlike =
            sides.before.value(before, column) == sides.after.value(after, column);
        record.fields.append({column, old, now,
                              readsAlike ? QStringLiteral("a client reads the same")
                                         : remarkOn(sides.after, column, now)});
    }
    if (record.fields.isEmpty())
        return;
    record.rowBefore = before.number;
    record.filesBefore = filesOf(sides.before, before);
    change.records.append(record);
}

/** What stands among the rows and in them without being a cell. */
QJsonArray extrasOf(const Table& table)
{
    QJsonArray extras;
    for (const QJsonValue& element : table.elements()) {
        if (!element.isArray() && !element.isNull())
            extras.append(element);
        const QJsonArray cells = element.toArray();
        for (int i = table.header().size(); i < cells.size(); ++i)
            extras.append(cells.at(i));
    }
    return extras;
}

bool areInOrder(const QVector<RowPair>& pairs)
{
    int last = -1;
    for (const RowPair& pair : pairs) {
        if (pair.before < 0 || pair.after < 0)
            continue;
        if (pair.before < last)
            return false;
        last = pair.before;
    }
    return true;
}

void addRemarks(const Sides& sides, bool isInOrder, TableChange& change)
{
    if (!isInOrder)
        change.remarks.append(QStringLiteral("the order of the rows"));
    if (without(columnsOf(sides.before), change.columnsRemoved)
        != without(columnsOf(sides.after), change.columnsAdded))
        change.remarks.append(QStringLiteral("the order of the columns"));
    if (extrasOf(sides.before) != extrasOf(sides.after))
        change.remarks.append(QStringLiteral("what is no row, or stands beyond the columns"));
    if (change.records.isEmpty() && change.remarks.isEmpty() && change.columnsAdded.isEmpty()
        && change.columnsRemoved.isEmpty())
        change.remarks.append(QStringLiteral("the way it is written, nothing that a client reads"));
}

} // namespace

void TableDiff::compare(const Table& before, const Table& after, TableChange& change)
{
    const QStringList old = columnsOf(before);
    const QStringList now = columnsOf(after);
    change.columnsAdded = without(now, old);
    change.columnsRemoved = without(old, now);
    const Sides sides {before, after, RowPairs::keyOf(before, after), now + change.columnsRemoved};
    const QVector<RowPair> pairs = RowPairs::of(before, after, sides.columns);
    for (const RowPair& pair : pairs) {
        if (pair.after < 0)
            change.records.append(
                wholeRecord(before, before.rows().at(pair.before), sides.key, Change::Removed));
        else if (pair.before < 0)
            change.records.append(
                wholeRecord(after, after.rows().at(pair.after), sides.key, Change::Added));
        else
            addChanged(sides, before.rows().at(pair.before), after.rows().at(pair.after), change);
    }
    addRemarks(sides, areInOrder(pairs), change);
}

void TableDiff::list(const Table& table, Change kind, TableChange& change)
{
    const QString key = RowPairs::keyOf(table, table);
    for (const Row& row : table.rows())
        change.records.append(wholeRecord(table, row, key, kind));
}

QHash<QString, QStringList> TableDiff::users(const Table& table)
{
    QHash<QString, QStringList> users;
    const QString key = RowPairs::keyOf(table, table);
    for (const Row& row : table.rows()) {
        const RecordChange record = recordOf(table, row, key, Change::Added);
        for (const QString& path : record.filesAfter)
            users[path].append(record.label());
    }
    return users;
}
