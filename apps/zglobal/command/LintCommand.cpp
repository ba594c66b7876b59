#include "command/Commands.h"
#include "command/FindingReport.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "console/WorkLine.h"
#include "lint/Lint.h"

#include <QFile>

namespace {

QCommandLineOption againstOption()
{
    return {u"against"_s, u"compare versions and tables with the published folder"_s, u"DIR"_s};
}
QCommandLineOption atOption()
{
    return {u"at"_s, u"with --against: tell what is shown otherwise at that time"_s, u"TIME"_s};
}
QCommandLineOption phrasesOption()
{
    return {u"phrases"_s, u"a text file with the phrases that no word may mask, one a line"_s,
            u"FILE"_s};
}
QCommandLineOption rulesOption()
{
    return {u"rules"_s, u"list the rules and do nothing else"_s};
}

void printRules()
{
    TextTable table;
    for (const RuleInfo& rule : Rules::all())
        table.add({QString::fromLatin1(rule.name), Rules::word(rule.severity),
                   QString::fromLatin1(rule.summary)});
    table.print();
}

Content contentAt(const QStringList& paths)
{
    Content content;
    for (const QString& path : paths) {
        const QString fault = content.read(path);
        if (!fault.isEmpty())
            throw Failure {fault};
    }
    return content;
}

/** No valid one when none is asked for. */
QDateTime momentFor(const QCommandLineParser& line)
{
    if (!line.isSet(atOption()))
        return {};
    if (!line.isSet(againstOption()))
        throw UsageFailure(u"--at compares with published tables; name them with --against DIR"_s);
    const QString text = line.value(atOption());
    QDateTime moment = Readable::moment(text);
    if (!moment.isValid())
        throw UsageFailure(u"\"%1\" is no time \"yyyy-MM-dd HH:mm:ss\""_s.arg(text));
    return moment;
}

QStringList phrasesFor(const QCommandLineParser& line)
{
    if (!line.isSet(phrasesOption()))
        return Lint::everydayPhrases();
    QFile file(line.value(phrasesOption()));
    if (!file.open(QIODevice::ReadOnly))
        throw Failure {u"%1 cannot be read: %2"_s.arg(file.fileName(), file.errorString())};
    QStringList phrases;
    for (const QString& phrase : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')))
        phrases.append(phrase.trimmed());
    phrases.removeAll(QString());
    return phrases;
}

int run(const QCommandLineParser& line)
{
    if (line.isSet(rulesOption())) {
        printRules();
        return 0;
    }
    if (line.positionalArguments().isEmpty())
        throw UsageFailure(u"DIR or FILE is missing; see \"zglobal lint --help\""_s);
    Lint lint(FindingReport::silencedBy(line), phrasesFor(line));
    const QDateTime moment = momentFor(line);
    const Content content = contentAt(line.positionalArguments());
    std::optional<Content> published;
    if (line.isSet(againstOption()))
        published = contentAt({line.value(againstOption())});
    QVector<Finding> findings;
    {
        WorkLine work(u"looking over"_s);
        lint.setPause([&work](const QString& what) { work.next(what); });
        findings = lint.findings(content, published ? &*published : nullptr, moment);
    }
    if (CommandLine::wantsJson(line))
        Json::print(FindingReport::json(findings));
    else
        FindingReport::print(findings);
    Terminal::tell(u"%1: %2"_s.arg(Readable::counted(content.tables.size(), u"table"_s),
                                   FindingReport::summary(findings)));
    const int faults = FindingReport::count(findings, Severity::Error)
        + FindingReport::count(findings, Severity::Warning);
    return faults > 0 ? 1 : 0;
}

} // namespace

Command lintCommand()
{
    Command command;
    command.name = u"lint"_s;
    command.arguments = u"DIR|FILE..."_s;
    command.most = Command::anyNumber;
    command.summary = u"Tell what clients would make of content before it is published."_s;
    command.details =
        u"DIR is a content folder, or a folder of tables; FILE is a table, or\n"
        "versions.json. Reads them as a client does and names what it would refuse, lose\n"
        "or show wrong: in the files, where the content folder is at hand, and between\n"
        "tables, where both are. Ends with 1 when there is an error or a warning.\n"
        "TIME is local, \"yyyy-MM-dd HH:mm:ss\"."_s;
    command.examples = QStringList {u"zglobal lint site"_s,
                                    u"zglobal lint site/app/resources/CS_GiftList --json"_s};
    command.options = {CommandLine::jsonOption(),
                       FindingReport::allowOption(),
                       againstOption(),
                       atOption(),
                       phrasesOption(),
                       rulesOption(),
                       CommandLine::verboseOption()};
    command.run = &run;
    return command;
}
