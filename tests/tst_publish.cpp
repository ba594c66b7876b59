#include "content/Table.h"
#include "publish/Gzip.h"
#include "publish/SheetTable.h"
#include "publish/SheetText.h"
#include "publish/TableText.h"
#include "support/Cases.h"
#include "support/FolderTest.h"
#include "support/Nginx.h"
#include "support/Patience.h"
#include "support/Releases.h"
#include "testing/ZTestServer.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QtTest>

using namespace Releases;

namespace {

const QString examples = QStringLiteral(ZGLOBAL_EXAMPLES);
const QString labels = u"CS_GiftLabel"_s;

QByteArray exampleTable(const QString& name)
{
    return ZTestFolder::read(examples + u"/content/app/resources/"_s + name);
}

QString textOf(const Finding& finding)
{
    QStringList parts;
    if (finding.place.row > 0)
        parts.append(QString::number(finding.place.row));
    if (!finding.place.column.isEmpty())
        parts.append(finding.place.column);
    return (parts.isEmpty() ? QString() : parts.join(u' ') + u": "_s) + finding.message;
}

/** What becomes of a sheet: rows, or what is wrong with it. */
QString outcomeOf(const QByteArray& sheet, const Table& published)
{
    QString text;
    QString encoding;
    QVector<Csv::Record> records;
    const QString undecoded = SheetText::decode(sheet, QString(), text, encoding);
    const QString unparsed = undecoded.isEmpty() ? Csv::parse(text, records) : undecoded;
    if (!unparsed.isEmpty())
        return unparsed;
    const SheetTable made = readSheet(u"CS_GiftList"_s, records, &published);
    QStringList lines;
    for (const Finding& fault : made.faults)
        lines.append(textOf(fault));
    if (!lines.isEmpty())
        return lines.join(u'\n');
    for (const QJsonValue& row : QJsonDocument::fromJson(made.bytes)[u"rows"_s].toArray())
        lines.append(
            QString::fromUtf8(QJsonDocument(row.toArray()).toJson(QJsonDocument::Compact)));
    if (encoding != u"UTF-8"_s)
        lines.append(encoding);
    return (lines + made.notes).join(u' ');
}

/** Why a tree is none that may be served: files that do not belong together. */
QString faultOf(const Tree& tree)
{
    for (auto file = tree.begin(); file != tree.end(); ++file) {
        const QByteArray packed = tree.value(Gzip::twinOf(file.key()));
        if (Gzip::isWanted(file.key()) && !file.key().endsWith(u".gz"_s)
            && packed != Gzip::compressed(*file))
            return u"%1 is not what its compressed file is"_s.arg(file.key());
    }
    const auto journal = ZTestFolder::read(u"www/journal.jsonl"_s).split('\n');
    const auto last = QJsonDocument::fromJson(journal.value(journal.size() - 2)).object();
    const QString current = QFileInfo(u"www/current"_s).symLinkTarget();
    return current.endsWith(u"/%1/content"_s.arg(last[u"release"_s].toInt()))
        ? QString()
        : u"the journal is another release's: "_s + current;
}

void writeLabels(const QByteArray& name)
{
    ZTestFolder::write(u"src/CS_GiftLabel"_s,
                       exampleTable(labels).replace("\xe7\x83\xad\xe9\x97\xa8", name));
}

/** What gets in the way of the program. */
struct Disturbance
{
    QString call; ///< with its number, from 1, and what becomes of it; as tests/faults has it
    int at = 0;
    QString error;
    int milliseconds = -1; ///< until it is killed; -1 when it is not
};

/** The program's status; -1 when it was killed. Its source differs each time. */
int publishDisturbed(const Disturbance& disturbance)
{
    static int round = 0;
    writeLabels("name " + QByteArray::number(++round));
    const QString tree = QDir::current().filePath(u"www"_s);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TMPDIR"_s, QDir::currentPath()); // goes with what a killed one leaves
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(ZGLOBAL_FAULTS));
    environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
    environment.insert(u"ZGLOBAL_FAULT_REPORT"_s, QDir::current().filePath(u"report"_s));
    environment.insert(u"ZGLOBAL_FAULT_BELOW"_s, tree);
    environment.insert(u"ZGLOBAL_FAULT_CALL"_s, disturbance.call);
    environment.insert(u"ZGLOBAL_FAULT_AT"_s, QString::number(disturbance.at));
    environment.insert(u"ZGLOBAL_FAULT_ERROR"_s, disturbance.error);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ZGLOBAL_PROGRAM), {u"publish"_s, u"src"_s, tree});
    if (disturbance.milliseconds >= 0
        && !process.waitForFinished(std::max(disturbance.milliseconds, 1)))
        process.kill();
    process.waitForFinished(patience);
    return process.exitStatus() == QProcess::CrashExit ? -1 : process.exitCode();
}

