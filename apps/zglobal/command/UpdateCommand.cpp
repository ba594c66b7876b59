#include "command/Commands.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/ProgressBar.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "console/Wait.h"
#include "datatable/ZDataTableMgr.h"

#include <algorithm>

namespace {

QString wordFor(ZTableChange::Outcome outcome)
{
    switch (outcome) {
    case ZTableChange::Current:
        return u"current"_s;
    case ZTableChange::New:
        return u"new"_s;
    case ZTableChange::Failed:
        break;
    }
    return u"failed"_s;
}

using Changes = QVector<ZTableChange>;

int countOf(const Changes& changes, ZTableChange::Outcome outcome)
{
    return static_cast<int>(
        std::count_if(changes.begin(), changes.end(), [outcome](const ZTableChange& change) {
            return change.outcome() == outcome;
        }));
}

void printText(const Changes& changes)
{
    TextTable table({u"table"_s, u">was"_s, u">is"_s, u">size"_s, u"file"_s});
    for (const ZTableChange& change : changes) {
        if (change.outcome() != ZTableChange::Current)
            table.add({change.after.table, QString::number(change.before.version),
                       QString::number(change.after.version), Readable::size(change.after.size),
                       wordFor(change.outcome())});
    }
    if (!table.isEmpty())
        table.print();
    Terminal::print(u"%1 new, %2 current, %3 failed"_s.arg(
        QString::number(countOf(changes, ZTableChange::New)),
        QString::number(countOf(changes, ZTableChange::Current)),
        QString::number(countOf(changes, ZTableChange::Failed))));
}

void printJson(const Changes& changes)
{
    QJsonArray all;
    for (const ZTableChange& change : changes)
        all.append(QJsonObject {{u"table"_s, change.after.table},
                                {u"oldVersion"_s, change.before.version},
                                {u"version"_s, change.after.version},
                                {u"file"_s, change.after.path},
                                {u"bytes"_s, change.after.size},
                                {u"outcome"_s, wordFor(change.outcome())}});
    Json::print(all);
}

int run(const QCommandLineParser& line)
{
    Session session(line);
    ZDataTableMgr::getInstance()->loadLocalVersion();
    Outcome<ZUpdateResult> update;
    {
        ProgressBar bar;
        QObject::connect(&session.client(), &ZGlobalClient::sigProgress, &bar, &ProgressBar::show);
        update = settled(session->update());
    }
    if (!update.ok)
        throw Failure {update.error};
    if (CommandLine::wantsJson(line))
        printJson(update.value.tables);
    else
        printText(update.value.tables);
    for (const ZClientFailure& failure : qAsConst(update.value.failures))
        Terminal::tell(u"%1: %2"_s.arg(failure.what, failure.why));
    if (!update.value.failures.isEmpty())
        throw Failure {u"%1 tables could not be updated"_s.arg(update.value.failures.size())};
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
    command.examples = QStringList {u"zglobal update --server http://127.0.0.1:8080"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
