#include "content/Table.h"
#include "publish/TableText.h"
#include "support/Cases.h"
#include "support/FolderTest.h"
#include "support/Patience.h"
#include "support/Releases.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace Releases;

namespace {

const QString example = QStringLiteral(ZGLOBAL_EXAMPLES "/content");

QByteArray exampleTable(const QString& name)
{
    return ZTestFolder::read(example + u"/app/resources/"_s + name);
}

/** The same table in other bytes: the columns in reverse, the rows apart. */
QByteArray otherwise(const QString& name, const QByteArray& bytes)
{
    const Table table(name, bytes);
    QStringList columns = TableText::columnsOf(table);
    std::reverse(columns.begin(), columns.end());
    QVector<QJsonArray> rows;
    for (const Row& row : table.rows()) {
        QJsonArray cells;
        for (const QString& column : columns)
            cells.append(table.cell(row, column));
        rows.append(cells);
    }
    return TableText::file(columns, rows).replace("],\n[", "] ,\n\n[");
}

/** The same without its last row. */
QByteArray shorter(const QString& name, const QByteArray& bytes)
{
    const Table table(name, bytes);
    QVector<QJsonArray> rows;
    for (const Row& row : table.rows())
        rows.append(row.cells);
    rows.removeLast();
    return TableText::file(TableText::columnsOf(table), rows);
}

/** What the journal says of its last release, but when that was. */
QJsonObject lastEntry()
{
    const auto lines = ZTestFolder::read(u"www/journal.jsonl"_s).trimmed().split('\n');
    QJsonObject entry = QJsonDocument::fromJson(lines.constLast()).object();
    entry.remove(u"time"_s);
    return entry;
}

/** All below the working folder, links as what they lead to, which a run must leave as it is. */
QMap<QString, QByteArray> everything()
{
    QMap<QString, QByteArray> all = filesIn(u"."_s);
    all.insert(u"current"_s, QFileInfo(u"www/current"_s).symLinkTarget().toUtf8());
    return all;
}

} // namespace

/** One release after the other, there and back, in folders that are not always as they should be.
 */
class tst_releases : public FolderTest
{
    Q_OBJECT

    /** Two tables in one release, which is 1. */
    static void publishFirst()
    {
        for (const QString& table : {u"CS_GiftLabel"_s, u"Message"_s})
            ZTestFolder::write(u"src/"_s + table, exampleTable(table));
        ZTestFolder::write(u"src/versions.json"_s,
                           R"({"versions": {"CS_GiftLabel": 4, "Message": 18}})");
        QCOMPARE(published(), QString());
    }

    static void publishLabels(int number)
    {
        ZTestFolder::write(
            u"src/CS_GiftLabel"_s,
            exampleTable(u"CS_GiftLabel"_s).replace("热门", "name " + QByteArray::number(number)));
        QCOMPARE(published(), QString());
    }

private Q_SLOTS:
    /** All tables of the example: some differ, some are only written otherwise, one is new. */
    void versionsFollowWhatClientsRead()
    {
        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        PublishedTree tree(u"www"_s);
        QCOMPARE(tree.lock(), QString());
        Plan first;
        QCOMPARE(first.publish(example, tree, {}), QString());
        QCOMPARE(tree.add(first.release, 5, [](int, int) {}), QString());
        const Tree before = served();
        QStringList changed;
        for (const QString& name : ZTestFolder::files(example + u"/app/resources"_s)) {
            const QByteArray bytes = exampleTable(name);
            const bool changes = random.bounded(3) == 0 && Table(name, bytes).rows().size() > 1;
            const QByteArray now = changes ? shorter(name, bytes) : otherwise(name, bytes);
            QVERIFY(now != bytes);
            ZTestFolder::write(u"src/"_s + name, now);
            if (changes)
                changed.append(name);
        }
        ZTestFolder::write(u"src/versions.json"_s, R"({"versions": {"Message": 1000000}})");
        Plan plan;
        QCOMPARE(plan.publish(u"src"_s, tree, {}), QString());
        QVERIFY2(plan.tables == changed, qPrintable(u"seed %1"_s.arg(seed)));
        QCOMPARE(served(), before); // a plan writes nothing
        QCOMPARE(tree.add(plan.release, 5, [](int, int) {}), QString());
        const Tree after = served();
        QJsonArray raised;
        for (const QString& name : changed) {
            if (versionIn(before, name) >= 0)
                raised.append(QJsonObject {{u"table"_s, name},
                                           {u"from"_s, versionIn(before, name)},
                                           {u"to"_s, versionIn(before, name) + 1}});
        }
        for (const QString& name : plan.before.tables.keys()) {
            const bool isRaised = changed.contains(name) && versionIn(before, name) >= 0;
            QCOMPARE(versionIn(after, name), versionIn(before, name) + (isRaised ? 1 : 0));
            QCOMPARE(after[u"app/resources/"_s + name], plan.after.tables.value(name));
        }
        QCOMPARE(lastEntry().value(u"tables"_s).toArray().size(), raised.size());
        for (const QJsonValue& each : lastEntry().value(u"tables"_s).toArray())
            QVERIFY2(raised.contains(each), qPrintable(u"seed %1"_s.arg(seed)));
        QCOMPARE(lastEntry().value(u"release"_s).toInt(), 2);
    }

