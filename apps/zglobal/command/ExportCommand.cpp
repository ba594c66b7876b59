#include "command/Commands.h"
#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "content/Content.h"
#include "content/Table.h"
#include "publish/Csv.h"
#include "publish/PublishedTree.h"
#include "publish/TableText.h"

namespace {

QCommandLineOption separatorOption()
{
    return {u"separator"_s, u"what stands between cells: comma, semicolon or tab"_s, u"NAME"_s,
            u"comma"_s};
}

QChar separatorOf(const QCommandLineParser& line)
{
    const QString name = line.value(separatorOption());
    if (name == u"comma"_s)
        return QLatin1Char(',');
    if (name == u"semicolon"_s)
        return QLatin1Char(';');
    if (name == u"tab"_s)
        return QLatin1Char('\t');
    throw UsageFailure(u"\"%1\" is no separator; there are comma, semicolon and tab"_s.arg(name));
}

/** Of a published tree that which is served, else what the path itself holds. */
Content contentAt(const QString& path)
{
    PublishedTree tree(path);
    const bool isTree = tree.open().isEmpty() && !tree.content().isEmpty();
    Content content;
    const QString fault = content.read(isTree ? tree.content() : path);
    if (!fault.isEmpty())
        throw Failure {fault};
    return content;
}

int run(const QCommandLineParser& line)
{
    const QString path = line.positionalArguments().at(0);
    const QString name = line.positionalArguments().at(1);
    const QChar separator = separatorOf(line);
    const Content content = contentAt(path);
    if (!content.tables.contains(name))
        throw Failure {u"%1 has no table %2; it has: %3"_s.arg(
            path, name, content.tables.keys().join(u", "_s))};
    const Table table(name, content.tables.value(name));
    if (!table.error().isEmpty())
        throw Failure {u"%1 is no table: %2"_s.arg(name, table.error())};
    if (CommandLine::wantsJson(line))
        Terminal::print(QString::fromUtf8(content.tables.value(name)).trimmed());
    else
        Terminal::print(Csv::written(TableText::sheet(table), separator).chopped(1));
    return 0;
}

} // namespace

Command exportCommand()
{
    Command command;
    command.name = u"export"_s;
    command.arguments = u"DIR TABLE"_s;
    command.fewest = 2;
    command.most = 2;
    command.summary = u"Print a table as CSV, for a spreadsheet and for \"publish\"."_s;
    command.details =
        u"DIR is a published tree, a content folder or a folder of tables. Spreadsheets\n"
        "that take a comma for that of a number want \"--separator semicolon\" or \"tab\"."_s;
    command.examples = QStringList {u"zglobal export site CS_GiftList > CS_GiftList.csv"_s};
    command.options = {separatorOption(), CommandLine::jsonOption(), CommandLine::verboseOption()};
    command.run = &run;
    return command;
}
