#include "command/Commands.h"
#include "console/Failure.h"
#include "console/Interrupt.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "server/ContentServer.h"

#include <QDir>

#include <limits>

namespace {

int portOf(const QCommandLineParser& line)
{
    bool isNumber = false;
    const int port = line.value(u"port"_s).toInt(&isNumber);
    if (!isNumber || port < 0 || port > std::numeric_limits<quint16>::max())
        throw UsageFailure(u"\"%1\" is not a port"_s.arg(line.value(u"port"_s)));
    return port;
}

int run(const QCommandLineParser& line)
{
    const QString folder = line.positionalArguments().constFirst();
    ContentServer server;
    QString error;
    const bool verbose = line.isSet(CommandLine::verboseOption());
    if (!server.start(folder, portOf(line), &error,
                      verbose ? ContentServer::Tell(&Terminal::tell) : ContentServer::Tell()))
        throw Failure {error};
    Terminal::print(server.baseUrl());
    Terminal::tell(u"serving %1 until interrupted"_s.arg(QDir::toNativeSeparators(folder)));
    Interrupt::wait();
    server.stop();
    Terminal::tell(u"stopped after %1 requests"_s.arg(server.requests()));
    return 0;
}

} // namespace

Command serveCommand()
{
    Command command;
    command.name = u"serve"_s;
    command.arguments = u"DIR"_s;
    command.fewest = command.most = 1;
    command.summary = u"Serve a folder of published content on this machine."_s;
    command.details = u"Prints the address, for use with --server, and serves until interrupted. "
                      "--verbose tells\nevery request."_s;
    command.examples = QStringList {u"zglobal serve site --port 8080"_s};
    command.options = {
        {u"port"_s, u"the port; 0 lets the system pick one (default)"_s, u"N"_s, u"0"_s},
        CommandLine::verboseOption()};
    command.run = &run;
    return command;
}