    /** The trial and the deed tell the same, and what is told is what is then there. */
    void trialIsTheDeed()
    {
        publishFirst();
        ZTestFolder::write(u"src/app/logo/gift/G1"_s, "picture");
        ZTestFolder::write(u"src/Message"_s, shorter(u"Message"_s, exampleTable(u"Message"_s)));
        const auto before = everything();
        const auto told = [](const QStringList& more) {
            QString text = run(QStringList {u"publish"_s, u"src"_s, u"www"_s, u"--json"_s} + more);
            text.truncate(text.lastIndexOf(u'}') + 1);
            return QJsonDocument::fromJson(text.toUtf8()).object();
        };
        QJsonObject trial = told({u"--dry-run"_s, u"--quiet"_s});
        QCOMPARE(everything(), before);
        const QJsonObject deed = told({u"--quiet"_s});
        QCOMPARE(trial.value(u"release"_s).toInt(-1), 0);
        trial.insert(u"release"_s, 2);
        QCOMPARE(trial, deed);
        const QJsonObject entry = lastEntry();
        for (const QString& key : entry.keys())
            QCOMPARE(deed.value(key), entry.value(key));
        QCOMPARE(entry.value(u"addedFiles"_s).toInt(), 1);
        QCOMPARE(versionIn(served(), u"Message"_s), 19);
        QVERIFY(run({u"publish"_s, u"src"_s, u"www"_s}).contains(u"nothing to publish"_s));
    }

    /** To every release that is kept and forward again: each time its content under new versions.
     */
    void thereAndBack()
    {
        publishFirst();
        QVector<QByteArray> contents {{}, exampleTable(u"CS_GiftLabel"_s)};
        for (int release = 2; release <= 5; ++release) {
            publishLabels(release);
            contents.append(ZTestFolder::read(u"src/CS_GiftLabel"_s));
        }
        int version = versionIn(served(), u"CS_GiftLabel"_s);
        QCOMPARE(version, 8);
        for (const int target : {4, 5, 3, 6}) { // 6 is 4 again
            QCOMPARE(rolledBack(target), QString());
            contents.append(contents.at(target));
            const Tree now = served();
            QCOMPARE(now[u"app/resources/CS_GiftLabel"_s], contents.at(target));
            QCOMPARE(versionIn(now, u"CS_GiftLabel"_s), ++version);
            QCOMPARE(versionIn(now, u"Message"_s), 18);
            QCOMPARE(lastEntry().value(u"restored"_s).toInt(), target);
            QCOMPARE(lastEntry().value(u"action"_s).toString(), u"rollback"_s);
        }
        const auto lines = ZTestFolder::read(u"www/journal.jsonl"_s).trimmed().split('\n');
        QCOMPARE(lines.size(), 9);
        const QJsonArray listed =
            QJsonDocument::fromJson(
                run({u"rollback"_s, u"www"_s, u"--list"_s, u"--json"_s}).toUtf8())
                .array();
        for (int i = 0; i < listed.size(); ++i) {
            QCOMPARE(listed.at(i)[u"release"_s].toInt(), i + 1);
            QCOMPARE(listed.at(i)[u"kept"_s].toBool(), i + 1 > 4);
        }
        QVERIFY(run({u"rollback"_s, u"www"_s, u"--to"_s, u"2"_s}, 1)
                    .contains(u"www keeps no release 2"_s));
    }

