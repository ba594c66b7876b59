#include "command/Commands.h"
#include "command/Session.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Wait.h"
#include "datatable/ZDataTableMgr.h"

namespace {

QCommandLineOption updateOption()
{
    return {u"update"_s, u"try an update first, so that the report tells what fails in it"_s};
}

int run(const QCommandLineParser& line)
{
    const bool updates = line.isSet(updateOption());
    Session session(line, updates ? Session::Updates : Session::Looks);
    if (updates) {
        ZDataTableMgr::getInstance()->loadLocalVersion();
        settled(session->update()); // the report tells what has failed
    }
    session->load();
    Json::print(session->report());
    return 0;
}

} // namespace

Command reportCommand()
{
    Command command;
    command.name = u"report"_s;
    command.summary = u"Print what a bug report needs: tables, failures, configuration, system."_s;
    command.details = u"One JSON object, with --json and without it. It holds no query or user "
                      "information of an\naddress, and of the user and the session only whether "
                      "they are set."_s;
    command.examples = QStringList {u"zglobal report --update >report.json"_s};
    command.options = Session::options() + QList {updateOption(), CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
