#include "command/RawRows.h"

#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "content/Table.h"
#include "why/RawTable.h"
#include "why/Subjects.h"

#include <algorithm>
#include <array>

namespace {

using Why::RawRow;

QStringList columnsOf(const Table& table)
{
    QStringList columns = table.header().keys();
    std::sort(columns.begin(), columns.end(), [&table](const QString& left, const QString& right) {
        return table.header().value(left) < table.header().value(right);
    });
    return columns;
}

QString cellText(const QJsonValue& cell)
{
    if (cell.isString() || cell.isUndefined())
        return cell.toString();
    const QByteArray list = QJsonDocument(QJsonArray {cell}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

QJsonObject objectOf(const RawRow& row, const Why::RawTable& raw)
{
    constexpr std::array<const char*, 6> fates {"record", "left out", "overwritten",
                                                "no row", "refused",  "unread"};
    QJsonObject object {{u"row"_s, row.row.number},
                        {u"fate"_s, QLatin1String(fates.at(row.fate))},
                        {u"words"_s, row.words}};
    const QJsonValue element = raw.table().elements().at(row.row.number - 1);
    if (!element.isArray())
        object.insert(u"element"_s, element);
    QJsonObject cells;
    for (const QString& column : columnsOf(raw.table()))
        cells.insert(column, raw.table().cell(row.row, column));
    object.insert(u"cells"_s, cells);
    if (row.fate == RawRow::LeftOut)
        object.insert(u"column"_s, row.row.leftOutFor);
    if (row.fate == RawRow::Overwritten)
        object.insert(u"overwrittenBy"_s, row.overwrittenBy);
    return object;
}

QVector<RawRow> chosen(const Why::RawTable& raw, const QString& idOrName)
{
    if (idOrName.isEmpty())
        return raw.rows();
    QVector<Why::Subject> all;
    for (const RawRow& row : raw.rows())
        all.append({QString(), raw.status().table, row.id, row.name});
    const QVector<Why::Subject> meant = Why::answering(all, idOrName);
    QVector<RawRow> rows;
    for (const RawRow& row : raw.rows()) {
        const bool isMeant =
            std::any_of(meant.begin(), meant.end(),
                        [&row](const Why::Subject& one) { return one.id == row.id; });
        if (isMeant)
            rows.append(row);
    }
    if (rows.isEmpty())
        throw Failure {
            u"no row of %1 has the id or name \"%2\""_s.arg(raw.status().table, idOrName)};
    return rows;
}

void printWhole(const RawRow& row, const Why::RawTable& raw)
{
    TextTable table;
    table.add({u"row"_s, QString::number(row.row.number)});
    table.add({u"became"_s, row.words});
    for (const QString& column : columnsOf(raw.table()))
        table.add({column, cellText(raw.table().cell(row.row, column))});
    table.print();
}

void printLines(const QVector<RawRow>& rows, const Why::RawTable& raw)
{
    // What people know a row by comes first, since a terminal may not have room for all.
    QStringList columns = columnsOf(raw.table());
    for (const QString& column :
         {Why::RawTable::nameColumn(raw.table().schema()), raw.table().schema().key}) {
        if (columns.removeOne(column))
            columns.prepend(column);
    }
    QVector<TextTable::Column> headings {{u"row"_s, true}, {u"became"_s}};
    for (const QString& column : columns)
        headings.append({column, false, headings.size() > 3});
    TextTable table(headings);
    for (const RawRow& row : rows) {
        QStringList cells {QString::number(row.row.number), row.words.section(u": "_s, 0, 0)};
        for (const QString& column : columns)
            cells.append(cellText(raw.table().cell(row.row, column)));
        table.add(cells);
    }
    table.print();
    const int left = table.leftOut(Terminal::width());
    if (left > 0)
        Terminal::tell(u"%1 more: name a row, or print --plain or --json"_s.arg(
            Readable::counted(left, u"column"_s)));
}

} // namespace

void RawRows::print(const TableStatus& table, const QString& idOrName, bool json)
{
    const Why::RawTable raw(table);
    if (!raw.table().error().isEmpty())
        throw Failure {raw.fault()};
    const QVector<RawRow> rows = chosen(raw, idOrName);
    if (json) {
        QJsonArray array;
        for (const RawRow& row : rows)
            array.append(objectOf(row, raw));
        Json::print(array);
    } else if (rows.size() == 1) {
        printWhole(rows.constFirst(), raw);
    } else {
        printLines(rows, raw);
    }
}
