#include "command/Commands.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "datatable/ZDataTableMgr.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

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

/** When the file came in. */
QDateTime modifiedOf(const TableStatus& status)
{
    return QFileInfo(status.path).lastModified();
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
                                   {u"modified"_s, Readable::time(modifiedOf(status))},
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
    TextTable table({u"table"_s, u">version"_s, u">file"_s, u"from"_s, u"loaded"_s, u">records"_s,
                     u"?manager"_s, u"?>kind"_s});
    for (const TableStatus& status : tables) {
        const bool hasManager = !status.manager.isEmpty();
        const bool hasFile = status.size > 0;
        table.add({status.table, QString::number(status.version),
                   hasFile ? Readable::size(status.size) : u"missing"_s,
                   hasFile ? Readable::age(modifiedOf(status).toSecsSinceEpoch()) : u"-"_s,
                   stateOf(status), hasManager ? QString::number(recordsOf(status)) : u"-"_s,
                   hasManager ? status.manager : u"-"_s, QString::number(status.kind)});
    }
    table.print();
}

/** Also tables that no load was tried of, or that nobody loads. */
QVector<ZClientFailure> allFailures(const ZGlobalClient& client)
{
    QVector<ZClientFailure> failures = client.failures();
    for (const TableStatus& status : catalogue()) {
        const bool isTold =
            std::any_of(failures.begin(), failures.end(),
                        [&status](const ZClientFailure& one) { return one.what == status.table; });
        if (status.size == 0 && !isTold)
            failures.append({status.table, u"version %1 has not come in"_s.arg(status.version)});
    }
    return failures;
}

int run(const QCommandLineParser& line)
{
    Session session(line);
    session->load();
    if (CommandLine::wantsJson(line)) {
        printJson(catalogue());
    } else {
        Terminal::tell(Session::whereabouts());
        printText(catalogue());
    }
    const QVector<ZClientFailure> failures = allFailures(session.client());
    Session::complain(failures);
    if (!failures.isEmpty())
        throw Failure {u"%1 not as published: %2"_s.arg(
            Readable::counted(failures.size(), u"table"_s), Session::advice())};
    return 0;
}

} // namespace

Command statusCommand()
{
    Command command;
    command.name = u"status"_s;
    command.summary = u"Show every table: version, file, age, records."_s;
    command.details = u"Works without the content server. Ends with 1 when a table did not load, "
                      "or has been published in a version that would not: the error stream tells "
                      "which and why."_s;
    command.examples = QStringList {u"zglobal status --json"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
