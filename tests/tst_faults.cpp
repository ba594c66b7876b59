#include "client/ZGlobalClient.h"
#include "datatable/CachePaths.h"
#include "datatable/TableCatalogue.h"
#include "effect/ZFlashConfigMgr.h"
#include "faults/Faults.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/zErrorInfo.h"
#include "presentation/ZBannerMgr.h"
#include "support/Cases.h"
#include "support/LogLines.h"
#include "support/NoRoom.h"
#include "support/Patience.h"
#include "support/Tables.h"
#include "testing/ZTestServer.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

#include <numeric>

using Tree = QMap<QString, QByteArray>; // path and content
using Table = EDataTable;

namespace {

const QByteArray bulk(60 * 1000, ' ');
const QStringList jobs {u"update"_s, u"gift"_s, u"flash"_s, u"pictures"_s, u"tidy"_s};
const int changes[] {4, 1, 10, 2, 6}; // of files, by each of them
const QStringList calls {u"open"_s,  u"write"_s, u"rename"_s, u"unlink"_s,
                         u"mkdir"_s, u"sync"_s,  u"close"_s};
const QVector<Table::EDataTableType> changed {Table::Message, Table::Doutu, Table::PCSkin};

const bool soaks = qEnvironmentVariableIsSet("ZGLOBAL_SOAK");

ZDataTableMgr* tables()
{
    return ZDataTableMgr::getInstance();
}

QByteArray tableFor(const TableDeclaration& declaration, const QByteArray& rows)
{
    return tableBytes(columnsOf(declaration, false), rows);
}

/** A flat tar archive whose description comes first. */
QByteArray archive(const QByteArray& name)
{
    QByteArray all;
    for (const QByteArray& file : {name + ".flajson", QByteArray("a"), QByteArray("b"), name}) {
        QByteArray head = file.leftJustified(124, '\0') + QByteArray::number(bulk.size(), 8);
        head = head.leftJustified(148, '\0') + "        0" + QByteArray(100, '\0') + "ustar";
        const int sum = std::accumulate(head.cbegin(), head.cend(), 0);
        head.replace(148, 6, QByteArray::number(sum, 8).rightJustified(6, '0'));
        all += head.leftJustified(512, '\0') + bulk.leftJustified(118 * 512, '\0');
    }
    return all + QByteArray(1024, '\0');
}

Tree tree()
{
    Tree all;
    for (const QString& path : ZTestFolder::files())
        all.insert(path, ZTestFolder::read(path));
    return all;
}

QStringList differing(const Tree& one, const Tree& other)
{
    QStringList paths;
    for (const QString& path : one.keys() + other.keys())
        if (one.value(path, "none") != other.value(path, "none") && !paths.contains(path))
            paths.append(path);
    return paths;
}

/** What every job begins with. */
void write(const Tree& files)
{
    for (const QFileInfo& entry : QDir().entryInfoList(QDir::AllEntries | QDir::Hidden
                                                       | QDir::System | QDir::NoDotAndDotDot))
        entry.isDir() && !entry.isSymLink() ? QDir(entry.filePath()).removeRecursively()
                                            : QFile::remove(entry.filePath());
    for (auto file = files.begin(); file != files.end(); ++file)
        ZTestFolder::write(file.key(), file.value());
}

/** As a program does before it begins with any of the jobs; the tables lie in "in/". */
void configure(const QString& base)
{
    const QJsonObject values = ZGlobalClient::configurationFor(base);
    for (auto value = values.begin(); value != values.end(); ++value)
        ZGlobalConfig::getInstance().setConfig(value.key(), value.value().toString());
    for (const Table::EDataTableType type : TableCatalogue::types())
        tables()->setTableVersion(type, changed.contains(type) ? 2 : 1, false);
    if (!ZFlashConfigMgr::getInstance().loadListTable(u"in/flashes"_s)
        || !ZBannerMgr::getInstance()->loadBannerListTable(u"in/banners"_s, false))
        qFatal("the tables of the test cannot be loaded");
}

QtPromise::QPromise<void> start(const QString& job, ZGlobalClient& client)
{
    const auto told = [](const QString& what) {
        return what.isEmpty() ? QtPromise::QPromise<void>::resolve()
                              : QtPromise::QPromise<void>::reject(zErrorInfo(what, 0));
    };
    if (job == u"update"_s)
        return client.updateTables().then([told](const ZUpdateResult& result) {
            return told(result.failures.isEmpty() ? QString() : result.failures.first().why);
        });
    if (job == u"gift"_s)
        return tables()->updateGiftDataTable();
    if (job == u"pictures"_s)
        return client.fetchPictures();
    if (job == u"flash"_s) {
        ZFlashConfigMgr& flashes = ZFlashConfigMgr::getInstance();
        QMetaObject::invokeMethod(&flashes, "sltDownLoadFlash", Qt::QueuedConnection);
        return QtPromise::connect(&flashes, &ZFlashConfigMgr::sigPassEnded).then([&, told](int) {
            QString said;
            for (const ZFlashConfigInfo& flash : flashes.getMessageMap())
                if (!flashes.isPresent(flash.flashName))
                    said += flashes.getFailure(flash.flashName);
            return told(said);
        });
    }
    return client.tidy();
}

/** What went wrong, in the library's words; empty when nothing did. */
QString run(const QString& job, ZGlobalClient& client)
{
    QString said = u"never ended"_s;
    bool ended = false;
    const LogLines log;
    start(job, client).then([&] { said.clear(), ended = true; }).fail([&](const zErrorInfo& error) {
        said = error.message() == u"数据没变化"_s ? QString() : error.message(), ended = true;
    });
    QTimer look;
    look.start(5);
    const QDeadlineTimer limit(60000);
    while (!ended && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return said + LogLines::lines().filter(QRegularExpression(u"^tidy .*result=0"_s)).join(u'\n');
}

} // namespace

/**
 * The library on an unhealthy machine. Whatever fails, every file is the one before or the one
 * after, whole; what failed is told; and the next run on a healthy machine brings all of it right.
 */
class tst_faults : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    ZTestServer m_server;
    ZGlobalClient m_client;
    Tree m_before;
    QMap<QString, Tree> m_after; // by job

