#include "command/Commands.h"
#include "command/FindingReport.h"
#include "command/Publishing.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "console/WorkLine.h"

#include <QDir>

namespace {

QCommandLineOption adoptOption()
{
    return {u"adopt"_s, u"make the content that lies in OUT itself the first release"_s};
}
QCommandLineOption encodingOption()
{
    return {u"encoding"_s, u"of the CSV files, where they are not UTF-8, UTF-16 or GB18030"_s,
            u"NAME"_s};
}
QCommandLineOption strictOption()
{
    return {u"strict"_s, u"refuse new warnings, too"_s};
}
QCommandLineOption wholeOption()
{
    return {u"whole"_s, u"SRC is all there is: files that it lacks are taken away"_s};
}

/** Plain content is not touched before somebody says so: its server would go on serving it. */
void takeOver(const QCommandLineParser& line, PublishedTree& tree)
{
    if (!tree.isPlain())
        return;
    const QString folder = QDir::toNativeSeparators(tree.folder());
    const QString current = QDir::toNativeSeparators(tree.folder() + u"/current"_s);
    if (!line.isSet(adoptOption()))
        throw Failure {u"%1 holds content without releases. --adopt makes it the first one and "
                       "leaves it as it is; the server is then to serve %2"_s.arg(folder, current)};
    if (Publishing::isTrial(line))
        return;
    Publishing::check(tree.adopt(Publishing::progress()));
    Terminal::tell(u"%1 is release 1 now: let the server serve %2. What lay in %1 before is there "
                   "still, and of no more use."_s.arg(folder, current));
}

/** What was found where there is nothing to publish, or nobody may. */
int refuse(const QCommandLineParser& line, const Plan& plan)
{
    if (CommandLine::wantsJson(line))
        Json::print(
            QJsonObject {{u"release"_s, 0},
                         {u"findings"_s, FindingReport::json(plan.findings, plan.sheetRows)}});
    else
        FindingReport::print(plan.findings, plan.sheetRows);
    Terminal::tell(
        u"refused: %1; nothing is published"_s.arg(FindingReport::summary(plan.findings)));
    return 1;
}

int run(const QCommandLineParser& line)
{
    const QStringList arguments = line.positionalArguments();
    PublishOptions options;
    options.silenced = FindingReport::silencedBy(line);
    options.encoding = line.value(encodingOption());
    options.isWhole = line.isSet(wholeOption());
    options.kept = Publishing::keptBy(line);
    PublishedTree tree(arguments.at(1));
    Publishing::openFor(line, tree);
    takeOver(line, tree);
    Plan plan;
    QString fault;
    {
        WorkLine work(u"looking over"_s);
        options.pause = [&work](const QString& what) { work.next(what); };
        fault = plan.publish(arguments.at(0), tree, options);
    }
    Publishing::check(fault);
    const bool hasWarning = FindingReport::count(plan.findings, Severity::Warning) > 0;
    if (plan.isRefused() || (line.isSet(strictOption()) && hasWarning))
        return refuse(line, plan);
    if (plan.changesAnything()) {
        Publishing::carryOut(line, plan, tree);
        return 0;
    }
    if (CommandLine::wantsJson(line))
        Json::print(QJsonObject {{u"release"_s, tree.current()}, {u"tables"_s, QJsonArray()}});
    Terminal::tell(u"nothing to publish: %1 has all of it already"_s.arg(
        QDir::toNativeSeparators(tree.folder())));
    return 0;
}

} // namespace

Command publishCommand()
{
    Command command;
    command.name = u"publish"_s;
    command.arguments = u"SRC OUT"_s;
    command.fewest = 2;
    command.most = 2;
    command.summary = u"Publish tables and files; clients get all of it or none."_s;
    command.details =
        u"SRC is a table, or a folder with tables and, as in a content folder, pictures\n"
        "and archives. A table is a table file, or a CSV file as spreadsheets save it,\n"
        "called like the table: CS_GiftList.csv. OUT is the published tree; its server\n"
        "serves OUT/current. Tables and files that SRC does not have stay as they are\n"
        "published; of a table that it has, a row that is not in it is gone.\n"
        "\n"
        "To change a table: export it, edit the CSV file in a spreadsheet, try it with\n"
        "--dry-run, publish it. What differs is shown, and the version of each table\n"
        "that changed is raised. What clients would refuse, lose or show wrong is refused\n"
        "with table, row and column; \"zglobal rollback OUT\" is the way back."_s;
    command.examples =
        QStringList {u"zglobal publish site www    # a content folder, for the first time"_s,
                     u"zglobal export www CS_GiftList > CS_GiftList.csv    # edit this file"_s,
                     u"zglobal publish CS_GiftList.csv www --dry-run"_s,
                     u"zglobal publish CS_GiftList.csv www"_s};
    command.options = QList<QCommandLineOption> {FindingReport::allowOption(), strictOption(),
                                                 wholeOption(), adoptOption(), encodingOption()}
        + Publishing::options();
    command.run = &run;
    return command;
}
