#include "Pages.h"
#include "Values.h"
#include "console/Literals.h"

namespace {

QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), u"'\\''"_s) + QLatin1Char('\'');
}

/** Text inside of what zsh is told of an argument, where colons and brackets part it. */
QString inside(const QString& text)
{
    QString escaped;
    for (const QChar letter : text) {
        if (u"\\:[]"_s.contains(letter))
            escaped += QLatin1Char('\\');
        escaped += letter;
    }
    return escaped;
}

QString offered(const QString& placeholder)
{
    if (Values::folders().contains(placeholder))
        return u"_files -/"_s;
    if (Values::files().contains(placeholder))
        return u"_files"_s;
    if (Values::tables().contains(placeholder))
        return u"_zglobal_tables"_s;
    if (placeholder.contains(QLatin1Char('|')))
        return QLatin1Char('(') + QString(placeholder).replace(QLatin1Char('|'), QLatin1Char(' '))
            + QLatin1Char(')');
    return u" "_s;
}

/** One argument for _arguments: an option under one of its names. */
QString toldOf(const QString& spelling, const QCommandLineOption& option)
{
    QString text = u"%1[%2]"_s.arg(spelling, inside(option.description()));
    if (!option.valueName().isEmpty())
        text += u":%1:%2"_s.arg(option.valueName(), offered(option.valueName()));
    return quoted(text);
}

QString commandCase(const Command& command)
{
    QStringList arguments {u"        %1) _arguments"_s.arg(command.name)};
    const QList<QCommandLineOption> options = CommandLine::optionsOf(command);
    for (const QCommandLineOption& option : options) {
        const QStringList spellings = CommandLine::spellings(option);
        for (const QString& spelling : spellings)
            arguments.append(toldOf(spelling, option));
    }
    const QStringList placeholders = Values::placeholders(command);
    int place = 0;
    for (const QString& placeholder : placeholders) {
        const QString which =
            command.most == Command::anyNumber ? u"*"_s : QString::number(++place);
        const QString title = placeholder.contains(QLatin1Char('|')) ? u"one of"_s : placeholder;
        arguments.append(quoted(u"%1:%2:%3"_s.arg(which, title, offered(placeholder))));
    }
    return arguments.join(u" \\\n            "_s) + u" ;;\n"_s;
}

} // namespace

QString Pages::zshCompletion(QString pattern, const QList<Command>& commands)
{
    QString names;
    QString cases;
    for (const Command& command : commands) {
        names += u"        %1\n"_s.arg(quoted(command.name + QLatin1Char(':') + command.summary));
        cases += commandCase(command);
    }
    return pattern.replace(u"@tables@"_s, Values::tableNames().join(QLatin1Char(' ')))
        .replace(u"@commands@"_s, names)
        .replace(u"@cases@"_s, cases);
}
