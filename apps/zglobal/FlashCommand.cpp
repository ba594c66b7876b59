#include "Banners.h"
#include "Commands.h"
#include "Failure.h"
#include "Flashes.h"
#include "Host.h"
#include "Json.h"
#include "Literals.h"
#include "Terminal.h"

namespace {

int run(const QCommandLineParser& line)
{
    Host::enter(line);
    // Waits for the banners' pictures, whose requests are none of this command's.
    if (!Banners::load())
        throw Failure {u"the tables cannot be loaded; \"zglobal update\" fetches them"_s};
    const Flashes::Pass pass = Flashes::run();
    if (CommandLine::wantsJson(line)) {
        Json::print(Flashes::asJson());
    } else {
        Flashes::asTable().print();
        Terminal::tell(u"%1 downloaded"_s.arg(pass.downloads - Flashes::missing()));
    }
    if (Flashes::missing() > 0)
        throw Failure {u"%1 animations could not be downloaded"_s.arg(Flashes::missing())};
    return 0;
}

} // namespace

Command flashCommand()
{
    Command command;
    command.name = u"flash"_s;
    command.summary = u"Download the flash animations that are missing."_s;
    command.details = u"Unpacks them in res/flash and shows what is there."_s;
    command.options = Host::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