    QByteArray root() const { return QFile::encodeName(QDir::currentPath()); }

    void begin(const QString& job)
    {
        const QString gifts = u"/app/resources/CS_GiftList"_s;
        write(m_before);
        Faults::arm({}, root().constData()); // syncs do not wait for the disk
        m_server.serve(gifts, tableFor(ZGiftListMgr::declaration(), "[{'giftId': 'first'}]"));
        if (job != u"gift"_s)
            return;
        // A gift table that came in once is not stored a second time.
        run(job, m_client);
        m_server.serve(gifts, tableFor(ZGiftListMgr::declaration(), "[{'giftId': 'next'}]") + bulk);
    }

    /** Fails unless all files are whole, what failed is told, and a healthy run mends it. */
    void judge(const QString& job, const QString& said, bool leftovers, const QByteArray& what = {})
    {
        const Tree& after = m_after[job];
        const QRegularExpression temporary(u"_temp_|\\.whole-|\\.unpack-"_s);
        const Tree now = tree();
        QStringList faults;
        for (const QString& path : differing(now, m_before))
            if (now.value(path, "none") != after.value(path, "none")
                && (now.contains(path) ? !leftovers || !path.contains(temporary)
                                       : after.contains(path)))
                faults += u"%1 has %2 bytes"_s.arg(path).arg(now.value(path).size());
        for (const QString& path : now.keys().filter(u".flajson"_s))
            for (const QString& other : (m_before.contains(path) ? m_before : after).keys())
                if (other.startsWith(QFileInfo(path).path() + u'/') && !now.contains(other))
                    faults += path + u" is there without "_s + other;
        if (said == u"never ended"_s || (said.isEmpty() && !leftovers && now != after))
            faults += u"nothing is told"_s;
        Faults::arm({}, root().constData());
        faults += run(job, m_client);
        for (const QString& path : differing(tree(), after))
            if (!leftovers || after.contains(path))
                faults += path + u" is not right afterwards"_s;
        faults.removeAll(QString());
        QVERIFY2(faults.isEmpty(),
                 what + ": " + faults.join(u", "_s).toUtf8() + " after " + said.toUtf8());
    }

