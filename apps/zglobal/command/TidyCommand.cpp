#include "command/Commands.h"
#include "command/Session.h"
#include "command/Tidying.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"

namespace {

QCommandLineOption dryRunOption()
{
    return {u"dry-run"_s, u"remove nothing; show what would go and what stays, and why"_s};
}

int run(const QCommandLineParser& line)
{
    Session session(line);
    // Without its tables the client uses nothing, and all that is old would go.
    session.load();
    const bool json = CommandLine::wantsJson(line);
    const bool dry = line.isSet(dryRunOption());
    TidyPlan plan;
    if (json || dry)
        plan = Tidying::plan(session.client());
    if (!dry)
        Tidying::run(session.client(), [json](const QString& text) {
            if (!json && !Terminal::isQuiet())
                Terminal::print(text);
        });
    if (json)
        Json::print(Tidying::asJson(plan, !dry));
    else if (dry)
        Tidying::print(plan);
    if (dry)
        Terminal::tell(u"%1 would go"_s.arg(Tidying::summary(plan)));
    return 0;
}

} // namespace

Command tidyCommand()
{
    Command command;
    command.name = u"tidy"_s;
    command.summary = u"Remove what is stale from the client's cache."_s;
    command.details = u"Nothing goes that was modified in the last seven days. Prints what the log "
                      "tells, and with --json every file and folder that it looks at, with what "
                      "becomes of it and why."_s;
    command.examples = QStringList {u"zglobal tidy --dry-run"_s, u"zglobal tidy"_s};
    command.options = Session::options() + QList {dryRunOption(), CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
