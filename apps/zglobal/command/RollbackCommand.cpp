#include "command/Commands.h"
#include "command/Publishing.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"

#include <QDir>

namespace {

QCommandLineOption listOption()
{
    return {u"list"_s, u"print the journal and do nothing else"_s};
}
QCommandLineOption toOption()
{
    return {u"to"_s, u"go back to this release instead of the one before"_s, u"RELEASE"_s};
}

QString actionOf(const JournalEntry& entry)
{
    return entry.restored > 0 ? u"%1 to %2"_s.arg(entry.action, QString::number(entry.restored))
                              : entry.action;
}

QString changesOf(const JournalEntry& entry)
{
    constexpr int mostNamed = 3;
    QStringList changes;
    for (const VersionChange& change : entry.tables)
        changes.append(Publishing::textOf(change));
    if (changes.size() > mostNamed)
        changes = QStringList {Readable::counted(changes.size(), u"table"_s)};
    const int files = entry.addedFiles + entry.changedFiles + entry.removedFiles;
    if (files > 0)
        changes.append(Readable::counted(files, u"file"_s));
    return changes.join(u", "_s);
}

void printJournal(const QCommandLineParser& line, const PublishedTree& tree)
{
    TextTable table({u">release"_s, u"time"_s, u""_s, u"action"_s, u"changes"_s});
    QJsonArray list;
    for (const JournalEntry& entry : tree.journal()) {
        QJsonObject object = entry.toJson();
        object.insert(u"kept"_s, tree.has(entry.release));
        list.append(object);
        table.add({QString::number(entry.release), Readable::time(entry.time),
                   tree.has(entry.release) ? u"kept"_s : QString(), actionOf(entry),
                   changesOf(entry)});
    }
    if (CommandLine::wantsJson(line))
        Json::print(list);
    else
        table.print();
}

/** Of a release that went back, that which it went back to. */
int originOf(int release, const QVector<JournalEntry>& journal)
{
    for (int i = static_cast<int>(journal.size()) - 1; i >= 0; --i) {
        const JournalEntry& entry = journal.at(i);
        if (entry.release == release && entry.restored > 0)
            release = entry.restored;
    }
    return release;
}

/** Who goes back twice has not got far enough the first time. */
int targetOf(const QCommandLineParser& line, const PublishedTree& tree)
{
    const QString shown = QDir::toNativeSeparators(tree.folder());
    if (!line.isSet(toOption())) {
        const int target = originOf(tree.current(), tree.journal()) - 1;
        if (!tree.has(target))
            throw Failure {u"%1 keeps no release from before this content"_s.arg(shown)};
        return target;
    }
    const int target = line.value(toOption()).toInt();
    if (!tree.has(target))
        throw Failure {u"%1 keeps no release %2; \"zglobal rollback %1 --list\" tells which"_s.arg(
            shown, line.value(toOption()))};
    return target;
}

int run(const QCommandLineParser& line)
{
    PublishedTree tree(line.positionalArguments().constFirst());
    Publishing::check(tree.open());
    const QString shown = QDir::toNativeSeparators(tree.folder());
    if (tree.current() == 0)
        throw Failure {u"%1 has no releases; \"zglobal publish\" makes them"_s.arg(shown)};
    if (line.isSet(listOption())) {
        printJournal(line, tree);
        return 0;
    }
    Publishing::openFor(line, tree);
    const int target = targetOf(line, tree);
    PublishOptions options;
    options.kept = Publishing::keptBy(line);
    Plan plan;
    Publishing::check(plan.rollBack(target, tree, options));
    if (plan.changesAnything()) {
        const int was = tree.current();
        const int release = Publishing::carryOut(line, plan, tree);
        Terminal::tell(u"%1 the content of release %2 again; forward again: zglobal rollback %3 "
                       "--to %4"_s.arg(release > 0 ? u"it is"_s : u"it would be"_s,
                                       QString::number(target), shown, QString::number(was)));
        return 0;
    }
    Terminal::tell(u"nothing to do: the content of release %1 is what is published"_s.arg(target));
    return 0;
}

} // namespace

Command rollbackCommand()
{
    Command command;
    command.name = u"rollback"_s;
    command.arguments = u"OUT"_s;
    command.fewest = 1;
    command.most = 1;
    command.summary = u"Publish the content of an earlier release again."_s;
    command.details =
        u"OUT is a tree that \"zglobal publish\" made. Versions only go up: the content is\n"
        "that of the release before, under new versions, so clients fetch it. A second\n"
        "time goes back one further. Nothing is refused here."_s;
    command.examples = QStringList {u"zglobal rollback www --list"_s};
    command.options = QList<QCommandLineOption> {toOption(), listOption()} + Publishing::options();
    command.run = &run;
    return command;
}