    std::unique_ptr<QProcess> child(const QString& job)
    {
        auto process = std::make_unique<QProcess>();
        process->start(QCoreApplication::applicationFilePath(),
                       {u"--run"_s, job, m_server.baseUrl()});
        return process;
    }

    void jobRows(const QStringList& names, const QStringList& hows)
    {
        QTest::addColumn<QString>("job");
        QTest::addColumn<QString>("how");
        for (const QString& how : hows)
            for (const QString& job : names)
                QTest::addRow("%s, %s", qPrintable(how), qPrintable(job)) << job << how;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray gift = tableFor(ZGiftListMgr::declaration(), "[{'giftId': 'first'}]");
        m_before = {{u"in/flashes"_s,
                     tableFor(ZFlashConfigMgr::declaration(),
                              "[{'flashName': 'abc', 'flashVersion': '12'},"
                              " {'flashName': 'two_words', 'flashVersion': '3'}]")},
                    {u"in/banners"_s,
                     tableFor(ZBannerMgr::declaration(),
                              "[{'id': 1, 'bannerType': 1, 'bannerContent': '/pic1'},"
                              " {'id': 2, 'bannerType': 2, 'bannerContent': '/pic2'}]")},
                    {u"res/activity/ActivityAwardEffect"_s, "before"}};
        for (const char* path :
             {"animation/stale_1/stale.flajson", "animation/stale_1/b/c", "animation/stale_1/a",
              "flash/abc_11/abc.flajson", "flash/abc_11/b/c", "flash/abc_11/a"})
            m_before[u"res/"_s + QString::fromLatin1(path)] = "stale";
        for (int id = 1; id < 3; ++id)
            m_server.serve(u"/pic%1"_s.arg(id), "\x89PNG\r\n\x1a\n" + bulk);
        for (const char* name : {"abc", "two_words"})
            m_server.serve(u"/app/logo/flash/"_s + QString::fromLatin1(name), archive(name));
        m_server.serve(u"/app/resources/ActivityAwardEffect"_s,
                       tableFor(*statusOf(u"ActivityAwardEffect"_s).declaration, "[]") + bulk);
        ZGlobalConfig::getInstance().setConfig(u"cmsServer"_s, m_server.baseUrl() + u'/');
        ZGlobalConfig::getInstance().setConfig(u"ServerType"_s, u"1002"_s);
        for (const Table::EDataTableType type : TableCatalogue::types()) {
            m_server.serve(u"/app/resources/"_s + TableCatalogue::name(type),
                           gift + (changed.contains(type) ? bulk : QByteArray()));
            tables()->setTableVersion(type, 1, false);
            m_before[u"res/dataTable/"_s + tables()->getTableFileName(type)] = gift;
        }
        write(m_before);
        configure(m_server.baseUrl());
        for (const QString& job : jobs) {
            begin(job);
            QCOMPARE(run(job, m_client), QString());
            m_after[job] = tree();
            QCOMPARE(differing(m_after[job], m_before).size(), changes[jobs.indexOf(job)]);
        }
    }

    void cleanup()
    {
        Faults::disarm();
        qunsetenv("ZGLOBAL_FAULT_AT");
    }

    void failingCalls_data() { jobRows(jobs, calls); }
    void failingCalls()
    {
        QFETCH(QString, job);
        QFETCH(QString, how);
        Faults::Fault fault {Faults::Call(calls.indexOf(how)), 0, ENOSPC};
        QCOMPARE(QString::fromLatin1(Faults::name(fault.call)), how);
        begin(job);
        Faults::arm(fault, root().constData());
        run(job, m_client);
        const int count = Faults::disarm();
        // What others open, close and lock may fail unnoticed; what is stored may not.
        const bool stores = job != u"flash"_s && job != u"tidy"_s
            && (how == u"write"_s || how == u"rename"_s || how == u"sync"_s);
        for (const int times : {1, Faults::forGood}) {
            fault.times = times;
            for (fault.at = 1; fault.at <= count && !QTest::currentTestFailed();
                 fault.at += soaks ? 1 : count / 2 + 1) {
                begin(job);
                Faults::arm(fault, root().constData());
                const QString said = run(job, m_client);
                Faults::disarm();
                const QString what = u"%1 of %2, %3 times"_s.arg(fault.at).arg(count).arg(times);
                QVERIFY2(!stores || !said.isEmpty(), qPrintable(what));
                judge(job, said, fault.call == Faults::Unlink, what.toUtf8());
            }
        }
    }

