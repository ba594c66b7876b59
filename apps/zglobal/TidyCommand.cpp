#include "Commands.h"
#include "Failure.h"
#include "Host.h"
#include "Json.h"
#include "Literals.h"
#include "Terminal.h"
#include "Tidying.h"

namespace {

int run(const QCommandLineParser& line)
{
    Host::enter(line);
    // Without its tables the client uses nothing, and all that is old would go.
    if (!Host::load())
        throw Failure {u"the tables cannot be loaded; \"zglobal update\" fetches them"_s};
    const bool json = CommandLine::wantsJson(line);
    QJsonArray lines;
    const bool ended = Tidying::run([&](const QString& text) {
        if (json)
            lines.append(text);
        else
            Terminal::print(text);
    });
    if (json)
        Json::print(lines);
    if (!ended)
        throw Failure {u"the tidying has not ended in time"_s};
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
    command.options = Host::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
