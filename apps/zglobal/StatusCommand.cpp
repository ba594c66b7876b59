#include "Commands.h"
#include "Failure.h"
#include "Host.h"
#include "Json.h"
#include "Literals.h"
#include "Terminal.h"
#include "TextTable.h"
#include "Words.h"
#include "host/ZGlobalConfig.h"

#include <QDir>

namespace {

QString stateOf(const TableStatus& report)
{
    switch (report.state) {
    case TableStatus::Loaded:
        return report.loadedAtStart ? u"loaded"_s : u"by host"_s;
    case TableStatus::Failed:
        return u"failed"_s;
    case TableStatus::NotLoaded:
        break;
    }
    return u"no"_s;
}

void printJson(const QVector<Host::TableFile>& files)
{
    QJsonArray tables;
    for (const Host::TableFile& file : files)
        tables.append(QJsonObject {
            {u"table"_s, file.report.table},
            {u"kind"_s, file.report.kind},
            {u"version"_s, file.version},
            {u"file"_s, file.path},
            {u"bytes"_s, file.size},
            {u"manager"_s, file.report.manager},
            {u"loader"_s, file.report.loader},
            {u"loadedAtStart"_s, file.report.loadedAtStart},
            {u"state"_s, stateOf(file.report)},
            {u"records"_s,
             file.report.declaration == nullptr ? 0 : file.report.declaration->recordCount()}});
    Json::print({{u"server"_s, ZGlobalConfig::getInstance().getConfig(u"cmsServer"_s)},
                 {u"folder"_s, QDir::currentPath()},
                 {u"tables"_s, tables}});
}

void printText(const QVector<Host::TableFile>& files)
{
    TextTable table({u">kind"_s, u"table"_s, u">version"_s, u">file"_s, u"loaded"_s, u"manager"_s,
                     u">records"_s});
    for (const Host::TableFile& file : files) {
        const bool hasManager = !file.report.manager.isEmpty();
        table.add({QString::number(file.report.kind), file.report.table,
                   QString::number(file.version),
                   file.size > 0 ? Words::size(file.size) : u"missing"_s, stateOf(file.report),
                   hasManager ? file.report.manager : u"-"_s,
                   hasManager ? QString::number(file.report.declaration->recordCount()) : u"-"_s});
    }
    table.print();
}

int run(const QCommandLineParser& line)
{
    Host::enter(line);
    const bool loaded = Host::load();
    if (CommandLine::wantsJson(line)) {
        printJson(Host::tableFiles());
    } else {
        Terminal::tell(Host::whereabouts());
        printText(Host::tableFiles());
    }
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
    command.options = Host::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
