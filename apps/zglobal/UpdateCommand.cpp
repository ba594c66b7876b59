#include "Commands.h"
#include "Failure.h"
#include "Host.h"
#include "Json.h"
#include "Literals.h"
#include "Terminal.h"
#include "TextTable.h"
#include "Words.h"
#include "datatable/ZDataTableMgr.h"

namespace {

/** One table before and after. */
struct Change
{
    Host::TableFile before;
    Host::TableFile after;

    QString outcome() const
    {
        if (after.size == 0)
            return u"failed"_s;
        return after.path == before.path && before.size > 0 ? u"current"_s : u"new"_s;
    }
};

QStringList namesOf(const QVector<Change>& changes, const QString& outcome)
{
    QStringList names;
    for (const Change& change : changes) {
        if (change.outcome() == outcome)
            names.append(change.after.report.table);
    }
    return names;
}

void printText(const QVector<Change>& changes)
{
    TextTable table({u"table"_s, u">was"_s, u">is"_s, u">size"_s, u"file"_s});
    for (const Change& change : changes) {
        if (change.outcome() != u"current"_s)
            table.add({change.after.report.table, QString::number(change.before.version),
                       QString::number(change.after.version), Words::size(change.after.size),
                       change.outcome()});
    }
    if (!table.isEmpty())
        table.print();
    Terminal::print(u"%1 new, %2 current, %3 failed"_s.arg(
        QString::number(namesOf(changes, u"new"_s).size()),
        QString::number(namesOf(changes, u"current"_s).size()),
        QString::number(namesOf(changes, u"failed"_s).size())));
}

void printJson(const QVector<Change>& changes)
{
    QJsonArray all;
    for (const Change& change : changes)
        all.append(QJsonObject {{u"table"_s, change.after.report.table},
                                {u"oldVersion"_s, change.before.version},
                                {u"version"_s, change.after.version},
                                {u"file"_s, change.after.path},
                                {u"bytes"_s, change.after.size},
                                {u"outcome"_s, change.outcome()}});
    Json::print(all);
}

int run(const QCommandLineParser& line)
{
    Host::enter(line);
    ZDataTableMgr::getInstance()->loadLocalVersion();
    QVector<Change> changes;
    const QVector<Host::TableFile> before = Host::tableFiles();
    for (const Host::TableFile& file : before)
        changes.append({file, file});
    Host::learnVersions();
    const Host::Updated updated = Host::updateTables();
    const QVector<Host::TableFile> after = Host::tableFiles();
    for (int i = 0; i < changes.size(); ++i)
        changes[i].after = after.at(i);
    Host::waitForSavedVersions();
    Host::fetchActivityAwards();

    if (CommandLine::wantsJson(line))
        printJson(changes);
    else
        printText(changes);
    const QStringList failed = namesOf(changes, u"failed"_s);
    if (!failed.isEmpty() || !updated.ok)
        throw Failure {u"%1 of %2 tables could not be updated (%3): %4"_s.arg(
            QString::number(failed.size()), QString::number(changes.size()), failed.join(u", "_s),
            updated.error.isEmpty() ? u"no usable answer"_s : updated.error)};
    return 0;
}

} // namespace

Command updateCommand()
{
    Command command;
    command.name = u"update"_s;
    command.summary = u"Learn the tables' versions and download what is new."_s;
    command.details =
        u"The first time the content server has to be named. Prints every table whose "
        "file is new or\ncould not be had; --json prints all of them."_s;
    command.options = Host::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
