#include "ZGlobalVersion.h"
#include "command/Commands.h"
#include "console/Failure.h"
#include "console/Interrupt.h"
#include "console/Literals.h"
#include "console/Terminal.h"

#include <QCoreApplication>

namespace {

int runProgram(const QStringList& arguments)
{
    const QList<Command> commands = allCommands();
    if (arguments.isEmpty())
        throw UsageFailure(u"no command is given; see \"zglobal --help\""_s);
    const QString& name = arguments.constFirst();
    if (name == u"--help"_s || name == u"-h"_s || name == u"help"_s) {
        const QStringList help = CommandLine::overview(commands);
        for (const QString& line : help)
            Terminal::print(line);
        return 0;
    }
    if (name == u"--version"_s) {
        Terminal::print(u"zglobal "_s + QCoreApplication::applicationVersion());
        return 0;
    }
    QStringList names;
    for (const Command& command : commands) {
        if (command.name == name)
            return CommandLine::run(command, arguments.mid(1));
        names.append(command.name);
    }
    throw UsageFailure(u"there is no command \"%1\"%2; see \"zglobal --help\""_s.arg(
        name, CommandLine::orNear(name, names)));
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"zglobal"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(ZGLOBAL_VERSION_STR));
    Interrupt::watch();
    try {
        const int status = runProgram(QCoreApplication::arguments().mid(1));
        if (!Terminal::isPrinted())
            throw Failure {u"standard output takes no more"_s};
        return status;
    } catch (const Failure& failure) {
        Terminal::complain(u"zglobal: "_s + failure.message);
        return failure.status;
    } catch (const Interrupted& interrupted) {
        return interrupted.status;
    }
}
