#include "Pages.h"
#include "Values.h"
#include "console/Literals.h"

namespace {

/** --name=VALUE with the placeholder of the value, or --name, and so for each of its names. */
QStringList words(const QCommandLineOption& option)
{
    QStringList words = CommandLine::spellings(option);
    if (!option.valueName().isEmpty()) {
        for (QString& word : words)
            word += QLatin1Char('=') + option.valueName();
    }
    return words;
}

QString optionCases(const QList<Command>& commands)
{
    QString cases;
    for (const Command& command : commands) {
        QStringList all;
        const QList<QCommandLineOption> options = CommandLine::optionsOf(command);
        for (const QCommandLineOption& option : options)
            all << words(option);
        cases += u"        %1) echo '%2' ;;\n"_s.arg(command.name, all.join(QLatin1Char(' ')));
    }
    return cases;
}

QString argumentCases(const QList<Command>& commands)
{
    QString cases;
    for (const Command& command : commands)
        cases += u"        %1) echo '%2' ;;\n"_s.arg(
            command.name, Values::placeholders(command).join(QLatin1Char(' ')));
    return cases;
}

} // namespace

QString Pages::bashCompletion(QString pattern, const QList<Command>& commands)
{
    QStringList names;
    for (const Command& command : commands)
        names.append(command.name);
    names << u"--help"_s << u"--version"_s;
    return pattern.replace(u"@options@"_s, optionCases(commands))
        .replace(u"@arguments@"_s, argumentCases(commands))
        .replace(u"@folder@"_s, Values::folders().join(QLatin1Char('|')))
        .replace(u"@file@"_s, Values::files().join(QLatin1Char('|')))
        .replace(u"@table@"_s, Values::tables().join(QLatin1Char('|')))
        .replace(u"@tables@"_s, Values::tableNames().join(QLatin1Char(' ')))
        .replace(u"@commands@"_s, names.join(QLatin1Char(' ')));
}
