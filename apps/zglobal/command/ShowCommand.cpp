#include "command/Commands.h"
#include "command/RawRows.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "why/RawTable.h"
#include "why/Subjects.h"

#include <algorithm>

namespace {

QCommandLineOption rawOption()
{
    return {u"raw"_s, u"the rows as the file has them, and what became of each"_s};
}

/** Records and what their columns are called. */
struct Records
{
    QStringList columns;
    QStringList dates; ///< those of them that are moments, in seconds
    QString key;       ///< the column that names a record; may be empty
    QString name;      ///< the one with what people call it; may be empty
    QJsonArray rows;   ///< objects by column, or texts
};

QString textOf(const QJsonValue& value)
{
    if (value.isArray()) {
        QStringList parts;
        const QJsonArray array = value.toArray();
        for (const QJsonValue& part : array)
            parts.append(part.toVariant().toString());
        return parts.join(QLatin1Char(','));
    }
    return value.toVariant().toString();
}

/** A record's field for people. */
QString shownOf(const Records& records, const QString& column, const QJsonObject& record)
{
    const QJsonValue value = record.value(column);
    if (!records.dates.contains(column) || value.isUndefined())
        return textOf(value);
    const QString text = textOf(value);
    return text == u"0"_s ? u"-"_s : Readable::time(text.toLongLong());
}

TableStatus tableOf(const QString& name)
{
    const QVector<TableStatus> tables = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& table : tables) {
        const bool byKind = table.kind >= 0 && QString::number(table.kind) == name;
        if (byKind || table.table.compare(name, Qt::CaseInsensitive) == 0)
            return table;
    }
    throw Failure {u"there is no table \"%1\"; \"zglobal status\" lists them"_s.arg(name)};
}

Records held(const TableStatus& table)
{
    Records records;
    Session::require(table.table);
    records.key = table.declaration->schema().key;
    records.name = Why::RawTable::nameColumn(table.declaration->schema());
    records.rows = table.declaration->records();
    for (const ColumnSchema& column : table.declaration->schema().columns) {
        if (column.field.isEmpty())
            continue;
        records.columns.append(column.name);
        if (column.conversion.startsWith(u"date "_s))
            records.dates.append(column.name);
    }
    return records;
}

/** Of the table's file, as it stands there. */
Records inFile(const TableStatus& table)
{
    QHash<QString, int> header;
    QJsonArray rows;
    QString error;
    if (!ZGlobalConfig::readTableFile(table.path, header, rows, &error))
        throw Failure {error};
    Records records;
    records.columns = header.keys();
    std::sort(records.columns.begin(), records.columns.end(),
              [&header](const QString& left, const QString& right) {
                  return header.value(left) < header.value(right);
              });
    records.key = records.columns.constFirst();
    for (const QJsonValue& row : qAsConst(rows)) {
        QJsonObject record;
        for (const QString& column : qAsConst(records.columns))
            record.insert(column, row.toArray().at(header.value(column)));
        if (row.isArray())
            records.rows.append(record);
    }
    return records;
}

/** Managers keep records by id; people know the order of the table. */
void putInTableOrder(Records& records, const TableStatus& table)
{
    if (records.key.isEmpty() || table.kind < 0)
        return;
    QHash<QString, int> places;
    const QJsonArray written = inFile(table).rows;
    for (const QJsonValue& row : written)
        places.insert(textOf(row.toObject().value(records.key)), places.size());
    QVector<QJsonObject> rows;
    for (const QJsonValue& row : qAsConst(records.rows))
        rows.append(row.toObject());
    const auto place = [&](const QJsonObject& row) {
        return places.value(textOf(row.value(records.key)), places.size());
    };
    std::stable_sort(rows.begin(), rows.end(),
                     [&place](const QJsonObject& left, const QJsonObject& right) {
                         return place(left) < place(right);
                     });
    records.rows = QJsonArray();
    for (const QJsonObject& row : qAsConst(rows))
        records.rows.append(row);
}

Records only(const Records& records, const QString& id)
{
    if (records.key.isEmpty())
        throw Failure {u"the records of this table have no id"_s};
    const auto text = [](const QJsonValue& row, const QString& column) {
        return textOf(row.toObject().value(column));
    };
    QVector<Why::Subject> all;
    for (const QJsonValue& row : records.rows)
        all.append({{}, {}, text(row, records.key), text(row, records.name)});
    QStringList meant;
    for (const Why::Subject& subject : Why::answering(all, id))
        meant.append(subject.id);
    Records found = records;
    found.rows = QJsonArray();
    for (const QJsonValue& row : records.rows) {
        if (meant.contains(text(row, records.key)))
            found.rows.append(row);
    }
    if (found.rows.isEmpty())
        throw Failure {
            u"no record has the %1 \"%2\"; --raw shows what became of rows"_s.arg(records.key, id)};
    return found;
}

/** Everything about each record. */
void printWhole(const Records& records)
{
    for (const QJsonValue& row : records.rows) {
        TextTable table;
        for (const QString& column : records.columns)
            table.add({column, shownOf(records, column, row.toObject())});
        table.print();
    }
}

/** A line for each record; on a terminal with as many columns as it has room for. */
void printLines(const Records& records)
{
    constexpr int widestCell = 40;
    const int width = Terminal::width();
    QVector<TextTable::Column> columns;
    for (const QString& column : records.columns)
        columns.append({column, false, !columns.isEmpty()});
    TextTable table(columns);
    for (const QJsonValue& row : records.rows) {
        QStringList cells;
        for (const QString& column : records.columns) {
            const QString text = shownOf(records, column, row.toObject());
            cells.append(width > 0 ? Terminal::cut(text, widestCell) : text);
        }
        table.add(columns.isEmpty() ? QStringList {textOf(row)} : cells);
    }
    table.print();
    const int left = table.leftOut(width);
    if (left > 0)
        Terminal::tell(u"%1 more: name a record, or print --plain or --json"_s.arg(
            Readable::counted(left, u"column"_s)));
}

int run(const QCommandLineParser& line)
{
    const QStringList arguments = line.positionalArguments();
    Session session(line);
    session->load();
    const TableStatus table = tableOf(arguments.constFirst());
    if (line.isSet(rawOption())) {
        RawRows::print(table, arguments.value(1), CommandLine::wantsJson(line));
        return 0;
    }
    Records records = table.declaration == nullptr ? inFile(table) : held(table);
    putInTableOrder(records, table);
    if (arguments.size() > 1)
        records = only(records, arguments.at(1));
    if (CommandLine::wantsJson(line))
        Json::print(records.rows);
    else if (arguments.size() > 1 && records.rows.size() == 1)
        printWhole(records);
    else
        printLines(records);
    return 0;
}

} // namespace

Command showCommand()
{
    Command command;
    command.name = u"show"_s;
    command.arguments = u"KIND [ID]"_s;
    command.fewest = 1;
    command.most = 2;
    command.summary = u"Show the records of a table."_s;
    command.details =
        u"KIND is a table's name or number, ID the key of a record, or its name or a part of it; "
        "several that are meant are listed. --raw shows the rows of the file instead, in its "
        "order, with what became of each: a record, left out, overwritten by a later row of its "
        "id, refused with the table. A table that no manager reads is shown as its file has it. "
        "Works without the content server."_s;
    command.examples =
        QStringList {u"zglobal show CS_MedalList"_s, u"zglobal show CS_MedalList 14"_s,
                     u"zglobal show CS_BannerConfig 手机专享 --raw"_s};
    command.options = Session::options() + QList {rawOption(), CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