bool isOldOrNew(const Tree& before)
{
    const Tree after = served();
    const bool isNew = after != before;
    Tree wanted = before;
    const QByteArray table = ZTestFolder::read(u"src/CS_GiftLabel"_s);
    if (isNew) {
        wanted[u"app/resources/CS_GiftLabel"_s] = table;
        wanted[u"app/resources/CS_GiftLabel.gz"_s] = Gzip::compressed(table);
        wanted[u"app/logo/gift/G1"_s] = "picture";
        for (const QString& file : {u"app/versions.json"_s, u"app/versions.json.gz"_s})
            wanted[file] = after[file];
    }
    return after == wanted && faultOf(after).isEmpty()
        && versionIn(after, labels) == versionIn(before, labels) + (isNew ? 1 : 0);
}

} // namespace

/** Sheets become tables, tables become releases, and a server never has half of one. */
class tst_publish : public FolderTest
{
    Q_OBJECT

    /** A release with two tables, whose versions are 4 and 18. */
    static void publishFirst()
    {
        writeLabels("hot");
        ZTestFolder::write(u"src/Message"_s, exampleTable(u"Message"_s));
        ZTestFolder::write(u"src/versions.json"_s,
                           R"({"versions": {"CS_GiftLabel": 4, "Message": 18}})");
        QCOMPARE(published(), QString());
    }

    static void killAtAnyMoment()
    {
        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        qInfo("seed %u", seed);
        QElapsedTimer clock;
        int duration = 0;
        for (int i = 0; i < 5; ++i) {
            clock.start();
            QCOMPARE(publishDisturbed({}), 0);
            duration = std::max(duration, static_cast<int>(clock.elapsed()));
        }
        int changed = 0;
        for (int i = 0; i < 100; ++i) {
            const Tree before = served();
            publishDisturbed({{}, 0, {}, random.bounded(duration)});
            QVERIFY2(isOldOrNew(before), qPrintable(u"round %1"_s.arg(i)));
            changed += served() == before ? 0 : 1;
        }
        qInfo("%d of 100 kills came after the new tree, within %d ms", changed, duration);
    }

    static void disturbEveryCall(const QString& error)
    {
        for (int i = 0; i < 5; ++i) // until releases go, too
            QCOMPARE(publishDisturbed({}), 0);
        const auto counts = ZTestFolder::read(u"report"_s).trimmed().split('\n');
        for (const QByteArray& line : counts) {
            const QString call = QString::fromLatin1(line).section(u' ', 0, 0);
            const int count = line.mid(line.indexOf(' ')).toInt();
            QVERIFY2(call == u"unlink"_s || count > 0, line.constData());
            for (int at = 1; at <= count; ++at) {
                const Tree before = served();
                const int status = publishDisturbed({call, at, error});
                const QString what = u"%1 %2"_s.arg(call).arg(at);
                QVERIFY2(isOldOrNew(before), qPrintable(what));
                QVERIFY2((status < 0) == (error == u"kill"_s), qPrintable(what));
                QVERIFY2(status < 0 || (status == 0) == (served() != before), qPrintable(what));
            }
        }
    }

private Q_SLOTS:
    void sheets_data() { Cases::rows("publish"); }

