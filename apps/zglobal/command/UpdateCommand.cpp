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

#include <QMap>
#include <QSet>

namespace {

/** What came of an update, for the eyes. */
struct Account
{
    QVector<ZTableChange> changes;
    QVector<ZClientFailure> failures;
    QSet<QString> refused; ///< tables that came in and would not load

    QString wordFor(const ZTableChange& change) const
    {
        if (change.outcome() != ZTableChange::Failed && refused.contains(change.after.table))
            return u"refused"_s;
        switch (change.outcome()) {
        case ZTableChange::Current:
            return u"current"_s;
        case ZTableChange::New:
            return u"new"_s;
        case ZTableChange::Failed:
            break;
        }
        return u"failed"_s;
    }
};

void printText(const Account& account)
{
    TextTable table({u"table"_s, u">was"_s, u">is"_s, u">size"_s, u"file"_s});
    QMap<QString, int> counts;
    for (const ZTableChange& change : account.changes) {
        const QString word = account.wordFor(change);
        ++counts[word];
        if (word != u"current"_s)
            table.add({change.after.table, QString::number(change.before.version),
                       QString::number(change.after.version), Readable::size(change.after.size),
                       word});
    }
    if (!table.isEmpty())
        table.print();
    Terminal::print(u"%1 new, %2 current, %3 failed"_s.arg(
        QString::number(counts.value(u"new"_s)), QString::number(counts.value(u"current"_s)),
        QString::number(counts.value(u"failed"_s) + counts.value(u"refused"_s))));
}

void printJson(const Account& account)
{
    QJsonArray all;
    for (const ZTableChange& change : account.changes)
        all.append(QJsonObject {{u"table"_s, change.after.table},
                                {u"oldVersion"_s, change.before.version},
                                {u"version"_s, change.after.version},
                                {u"file"_s, change.after.path},
                                {u"bytes"_s, change.after.size},
                                {u"outcome"_s, account.wordFor(change)}});
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
Account accountOf(ZGlobalClient& client, const ZUpdateResult& update)
{
    Account account {update.tables, update.failures, {}};
    QSet<QString> told;
    for (const ZClientFailure& failure : update.failures)
        told.insert(failure.what);
    client.load();
    for (const ZClientFailure& failure : client.failures()) {
        if (told.contains(failure.what))
            continue;
        account.failures.append(withAddress(failure));
        account.refused.insert(failure.what);
    }
    return account;
}

int run(const QCommandLineParser& line)
{
    Session session(line, Session::Updates);
    session->load(); // what is damaged on the disk goes, and is fetched anew
    Outcome<ZUpdateResult> update;
    {
        const auto bar = session.progress();
        update = settled(session->update());
    }
    if (!update.ok)
        throw Failure {update.error};
    const Account account = accountOf(session.client(), update.value);
    if (CommandLine::wantsJson(line))
        printJson(account);
    else if (!Terminal::isQuiet())
        printText(account);
    const Outcome<void> saved = settled(session->versionsSaved());
    Session::complain(account.failures);
    if (!saved.ok)
        throw Failure {saved.error};
    if (!account.failures.isEmpty())
        throw Failure {
            u"%1 not as published"_s.arg(Readable::counted(account.failures.size(), u"table"_s))};
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