    /** What nobody would publish today was served once, and is again. */
    void backToWhatWasAdopted()
    {
        const QStringList odd {u"www/index.html"_s, u"www/app/resources/readme.txt"_s,
                               u"www/app/resources/old/Message"_s, u"www/other/a.png"_s};
        for (const QString& file : odd)
            ZTestFolder::write(file, "odd");
        ZTestFolder::write(u"www/app/resources/Message"_s, exampleTable(u"Message"_s));
        ZTestFolder::write(u"www/app/versions.json"_s, R"({"versions": {"Message": 7}})");
        ZTestFolder::write(u"src/Message"_s, shorter(u"Message"_s, exampleTable(u"Message"_s)));
        const QString told = run({u"publish"_s, u"src"_s, u"www"_s, u"--adopt"_s, u"--allow"_s,
                                  u"unknown-table"_s, u"--allow"_s, u"missing-table"_s});
        const auto check = [&odd](int version) {
            for (const QString& file : odd)
                QCOMPARE(served()[file.mid(4)], QByteArray("odd"));
            QCOMPARE(versionIn(served(), u"Message"_s), version);
        };
        check(8);
        QCOMPARE(rolledBack(1), QString());
        check(9);
        QCOMPARE(served()[u"app/resources/Message"_s], exampleTable(u"Message"_s));
    }

    void unusualFolders_data() { Cases::rows("releases"); }

    /** Nothing is lost of what others have put there, and a refusal changes nothing. */
    void unusualFolders()
    {
        QFETCH(QString, script);
        QFETCH(QString, says);
        publishFirst();
        publishLabels(2);
        ZTestFolder::write(u"src/Message"_s, shorter(u"Message"_s, exampleTable(u"Message"_s)));
        QCOMPARE(QProcess::execute(u"sh"_s, {u"-ec"_s, script}), 0);
        const auto before = everything();
        const QString told =
            run({u"publish"_s, u"src"_s, u"www"_s, u"--keep"_s, u"2"_s}, says.isEmpty() ? 0 : 1);
        QVERIFY2(told.contains(says), qPrintable(told));
        if (!says.isEmpty()) {
            QCOMPARE(told.count(u'\n'), 1);
            QCOMPARE(everything(), before);
            return;
        }
        QVERIFY2(told.contains(u"published as release 3"_s), qPrintable(told));
        const auto after = everything();
        for (auto file = before.begin(); file != before.end(); ++file) {
            if (file.key().contains(u"mine"_s))
                QCOMPARE(after.value(file.key()), *file);
        }
        QVERIFY(!QFileInfo::exists(u"www/releases/1"_s));
        QCOMPARE(versionIn(served(), u"Message"_s), 19);
    }

    /** The second is told to wait, the first is not in its way, and each has its release. */
    void twoAtOnce()
    {
        publishFirst();
        QVector<std::shared_ptr<QProcess>> processes;
        for (int i = 0; i < 6; ++i) {
            const QString folder = u"src%1/"_s.arg(i);
            ZTestFolder::write(
                folder + u"CS_GiftLabel"_s,
                exampleTable(u"CS_GiftLabel"_s).replace("热门", "name " + QByteArray::number(i)));
            processes.append(std::make_shared<QProcess>());
            processes.last()->start(QStringLiteral(ZGLOBAL_PROGRAM),
                                    {u"publish"_s, folder, u"www"_s});
        }
        int done = 0;
        for (const auto& process : processes) {
            QVERIFY(process->waitForFinished(patience));
            const QByteArray told = process->readAllStandardError();
            const bool isDone = process->exitCode() == 0;
            QVERIFY2(isDone != told.contains("being published by another process"), told);
            done += isDone ? 1 : 0;
        }
        QVERIFY(done > 0);
        QCOMPARE(versionIn(served(), u"CS_GiftLabel"_s), 4 + done);
        QCOMPARE(lastEntry().value(u"release"_s).toInt(), 1 + done);
    }
};

QTEST_GUILESS_MAIN(tst_releases)

#include "tst_releases.moc"
