#include "command/Commands.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "console/Wait.h"
#include "datatable/ZDataTableMgr.h"

#include <QSet>

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

/** Where the operator has to look, if it is not told already. */
ZClientFailure withAddress(const ZClientFailure& failure)
{
    if (failure.why.contains(u"://"_s))
        return failure;
    const QUrl address(ZGlobalClient::configuration(u"cmsServer"_s) + u"app/resources/"_s
                       + failure.what);
    return {failure.what, u"%1 (%2)"_s.arg(failure.why, address.toString(QUrl::RemoveUserInfo))};
}

/** What did not come in, and what came in and will not do. */
QVector<ZClientFailure> failuresOf(ZGlobalClient& client, const ZUpdateResult& update)
{
    QVector<ZClientFailure> all = update.failures;
    QSet<QString> told;
    for (const ZClientFailure& failure : qAsConst(all))
        told.insert(failure.what);
    client.load();
    for (const ZClientFailure& failure : client.failures()) {
        if (!told.contains(failure.what))
            all.append(withAddress(failure));
    }
    return all;
}

int run(const QCommandLineParser& line)
{
    Session session(line, Session::Updates);
    ZDataTableMgr::getInstance()->loadLocalVersion();
    Outcome<ZUpdateResult> update;
    {
        const auto bar = session.progress();
        update = settled(session->update());
    }
    if (!update.ok)
        throw Failure {update.error};
    if (CommandLine::wantsJson(line))
        printJson(update.value.tables);
    else if (!Terminal::isQuiet())
        printText(update.value.tables);
    const QVector<ZClientFailure> failures = failuresOf(session.client(), update.value);
    const Outcome<void> saved = settled(session->versionsSaved());
    Session::complain(failures);
    if (!saved.ok)
        throw Failure {saved.error};
    if (!failures.isEmpty())
        throw Failure {
            u"%1 not as published"_s.arg(Readable::counted(failures.size(), u"table"_s))};
    return 0;
}

} // namespace

Command updateCommand()
{
    Command command;
    command.name = u"update"_s;
    command.summary = u"Learn the tables' versions and download what is new."_s;
    command.details =
        u"The first time the content server has to be named. Prints every table whose file is new "
        "or could not be had; --json prints all of them. What came in is then read as a client "
        "does. Ends with 1 when the server could not be reached, or a table could not be had or "
        "would not load: the error stream tells which and why. Such a table stays at the last "
        "version that loaded, and the version that did not is not fetched again."_s;
    command.examples = QStringList {u"zglobal update --server http://127.0.0.1:8080"_s,
                                    u"zglobal update --quiet"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
