#include "command/CommandLine.h"

#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Log.h"
#include "console/Terminal.h"
#include "console/TextTable.h"

namespace {

QCommandLineOption helpOption()
{
    return {{u"h"_s, u"help"_s}, u"print this help"_s};
}

QString spelled(const QCommandLineOption& option)
{
    const QString text = CommandLine::spellings(option).join(u", "_s);
    return option.valueName().isEmpty() ? text : text + QLatin1Char(' ') + option.valueName();
}

QStringList helpOf(const Command& command)
{
    TextTable options;
    const QList<QCommandLineOption> all = CommandLine::optionsOf(command);
    for (const QCommandLineOption& option : all)
        options.add({u"  "_s + spelled(option), option.description()});
    QStringList lines {
        u"Usage: zglobal %1 [options] %2"_s.arg(command.name, command.arguments).trimmed(),
        QString(), command.summary};
    if (!command.details.isEmpty())
        lines << QString() << command.details;
    lines << QString() << u"Options:"_s << options.lines();
    if (!command.examples.isEmpty())
        lines << QString() << u"Examples:"_s;
    for (const QString& example : command.examples)
        lines << u"  "_s + example;
    return lines;
}

void checkCount(const Command& command, int count)
{
    const QString help = u"; see \"zglobal %1 --help\""_s.arg(command.name);
    if (count < command.fewest)
        throw UsageFailure(u"%1 is missing"_s.arg(command.arguments) + help);
    if (command.most != Command::anyNumber && count > command.most)
        throw UsageFailure(u"\"%1\" takes no more than %2 argument(s)"_s.arg(
                               command.name, QString::number(command.most))
                           + help);
}

} // namespace

int CommandLine::run(const Command& command, const QStringList& arguments)
{
    QCommandLineParser line;
    line.addOption(helpOption());
    line.addOptions(command.options);
    if (!line.parse(QStringList(command.name) + arguments))
        throw UsageFailure(line.errorText() + u" See \"zglobal %1 --help\"."_s.arg(command.name));
    if (line.isSet(helpOption())) {
        const QStringList help = helpOf(command);
        for (const QString& text : help)
            Terminal::print(text);
        return 0;
    }
    checkCount(command, line.positionalArguments().size());
    const QString verbose = verboseOption().names().constLast();
    Log::install(line.optionNames().contains(verbose));
    return command.run(line);
}

QStringList CommandLine::overview(const QList<Command>& commands)
{
    TextTable table;
    for (const Command& command : commands)
        table.add({u"  %1 %2"_s.arg(command.name, command.arguments).trimmed().prepend(u"  "_s),
                   command.summary});
    return QStringList {u"Usage: zglobal COMMAND [options] [arguments]"_s, QString(), purpose(),
                        QString(), u"Commands:"_s}
    << table.lines() << QString() << conventions();
}

QString CommandLine::purpose()
{
    return u"Keeps, updates and shows the tables of a live-streaming client."_s;
}

QStringList CommandLine::conventions()
{
    return {
        u"\"zglobal COMMAND --help\" tells more. Data is printed on standard output, messages"_s,
        u"and progress on the error stream. Exit status: 0 done, 1 failed, 2 called wrongly."_s};
}

QList<QCommandLineOption> CommandLine::optionsOf(const Command& command)
{
    return command.options + QList {helpOption()};
}

QStringList CommandLine::spellings(const QCommandLineOption& option)
{
    QStringList spellings;
    const QStringList names = option.names();
    for (const QString& name : names)
        spellings.append((name.size() == 1 ? u"-"_s : u"--"_s) + name);
    return spellings;
}

QCommandLineOption CommandLine::jsonOption()
{
    return {u"json"_s, u"print the data as JSON"_s};
}

QCommandLineOption CommandLine::verboseOption()
{
    return {u"verbose"_s, u"tell the library's log on the error stream"_s};
}

QCommandLineOption CommandLine::contentOption()
{
    return {u"content"_s, u"publish this folder instead of the example content"_s, u"DIR"_s};
}

bool CommandLine::wantsJson(const QCommandLineParser& line)
{
    return line.isSet(jsonOption());
}
