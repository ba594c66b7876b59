#include "command/Commands.h"
#include "command/RawRows.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"

#include <QFileInfo>

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
    QString key;     ///< the column that names a record; may be empty
    QJsonArray rows; ///< objects by column, or texts
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
    records.key = table.declaration->schema().key;
    records.rows = table.declaration->records();
    if (records.rows.isEmpty() && !QFileInfo::exists(u"res"_s))
        throw Failure {u"nothing has been downloaded yet; \"zglobal update\" does"_s};
    for (const ColumnSchema& column : table.declaration->schema().columns) {
        if (!column.field.isEmpty())
            records.columns.append(column.name);
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
    Records found = records;
    found.rows = QJsonArray();
    for (const QJsonValue& row : records.rows) {
        if (textOf(row.toObject().value(records.key)) == id)
            found.rows.append(row);
    }
    if (found.rows.isEmpty())
        throw Failure {u"no record has the %1 \"%2\""_s.arg(records.key, id)};
    return found;
}

/** Everything about each record. */
void printWhole(const Records& records)
{
    for (const QJsonValue& row : records.rows) {
        TextTable table;
        for (const QString& column : records.columns)
            table.add({column, textOf(row.toObject().value(column))});
        table.print();
    }
}

/** A line for each record, with as many columns as go on a wide line. */
void printLines(const Records& records)
{
    constexpr int widest = 100;
    constexpr int widestCell = 40;
    const QStringList all = records.columns.isEmpty() ? QStringList {QString()} : records.columns;
    QVector<QStringList> shown(records.rows.size() + 1);
    int total = 0;
    int left = all.size();
    for (const QString& column : all) {
        QStringList cells {column};
        for (const QJsonValue& row : records.rows)
            cells.append(Terminal::cut(textOf(row.isObject() ? row.toObject().value(column) : row),
                                       widestCell));
        int width = 0;
        for (const QString& cell : qAsConst(cells))
            width = std::max(width, Terminal::columns(cell));
        if (total > 0 && total + width > widest)
            break;
        total += width + 2;
        --left;
        for (int i = 0; i < cells.size(); ++i)
            shown[i].append(cells.at(i));
    }
    TextTable table;
    for (const QStringList& row : qAsConst(shown)) {
        if (!row.join(QString()).isEmpty())
            table.add(row);
    }
    table.print();
    if (left > 0)
        Terminal::tell(u"%1 columns more: name a record, or print --json"_s.arg(left));
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
    const bool one = arguments.size() > 1;
    if (one)
        records = only(records, arguments.at(1));
    if (CommandLine::wantsJson(line))
        Json::print(records.rows);
    else if (one)
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
    command.details = u"KIND is a table's name or number, ID the key of a record. A table that no "
                      "manager reads is\nshown as its file has it. Works without the content "
                      "server."_s;
    command.examples =
        QStringList {u"zglobal show CS_MedalList"_s, u"zglobal show CS_MedalList 14"_s};
    command.options = Session::options() + QList {rawOption(), CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
