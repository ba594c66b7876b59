#include "Pages.h"
#include "console/Literals.h"

#include <QCoreApplication>

namespace {

/** Text as it stands: no character of it is a request. */
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), u"\\e"_s).replace(QLatin1Char('-'), u"\\-"_s);
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.startsWith(QLatin1Char('.')) || line.startsWith(QLatin1Char('\'')))
            line.prepend(u"\\&"_s);
    }
    return lines.join(QLatin1Char('\n'));
}

QString bold(const QString& text)
{
    return u"\\fB"_s + escaped(text) + u"\\fR"_s;
}

QString italic(const QString& text)
{
    return u"\\fI"_s + escaped(text) + u"\\fR"_s;
}

QStringList optionLines(const QCommandLineOption& option)
{
    QStringList names;
    const QStringList spellings = CommandLine::spellings(option);
    for (const QString& name : spellings)
        names.append(bold(name));
    QString term = names.join(u", "_s);
    if (!option.valueName().isEmpty())
        term += QLatin1Char(' ') + italic(option.valueName());
    return {u".TP"_s, term, escaped(option.description())};
}

QStringList commandLines(const Command& command)
{
    QString usage = bold(u"zglobal "_s + command.name) + u" [options]"_s;
    if (!command.arguments.isEmpty())
        usage += QLatin1Char(' ') + italic(command.arguments);
    QStringList lines {u".SS "_s + escaped(command.name), usage, u".PP"_s,
                       escaped(command.summary)};
    if (!command.details.isEmpty())
        lines << escaped(command.details).replace(u"\n\n"_s, u"\n.PP\n"_s);
    const QList<QCommandLineOption> options = CommandLine::optionsOf(command);
    for (const QCommandLineOption& option : options)
        lines << optionLines(option);
    return lines;
}

} // namespace

QString Pages::manual(QString pattern, const QList<Command>& commands)
{
    QString purpose = CommandLine::purpose();
    purpose.chop(1); // a name's line is no sentence
    purpose.replace(0, 1, purpose.at(0).toLower());
    QString texts;
    QString examples;
    for (const Command& command : commands) {
        texts += commandLines(command).join(QLatin1Char('\n')) + QLatin1Char('\n');
        for (const QString& example : command.examples)
            examples += escaped(example) + QLatin1Char('\n');
    }
    QString statuses;
    for (const CommandLine::ExitStatus& status : CommandLine::exitStatuses())
        statuses += u".TP\n%1\n%2\n"_s.arg(bold(status.number), escaped(status.meaning));
    return pattern.replace(u"@version@"_s, QCoreApplication::applicationVersion())
        .replace(u"@purpose@"_s, escaped(purpose))
        .replace(u"@conventions@"_s, escaped(CommandLine::conventions()))
        .replace(u"@statuses@"_s, statuses)
        .replace(u"@commands@"_s, texts)
        .replace(u"@examples@"_s, examples);
}
