#include "command/Commands.h"
#include "command/Flashes.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/Wait.h"

namespace {

int run(const QCommandLineParser& line)
{
    Session session(line);
    session.load();
    Session::require(u"FlashConfig"_s);
    auto bar = session.progress();
    const auto fetched = settled(session->fetchFlashes());
    bar.reset();
    const QVector<ZClientFailure>& failures = fetched.value.failures;
    if (CommandLine::wantsJson(line)) {
        Json::print(Flashes::asJson());
    } else if (!Terminal::isQuiet()) {
        Flashes::asTable().print();
        Terminal::tell(u"%1 downloaded"_s.arg(fetched.value.downloads - failures.size()));
    }
    Session::complain(failures);
    if (!failures.isEmpty())
        throw Failure {
            u"%1 missing still"_s.arg(Readable::counted(failures.size(), u"animation"_s))};
    return 0;
}

} // namespace

Command flashCommand()
{
    Command command;
    command.name = u"flash"_s;
    command.summary = u"Download the flash animations that are missing."_s;
    command.details = u"Unpacks them in res/flash and shows what is there."_s;
    command.examples = QStringList {u"zglobal flash"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