    void noRoom_data() { jobRows(jobs.mid(0, 4), {u"file-size limit"_s}); }
    void noRoom()
    {
        QFETCH(QString, job);
        begin(job);
        std::optional<FileSizeLimit> limit(30000);
        const QString said = run(job, m_client);
        limit.reset();
        QVERIFY(!said.isEmpty());
        judge(job, said, false);
    }

    void inTheWay_data() { jobRows(jobs.mid(0, 3), {u"folder"_s}); }
    void inTheWay()
    {
        QFETCH(QString, job);
        begin(job);
        // "a" and "b" are parts of an animation.
        const QStringList places =
            differing(m_after[job], m_before).filter(QRegularExpression(u"[^/]{2}$"_s));
        for (const QString& path : places) {
            QFile::remove(path);
            QVERIFY(QDir().mkpath(path + u"/in the way"_s));
        }
        const QString said = run(job, m_client);
        QVERIFY(!said.isEmpty());
        for (const QString& place : places) {
            QVERIFY2(QFileInfo::exists(place + u"/in the way"_s), qPrintable(place));
            QDir(place).removeRecursively();
            if (m_before.contains(place))
                ZTestFolder::write(place, m_before[place]);
        }
        judge(job, said, false);
    }

    void links()
    {
        write(m_before);
        ZTestFolder::write(u"elsewhere/file"_s, "x");
        QVERIFY(QDir().mkpath(u"elsewhere/tables"_s)
                && QDir(u"res/dataTable"_s).removeRecursively());
        const QString elsewhere = QDir().absoluteFilePath(u"elsewhere"_s);
        for (const QString& link : {u"res/animation/x_1"_s, u"res/flash/abc_9"_s})
            QVERIFY(QFile::link(elsewhere, link));
        QVERIFY(QFile::link(elsewhere + u"/tables"_s, u"res/dataTable"_s));
        QCOMPARE(run(u"update"_s, m_client), QString());
        QCOMPARE(run(u"tidy"_s, m_client), QString());
        QVERIFY(!QFileInfo(u"res/animation/x_1"_s).isSymLink());
        QVERIFY(!QFileInfo(u"res/flash/abc_9"_s).isSymLink());
        QCOMPARE(ZTestFolder::read(u"elsewhere/file"_s), QByteArray("x"));
        QCOMPARE(ZTestFolder::files(u"elsewhere/tables"_s).size(), TableCatalogue::types().size());
    }

    void hostileNames_data() { Cases::rows("faults"); }
    void hostileNames()
    {
        QFETCH(QString, name);
        QFETCH(bool, good);
        begin({});
        m_server.serve(u"/f"_s, archive("x"));
        m_server.serve(QUrl(u"/app/logo/flash/"_s + name).path(QUrl::FullyEncoded),
                       archive(name.toUtf8()));
        const QString columns = columnsOf(ZFlashConfigMgr::declaration());
        ZTestFolder::write(u"in/hostile"_s,
                           tableBytes(columns, QJsonArray {QJsonArray {name, u"1"_s, u"1"_s}}));
        ZFlashConfigMgr& flashes = ZFlashConfigMgr::getInstance();
        QVERIFY(flashes.loadListTable(u"in/hostile"_s));
        const QStringList before = ZTestFolder::files();
        const int asked = m_server.targets().size();
        QCOMPARE(run(u"flash"_s, m_client), good ? QString() : u"no file may have this name"_s);
        QCOMPARE(m_server.targets().size() - asked, good ? 1 : 0);
        for (const QString& folder :
             {flashes.getFlashPath(name),
              ZGiftListMgr::getInstance()->getGiftAnimationPathByAniName(name, u"1"_s)}) {
            const QString path = u"%1/%2.flajson"_s.arg(folder, name);
            const bool stays = good || (name.contains(u'/') && !name.contains(u"../"_s));
            QCOMPARE(CachePaths::staysInCache(path), stays);
            QString told;
            tables()
                ->downloadFile(path, m_server.baseUrl() + u"/f"_s, false)
                .then([&](const QString&) { told = u"ok"_s; })
                .fail([&](const zErrorInfo& error) { told = error.message(); });
            QTRY_COMPARE(told, stays ? u"ok"_s : path + u" leads out of the cache"_s);
            QVERIFY(stays || ZTestFolder::files() == before);
        }
        write(m_before);
        QVERIFY(flashes.loadListTable(u"in/flashes"_s));
    }