    void sheets()
    {
        QFETCH(QString, sheet);
        const Table before(u"CS_GiftList"_s,
                           R"({"columns": ["giftId", "endTime", "note", "count"],
                               "rows": [["G1", "2099-12-31 23:59:59", "a", 1]]})");
        QTEST(outcomeOf(Cases::bytes(sheet), before), "outcome");
    }

    /** A table as a sheet is the same table, whatever stands between the cells. */
    void everyTableReturns()
    {
        for (const QString& name : ZTestFolder::files(examples + u"/content/app/resources"_s)) {
            const Table table(name, exampleTable(name));
            QVector<Csv::Record> records;
            QCOMPARE(Csv::parse(Csv::written(TableText::sheet(table), u';').mid(1), records),
                     QString());
            const SheetTable made = readSheet(name, records, &table);
            QVERIFY2(made.faults.isEmpty() && made.notes.isEmpty(), qPrintable(name));
            QVERIFY2(TableText::areSame(name, made.bytes, exampleTable(name)), qPrintable(name));
        }
    }

    void sources_data() { Cases::rows("publish"); }

    void sources()
    {
        QFETCH(QString, file);
        QFETCH(QString, bytes);
        publishFirst();
        const Tree before = served();
        if (file.startsWith(u"src/"_s + labels))
            QFile::remove(u"src/"_s + labels);
        ZTestFolder::write(file, bytes.toUtf8());
        QTEST(published(), "outcome");
        QCOMPARE(served(), before);
    }

    void versionsOnlyGoUp()
    {
        publishFirst();
        const QString message = u"app/resources/Message"_s;
        const auto changedAt = [] {
            return QFileInfo(u"www/current/app/versions.json"_s).lastModified().toSecsSinceEpoch();
        };
        const Tree first = served();
        qint64 changed = changedAt();
        QCOMPARE(faultOf(first), QString());
        QCOMPARE(versionIn(first, labels), 4);

        // The same rows, written otherwise, and a version that nobody asks for.
        ZTestFolder::write(u"src/Message"_s, exampleTable(u"Message"_s).replace("\n", " \n"));
        ZTestFolder::write(u"src/versions.json"_s, R"({"versions": {"CS_GiftLabel": 99}})");
        QCOMPARE(published(), QString());
        QCOMPARE(served(), first);

        for (int i = 1; i <= 3; ++i) {
            writeLabels(i == 2 ? "hot" : "cold");
            QCOMPARE(published(), QString());
            QCOMPARE(versionIn(served(), labels), 4 + i);
            QCOMPARE(versionIn(served(), u"Message"_s), 18);
            QCOMPARE(served()[message], first[message]);
            QVERIFY(changedAt() > changed); // caches tell files apart by the second
            changed = changedAt();
        }
        QCOMPARE(rolledBack(1), QString());
        QCOMPARE(versionIn(served(), labels), 8);
        QCOMPARE(served()[u"app/resources/CS_GiftLabel"_s], first[u"app/resources/CS_GiftLabel"_s]);
        QCOMPARE(faultOf(served()), QString());
    }

    void filesStayForOlderClients()
    {
        const QString picture = u"app/logo/gift/G1"_s;
        const QString other = u"app/logo/gift/G2"_s;
        PublishOptions options;
        options.isWhole = true;
        options.kept = 3;
        ZTestFolder::write(u"src/"_s + picture, "old");
        publishFirst();
        QVERIFY(QFile::remove(u"src/"_s + picture));
        QCOMPARE(published(), QString());
        QCOMPARE(served()[picture], QByteArray("old")); // not to be found in the source only
        for (int i = 1; i <= 3; ++i) {
            ZTestFolder::write(u"src/"_s + other, QByteArray::number(i));
            QCOMPARE(published(options), QString());
            QCOMPARE(served().contains(picture), i < 3);
        }
        QCOMPARE(QDir(u"www/releases"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
                 QStringList({u"2"_s, u"3"_s, u"4"_s}));
        // What was published since stays, too, and what is in several releases is not written to.
        QCOMPARE(rolledBack(2), QString());
        QCOMPARE(served()[other], QByteArray("1"));
        QCOMPARE(filesIn(u"www/releases/4/content"_s)[other], QByteArray("3"));
    }

    void foldersThatAreNoTree()
    {
        publishFirst();
        PublishedTree holder(u"www"_s);
        QCOMPARE(holder.lock(), QString());
        QVERIFY(run({u"publish"_s, u"src"_s, u"www"_s}, 1)
                    .contains(u"www is being published by another process"_s));
        QVERIFY(run({u"publish"_s, u"src"_s, u"www/current"_s}, 1)
                    .contains(u"is the content of a release"_s));
        QVERIFY(run({u"publish"_s, u"src"_s, u"."_s}, 1).contains(u"holds other files"_s));
        QVERIFY(run({u"publish"_s, u"src/Message"_s, u"ww"_s}, 1)
                    .contains(u"nothing is published in ww yet"_s));
        QVERIFY(!QFileInfo::exists(u"ww"_s));

        ZTestFolder::write(u"plain/app/versions.json"_s, "{\"versions\": {\"Message\": 7}}");
        ZTestFolder::write(u"plain/app/resources/Message"_s, exampleTable(u"Message"_s));
        const Tree plain = filesIn(u"plain"_s);
        QVERIFY(run({u"publish"_s, u"src"_s, u"plain"_s}, 1).contains(u"--adopt makes it"_s));
        QCOMPARE(filesIn(u"plain"_s), plain);
        const QString told = run({u"publish"_s, u"src"_s, u"plain"_s, u"--adopt"_s});
        QVERIFY2(told.contains(u"let the server serve plain/current"_s), qPrintable(told));
        QCOMPARE(ZTestFolder::read(u"plain/releases/1/content/app/versions.json"_s),
                 plain[u"app/versions.json"_s]);
        QVERIFY(run({u"rollback"_s, u"plain"_s}).contains(u"content of release 1"_s));
    }

    void whatLinksLeadTo()
    {
        // A server follows links, and so does who takes its content over; what an interrupted one
        // has left is none of it.
        ZTestFolder::write(u"elsewhere/G1"_s, "picture");
        ZTestFolder::write(u"www/app/versions.json"_s, "{\"versions\": {\"Message\": 7}}");
        ZTestFolder::write(u"www/app/resources/Message"_s, exampleTable(u"Message"_s));
        QVERIFY(QDir().mkpath(u"www/app/logo"_s));
        QVERIFY(QFile::link(QFileInfo(u"elsewhere"_s).absoluteFilePath(), u"www/app/logo/gift"_s));
        ZTestFolder::write(u"www/releases/1/content/app/versions.json"_s, "{}");
        ZTestFolder::write(u"src/Message"_s, exampleTable(u"Message"_s));
        run({u"publish"_s, u"src"_s, u"www"_s, u"--adopt"_s});
        const Tree adopted = served();
        QCOMPARE(adopted[u"app/logo/gift/G1"_s], QByteArray("picture"));
        QVERIFY(!adopted.contains(u"releases/1/content/app/versions.json"_s));
    }

    void killed_data()
    {
        QTest::addColumn<QString>("error");
        QTest::newRow("at any moment") << QString();
        QTest::newRow("before any call") << u"kill"_s;
        QTest::newRow("any call fails: no space") << u"28"_s;
    }

    /** Whatever ends it and when, a server has the old tree or the new one; then goes on. */
    void killed()
    {
        QFETCH(QString, error);
        publishFirst();
        ZTestFolder::write(u"src/app/logo/gift/G1"_s, "picture");
        if (error.isEmpty())
            killAtAnyMoment();
        else
            disturbEveryCall(error);

        // What they left behind is gone with the next, which nothing is in the way of.
        const Tree before = served();
        QCOMPARE(publishDisturbed({}), 0);
        QVERIFY(isOldOrNew(before) && served() != before);
        const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(u"www"_s).entryList(all),
                 QStringList({u"current"_s, u"journal.jsonl"_s, u"releases"_s}));
        QCOMPARE(QDir(u"www/releases"_s).entryList(all).size(), 5);
    }

    /** From a gift in a spreadsheet to the same gift at a client. */
    void roundTrip()
    {
        qputenv("PATH", qgetenv("PATH") + ":/usr/sbin");
        if (QStandardPaths::findExecutable(u"nginx"_s).isEmpty())
            QSKIP("no nginx");
        const QString address = u"127.0.0.1:%1"_s.arg(ZTestServer().url({}).port()); // free again
        QString conf = QString::fromUtf8(ZTestFolder::read(examples + u"/nginx/origin.conf"_s));
        conf.replace(u"127.0.0.1:8080"_s, address)
            .replace(u"root content"_s, u"root www/current"_s);
        ZTestFolder::write(u"origin.conf"_s, conf.toUtf8());
        QVERIFY(run({u"publish"_s, examples + u"/content"_s, u"www"_s}).contains(u"release 1;"_s));
        QDir(u"."_s).mkdir(u"origin"_s);
        QFile::rename(u"origin.conf"_s, u"origin/origin.conf"_s);
        QFile::rename(u"www"_s, u"origin/www"_s);
        const auto nginx = Nginx::started(u"origin"_s, address.section(u':', 1).toInt());
        const QStringList client {u"--data"_s, u"client"_s};
        const QString update =
            run(QStringList {u"update"_s, u"--server"_s, u"http://"_s + address} + client);
        QVERIFY2(update.contains(u"33"_s), qPrintable(update));

        // As spreadsheets save it: dates without their seconds, in another encoding.
        QString sheet = run({u"export"_s, u"origin/www"_s, u"CS_GiftList"_s});
        sheet.replace(u"23:59:59"_s, u"23:59"_s).replace(u"G1014,星光皇冠"_s, u"G1014,月光皇冠"_s);
        ZTestFolder::write(u"CS_GiftList.csv"_s,
                           "\xff\xfe"
                               + QByteArray(reinterpret_cast<const char*>(sheet.utf16()),
                                            static_cast<int>(2 * sheet.size())));
        const QString told = run({u"publish"_s, u"CS_GiftList.csv"_s, u"origin/www"_s});
        QVERIFY2(told.contains(u"CS_GiftList  version 57 -> 58"_s) && told.count(u" -> "_s) == 2,
                 qPrintable(told));
        run(QStringList {u"update"_s} + client);
        const QString status = run(QStringList {u"status"_s, u"--json"_s} + client);
        for (const QJsonValue& table : QJsonDocument::fromJson(status.toUtf8()).array()) {
            if (table[u"table"_s].toString() == u"CS_GiftList"_s)
                QCOMPARE(table[u"version"_s].toInt(), 58);
        }
        QVERIFY2(run(QStringList {u"gift"_s, u"G1014"_s} + client).contains(u"月光皇冠"_s),
                 qPrintable(status));
    }
};

QTEST_GUILESS_MAIN(tst_publish)

#include "tst_publish.moc"
