#include "command/CommandLine.h"

#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Log.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "lint/Wording.h"

#include <algorithm>

namespace {

QCommandLineOption helpOption()
{
    return {{u"h"_s, u"help"_s}, u"print this help"_s};
}
QCommandLineOption quietOption()
{
    return {{u"q"_s, u"quiet"_s}, u"tell errors only; data is printed all the same"_s};
}
QCommandLineOption plainOption()
{
    return {u"plain"_s, u"as into a pipe: no colour, no progress, nothing cut"_s};
}

/** What every command has. */
QList<QCommandLineOption> generalOptions()
{
    return {quietOption(), plainOption(), helpOption()};
}

/** Help is no data: it is as wide as a page where no terminal says otherwise. */
int helpWidth()
{
    constexpr int page = 80;
    constexpr int widest = 100;
    return Terminal::width() > 0 ? std::min(Terminal::width(), widest) : page;
}

QStringList paragraphs(const QString& text)
{
    QStringList lines;
    const QStringList parts = text.split(u"\n\n"_s);
    for (const QString& part : parts)
        lines << QString() << Terminal::wrapped(part.simplified(), helpWidth());
    return lines;
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
        u"Usage: zglobal %1 [options] %2"_s.arg(command.name, command.arguments).trimmed()};
    lines << paragraphs(command.summary);
    if (!command.details.isEmpty())
        lines << paragraphs(command.details);
    lines << QString() << u"Options:"_s << options.lines(helpWidth());
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

QString faultOf(const QCommandLineParser& line, const Command& command)
{
    const QString unknown = line.unknownOptionNames().value(0);
    QStringList names;
    for (const QCommandLineOption& option : CommandLine::optionsOf(command))
        names += option.names();
    const QString near = CommandLine::orNear(unknown, names);
    return near.isEmpty() ? line.errorText()
                          : line.errorText().chopped(1) + near + QLatin1Char('.');
}

} // namespace

QString CommandLine::orNear(const QString& name, const QStringList& names)
{
    const QString near = Wording::nearest(name, names);
    return near.isEmpty() ? near : u", but there is \"%1\""_s.arg(near);
}

int CommandLine::run(const Command& command, const QStringList& arguments)
{
    QCommandLineParser line;
    line.addOptions(CommandLine::optionsOf(command));
    if (!line.parse(QStringList(command.name) + arguments))
        throw UsageFailure(faultOf(line, command)
                           + u" See \"zglobal %1 --help\"."_s.arg(command.name));
    if (line.isSet(helpOption())) {
        const QStringList help = helpOf(command);
        for (const QString& text : help)
            Terminal::print(text);
        return 0;
    }
    checkCount(command, line.positionalArguments().size());
    const bool verbose = line.optionNames().contains(verboseOption().names().constLast());
    if (verbose && line.isSet(quietOption()))
        throw UsageFailure(u"--verbose and --quiet exclude each other"_s);
    Terminal::setManner({line.isSet(quietOption()), line.isSet(plainOption())});
    Log::install(verbose);
    return command.run(line);
}

QStringList CommandLine::overview(const QList<Command>& commands)
{
    TextTable table;
    for (const Command& command : commands)
        table.add({u"  %1 %2"_s.arg(command.name, command.arguments).trimmed().prepend(u"  "_s),
                   command.summary});
    QStringList lines {u"Usage: zglobal COMMAND [options] [arguments]"_s};
    lines << paragraphs(purpose()) << QString() << u"Commands:"_s << table.lines(helpWidth());
    lines << paragraphs(conventions()) << QString() << u"Exit status:"_s;
    TextTable statuses;
    for (const ExitStatus& status : exitStatuses())
        statuses.add({u"  "_s + status.number, status.meaning});
    return lines << statuses.lines(helpWidth());
}

QString CommandLine::purpose()
{
    return u"Keeps, updates and shows the tables of a live-streaming client."_s;
}

QString CommandLine::conventions()
{
    return u"\"zglobal COMMAND --help\" tells more. Data is printed on standard output, messages "
           "and progress on the error stream. On a terminal tables fit its width, or COLUMNS; into "
           "a pipe nothing is cut. NO_COLOR in the environment takes the colours away."_s;
}

QVector<CommandLine::ExitStatus> CommandLine::exitStatuses()
{
    return {{u"0"_s, u"done"_s},
            {u"1"_s,
             u"failed, or something was found that should not be; the error stream says "
             "what"_s},
            {u"2"_s, u"called wrongly; nothing was done"_s},
            {u"130"_s, u"ended by Ctrl-C (SIGINT)"_s},
            {u"143"_s, u"ended by SIGTERM"_s}};
}

QList<QCommandLineOption> CommandLine::optionsOf(const Command& command)
{
    return command.options + generalOptions();
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