    void kills_data() { jobRows(jobs, {u"killed"_s}); }
    void kills()
    {
        QFETCH(QString, job);
        QTemporaryDir reports;
        const QString report = reports.filePath(u"calls"_s);
        qputenv("ZGLOBAL_FAULT_BELOW", root());
        qputenv("ZGLOBAL_FAULT_REPORT", QFile::encodeName(report));
        QVector<QList<QByteArray>> counted;
        for (int i = 0; i <= (soaks ? 40 : 3) && !QTest::currentTestFailed(); ++i) {
            begin(job);
            const auto process = child(job);
            QTRY_COMPARE(process->state(), QProcess::NotRunning);
            // One killed before its name was in its lock counts for ten minutes: let them be over.
            for (const QString& path : ZTestFolder::files().filter(u".lock"_s)) {
                QFile lock(path);
                if (lock.open(QIODevice::ReadWrite))
                    lock.setFileTime(QDateTime::currentDateTime().addSecs(-660),
                                     QFileDevice::FileModificationTime);
            }
            const QByteArray what = process->readAllStandardError() + qgetenv("ZGLOBAL_FAULT_CALL")
                + ' ' + qgetenv("ZGLOBAL_FAULT_AT");
            QVERIFY2(process->exitStatus() == (i > 0 ? QProcess::CrashExit : QProcess::NormalExit),
                     what);
            for (const QByteArray& line : ZTestFolder::read(report).split('\n'))
                if (i == 0 && line.contains(' ') && !line.endsWith(" 0"))
                    counted.append(line.split(' '));
            judge(job, {}, true, what);
            QRandomGenerator& random = *QRandomGenerator::global();
            const QList<QByteArray> call = counted.at(random.bounded(counted.size()));
            qputenv("ZGLOBAL_FAULT_ERROR", "kill");
            qputenv("ZGLOBAL_FAULT_CALL", call[0]);
            qputenv("ZGLOBAL_FAULT_AT", QByteArray::number(1 + random.bounded(call[1].toInt())));
        }
    }

    void twoProcesses_data() { jobRows(jobs, {u"two processes"_s}); }
    void twoProcesses()
    {
        QFETCH(QString, job);
        for (int i = 0; i < (soaks ? 40 : 1); ++i) {
            begin(job);
            const std::unique_ptr<QProcess> both[] {child(job), child(job)};
            for (const auto& process : both) {
                QTRY_COMPARE(process->state(), QProcess::NotRunning);
                QCOMPARE(process->exitStatus(), QProcess::NormalExit);
                // What the other one has removed already is no concern.
                QVERIFY2(process->exitCode() == 0 || job == u"tidy"_s,
                         process->readAllStandardError());
            }
            QVERIFY(tree() == m_after[job]);
        }
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 4 && QByteArray(argv[1]) == "--run") {
        ZGlobalClient client;
        configure(QString::fromUtf8(argv[3]));
        const QString said = run(QString::fromUtf8(argv[2]), client);
        fprintf(stderr, "%s", qPrintable(said));
        return said.isEmpty() ? 0 : 1;
    }
    tst_faults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_faults.moc"
