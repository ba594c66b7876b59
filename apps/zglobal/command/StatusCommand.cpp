#include "command/Commands.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "datatable/ZDataTableMgr.h"

#include <QDir>

namespace {

QString stateOf(const TableStatus& status)
{
    switch (status.state) {
    case TableStatus::Loaded:
        return status.loadedAtStart ? u"loaded"_s : u"by client"_s;
    case TableStatus::Failed:
        return u"failed"_s;
    case TableStatus::NotLoaded:
        break;
    }
    return u"no"_s;
}

int recordsOf(const TableStatus& status)
{
    return status.declaration == nullptr ? 0 : status.declaration->recordCount();
}

QVector<TableStatus> catalogue()
{
    QVector<TableStatus> tables = ZDataTableMgr::getInstance()->getTableStatuses();
    while (!tables.isEmpty() && tables.last().kind < 0)
        tables.removeLast();
    return tables;
}

void printJson(const QVector<TableStatus>& all)
{
    QJsonArray tables;
    for (const TableStatus& status : all)
        tables.append(QJsonObject {{u"table"_s, status.table},
                                   {u"kind"_s, status.kind},
                                   {u"version"_s, status.version},
                                   {u"file"_s, status.path},
                                   {u"bytes"_s, status.size},
                                   {u"manager"_s, status.manager},
                                   {u"loader"_s, status.loader},
                                   {u"loadedAtStart"_s, status.loadedAtStart},
                                   {u"state"_s, stateOf(status)},
                                   {u"records"_s, recordsOf(status)}});
    Json::print({{u"server"_s, ZGlobalClient::configuration(u"cmsServer"_s)},
                 {u"folder"_s, QDir::currentPath()},
                 {u"tables"_s, tables}});
}

void printText(const QVector<TableStatus>& tables)
{
    TextTable table({u">kind"_s, u"table"_s, u">version"_s, u">file"_s, u"loaded"_s, u"manager"_s,
                     u">records"_s});
    for (const TableStatus& status : tables) {
        const bool hasManager = !status.manager.isEmpty();
        table.add({QString::number(status.kind), status.table, QString::number(status.version),
                   status.size > 0 ? Readable::size(status.size) : u"missing"_s, stateOf(status),
                   hasManager ? status.manager : u"-"_s,
                   hasManager ? QString::number(recordsOf(status)) : u"-"_s});
    }
    table.print();
}

int run(const QCommandLineParser& line)
{
    Session session(line);
    const bool loaded = session->load();
    if (CommandLine::wantsJson(line)) {
        printJson(catalogue());
    } else {
        Terminal::tell(Session::whereabouts());
        printText(catalogue());
    }
    for (const ZClientFailure& failure : session->failures())
        Terminal::tell(u"%1: %2"_s.arg(failure.what, failure.why));
    if (!loaded)
        throw Failure {u"an essential table cannot be loaded; \"zglobal update\" fetches it"_s};
    return 0;
}

} // namespace

Command statusCommand()
{
    Command command;
    command.name = u"status"_s;
    command.summary = u"Show every table: version, file, manager, records."_s;
    command.details = u"Works without the content server. Fails when one of the two tables is "
                      "missing without which\na client cannot start."_s;
    command.examples = QStringList {u"zglobal status --json"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
