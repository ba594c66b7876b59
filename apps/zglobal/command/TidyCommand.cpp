#include "command/Commands.h"
#include "command/Session.h"
#include "command/Tidying.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"

namespace {

int run(const QCommandLineParser& line)
{
    Session session(line);
    // Without its tables the client uses nothing, and all that is old would go.
    session.load();
    const bool json = CommandLine::wantsJson(line);
    QJsonArray lines;
    Tidying::run(session.client(), [&](const QString& text) {
        if (json)
            lines.append(text);
        else
            Terminal::print(text);
    });
    if (json)
        Json::print(lines);
    return 0;
}

} // namespace

Command tidyCommand()
{
    Command command;
    command.name = u"tidy"_s;
    command.summary = u"Remove what is stale from the client's cache."_s;
    command.details = u"Nothing goes that was modified in the last seven days. Prints what the log "
                      "tells."_s;
    command.examples = QStringList {u"zglobal tidy"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
