#include "command/Commands.h"
#include "command/DiffSide.h"
#include "command/DiffText.h"
#include "console/Failure.h"
#include "console/Interrupt.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "diff/ContentDiff.h"
#include "diff/DiffJson.h"
#include "diff/DiffPage.h"

#include <QDir>
#include <QSaveFile>

#include <algorithm>

namespace {

QCommandLineOption htmlOption()
{
    return {u"html"_s, u"write a page that can be sent around, with the pictures in it"_s,
            u"FILE"_s};
}
QCommandLineOption tableOption()
{
    return {u"table"_s, u"only this table; may be given several times"_s, u"TABLE"_s};
}
QCommandLineOption exitCodeOption()
{
    return {u"exit-code"_s, u"end with 1 when there is a difference"_s};
}

QStringList chosenTables(const QCommandLineParser& line)
{
    QStringList names = line.values(tableOption());
    for (const QString& name : qAsConst(names)) {
        if (!Content::isTable(name))
            throw UsageFailure(u"there is no table \"%1\""_s.arg(name)
                               + CommandLine::orNear(name, Content::tableNames()));
    }
    return names;
}

void writePage(const QString& path, const QVector<TableChange>& changes, const DiffSide& before,
               const DiffSide& after)
{
    const DiffPage page({before.title(), before.reader(DiffPage::filesBefore(changes))},
                        {after.title(), after.reader(DiffPage::filesAfter(changes))});
    const QByteArray html = page.html(changes);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(html) != html.size() || !file.commit())
        throw Failure {
            u"%1 cannot be written: %2"_s.arg(QDir::toNativeSeparators(path), file.errorString())};
}

/** What could not be compared, each on a line of the error stream. */
void tellErrors(const QVector<TableChange>& changes, const DiffSide& before, const DiffSide& after)
{
    int count = 0;
    const auto tell = [&count](const DiffSide& side, const TableChange& change,
                               const QString& error) {
        if (error.isEmpty())
            return;
        ++count;
        Terminal::complain(u"%1, %2: %3"_s.arg(side.title(), change.table, error));
    };
    for (const TableChange& change : changes) {
        tell(before, change, change.errorBefore);
        tell(after, change, change.errorAfter);
    }
    if (count > 0)
        throw Failure {u"not everything could be compared"_s};
}

int run(const QCommandLineParser& line)
{
    const QStringList tables = chosenTables(line);
    DiffSide before(line.positionalArguments().at(0));
    DiffSide after(line.positionalArguments().at(1));
    DiffSide::adapt(before, after);
    if (!line.isSet(htmlOption()))
        Interrupt::release(); // nothing is left behind
    QVector<TableChange> changes = ContentDiff::between(before.content(), after.content());
    if (!tables.isEmpty())
        changes = ContentDiff::ofTables(changes, tables);
    if (line.isSet(htmlOption()))
        writePage(line.value(htmlOption()), changes, before, after);
    if (CommandLine::wantsJson(line))
        Json::print(DiffJson::of(changes));
    else if (!line.isSet(htmlOption()))
        for (const QString& text : DiffText::lines(changes))
            Terminal::print(text);
    Terminal::tell(ContentDiff::summary(changes));
    tellErrors(changes, before, after);
    const bool differs = std::any_of(changes.begin(), changes.end(), [](const TableChange& change) {
        return change.isDifferent();
    });
    return differs && line.isSet(exitCodeOption()) ? 1 : 0;
}

} // namespace

Command diffCommand()
{
    Command command;
    command.name = u"diff"_s;
    command.arguments = u"OLD NEW"_s;
    command.fewest = command.most = 2;
    command.summary = u"Tell what differs between two states of the content."_s;
    command.details =
        u"OLD and NEW are each a content folder, a folder of tables, a table's file, or the "
        u"address "
        "of a content server; of tables alone only those are compared. Records are told apart by "
        "their ids: + is new, - is gone, ~ has changed, field by field; of long texts only what "
        "differs is shown. Files are compared between content folders; from a server --html "
        "fetches the pictures of changed records.\n\n"
        "Ends with 0 whether or not there is a difference, unless --exit-code is given; with 1 "
        "when something could not be read."_s;
    command.examples = QStringList {u"cp -r site next && zglobal diff site next"_s,
                                    u"zglobal diff site next --html changes.html"_s};
    command.options = {CommandLine::jsonOption(), htmlOption(), tableOption(), exitCodeOption(),
                       CommandLine::verboseOption()};
    command.run = &run;
    return command;
}
