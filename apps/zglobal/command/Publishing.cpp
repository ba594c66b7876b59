#include "command/Publishing.h"

#include "command/CommandLine.h"
#include "command/DiffText.h"
#include "command/FindingReport.h"
#include "console/Failure.h"
#include "console/Interrupt.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "diff/ContentDiff.h"
#include "diff/DiffJson.h"

#include <QDir>
#include <QElapsedTimer>

#include <algorithm>
#include <memory>

namespace {

constexpr int leastKept = 2; // one to go back to

QCommandLineOption trialOption()
{
    return {u"dry-run"_s, u"tell what would come of it and write nothing"_s};
}
QCommandLineOption keepOption()
{
    return {u"keep"_s, u"keep this many releases to go back to; 5 when not given"_s, u"NUMBER"_s,
            u"5"_s};
}

/** Clients fetch a picture again when its address is another one. */
QStringList notesOn(const QVector<TableChange>& changes)
{
    QStringList notes;
    for (const TableChange& table : changes) {
        for (const FileChange& file : table.files) {
            const bool isTold = std::any_of(table.records.begin(), table.records.end(),
                                            [&file](const RecordChange& record) {
                                                return file.records.contains(record.label());
                                            });
            if (file.kind == Change::Changed && !isTold && !table.table.isEmpty())
                notes.append(
                    u"%1 changed, but nothing that names it: who has it keeps the old one"_s.arg(
                        file.path));
        }
    }
    return notes;
}

void print(const Plan& plan, const QVector<TableChange>& changes)
{
    FindingReport::print(plan.findings, plan.sheetRows);
    if (plan.before.tables.isEmpty()) { // everything would be a change
        const auto tables = Readable::counted(plan.tables.size(), u"table"_s);
        const auto files = Readable::counted(plan.release.entry.addedFiles, u"other file"_s);
        Terminal::print(tables + u", "_s + files);
        return;
    }
    for (const QString& line : DiffText::lines(changes))
        Terminal::print(line);
}

QJsonObject objectOf(const Plan& plan, const QVector<TableChange>& changes, int release)
{
    QJsonObject object = plan.release.entry.toJson();
    object.insert(u"release"_s, release);
    object.remove(u"time"_s);
    object.insert(u"findings"_s, FindingReport::json(plan.findings, plan.sheetRows));
    object.insert(u"changes"_s, DiffJson::of(changes));
    object.insert(u"notes"_s, QJsonArray::fromStringList(plan.notes));
    return object;
}

QString native(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

void tellOutcome(const Plan& plan, const PublishedTree& tree, int release)
{
    if (release == 0) {
        Terminal::tell(u"a dry run: nothing is published"_s);
        return;
    }
    Terminal::tell(u"published as release %1; served is %2"_s.arg(
        QString::number(release), native(tree.folder() + u"/current"_s)));
    if (!plan.tables.isEmpty())
        Terminal::tell(u"clients fetch %1 when they next update"_s.arg(
            plan.tables.size() > 3 ? Readable::counted(plan.tables.size(), u"table"_s)
                                   : plan.tables.join(u", "_s)));
    if (release > 1 && plan.release.entry.restored == 0)
        Terminal::tell(u"the way back: zglobal rollback %1"_s.arg(native(tree.folder())));
}

} // namespace

QList<QCommandLineOption> Publishing::options()
{
    return {trialOption(), keepOption(), CommandLine::jsonOption(), CommandLine::verboseOption()};
}

bool Publishing::isTrial(const QCommandLineParser& line)
{
    return line.isSet(trialOption());
}

int Publishing::keptBy(const QCommandLineParser& line)
{
    const int kept = line.value(keepOption()).toInt();
    if (kept < leastKept)
        throw UsageFailure(u"--keep takes a number from %1 on"_s.arg(leastKept));
    return kept;
}

void Publishing::check(const QString& fault)
{
    if (!fault.isEmpty())
        throw Failure {fault};
}

void Publishing::openFor(const QCommandLineParser& line, PublishedTree& tree)
{
    check(tree.open());
    if (!isTrial(line))
        check(tree.lock());
}

int Publishing::carryOut(const QCommandLineParser& line, Plan& plan, PublishedTree& tree)
{
    const QVector<TableChange> changes = ContentDiff::between(plan.before, plan.after);
    const bool wantsJson = CommandLine::wantsJson(line);
    if (!wantsJson)
        print(plan, changes);
    plan.notes += notesOn(changes);
    for (const QString& note : qAsConst(plan.notes))
        Terminal::tell(u"note: "_s + note);
    int release = 0;
    if (!isTrial(line)) {
        check(tree.add(plan.release, keptBy(line), progress()));
        release = tree.current();
    }
    if (wantsJson)
        Json::print(objectOf(plan, changes, release));
    tellOutcome(plan, tree, release);
    return release;
}

PublishedTree::Progress Publishing::progress()
{
    constexpr qint64 silence = 1000; // milliseconds, as what follows
    constexpr qint64 pause = 100;
    const auto clock = std::make_shared<QElapsedTimer>();
    const auto drawn = std::make_shared<qint64>(silence);
    clock->start();
    return [clock, drawn](int done, int all) {
        Interrupt::check();
        if (!Terminal::isErrorTerminal() || clock->elapsed() < *drawn + pause)
            return;
        *drawn = clock->elapsed();
        Terminal::draw(
            u"\r\x1b[K%1 of %2 files"_s.arg(QString::number(done), QString::number(all)));
    };
}

QString Publishing::textOf(const VersionChange& change)
{
    const QString before = change.from ? QString::number(*change.from) + u" -> "_s : QString();
    return u"%1 %2%3"_s.arg(change.table, before, QString::number(change.to));
}
