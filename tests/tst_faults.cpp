#include "client/ZGlobalClient.h"
#include "datatable/CachePaths.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "faults/Faults.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/zErrorInfo.h"
#include "presentation/ZBannerMgr.h"
#include "support/HttpServer.h"
#include "support/Literals.h"
#include "support/LogLines.h"
#include "support/Tables.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStorageInfo>
#include <QtTest>

#include <csignal>
#include <numeric>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

using Tree = QMap<QString, QByteArray>; // path and content
using Table = EDataTable;

namespace {

const QByteArray bulk(60 * 1000, ' ');
const QStringList jobs {u"update"_s, u"gift"_s,          u"flash"_s, u"pictures"_s,
                        u"save"_s,   u"configuration"_s, u"tidy"_s};
const QVector<Table::EDataTableType> changed {Table::Message, Table::Doutu, Table::PCSkin};
const QString gifts = u"/app/resources/CS_GiftList"_s;

bool soaks()
{
    return qEnvironmentVariableIsSet("ZGLOBAL_SOAK");
}

ZDataTableMgr* tables()
{
    return ZDataTableMgr::getInstance();
}

QString pathOf(Table::EDataTableType type)
{
    return u"res/dataTable/"_s + tables()->getTableFileName(type);
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
        QByteArray head = file.leftJustified(100, '\0') + QByteArray("0000644\0", 8)
            + QByteArray("0000000\0", 8) + QByteArray("0000000\0", 8)
            + QByteArray::number(bulk.size(), 8).rightJustified(11, '0') + '\0'
            + QByteArray("00000000000\0", 12) + "        0" + QByteArray(100, '\0')
            + QByteArray("ustar\00000", 8);
        head = head.leftJustified(512, '\0');
        const int sum = std::accumulate(head.cbegin(), head.cend(), 0);
        head.replace(148, 8, QByteArray::number(sum, 8).rightJustified(6, '0') + '\0' + ' ');
        all += head + bulk.leftJustified((bulk.size() + 511) / 512 * 512, '\0');
    }
    return all + QByteArray(1024, '\0');
}

Tree tree()
{
    Tree all;
    for (const QString& path : WorkFolder::files())
        all.insert(path, WorkFolder::read(path));
    return all;
}

/** What every job begins with. */
void write(const Tree& files)
{
    for (const QString& name :
         QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        QFileInfo(name).isDir() && !QFileInfo(name).isSymLink() ? QDir(name).removeRecursively()
                                                                : QFile::remove(name);
    for (auto file = files.begin(); file != files.end(); ++file)
        WorkFolder::write(file.key(), file.value());
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

/** What went wrong, in the library's words; empty when nothing did. */
QString run(const QString& job, ZGlobalClient& client)
{
    QStringList said;
    bool ended = false;
    const auto end = [&] { ended = true; };
    const auto failed = [&](const zErrorInfo& error) { said.append(error.message()), end(); };
    ZFlashConfigMgr& flashes = ZFlashConfigMgr::getInstance();
    const LogLines log;
    QObject here;
    if (job == u"update"_s)
        client.updateTables()
            .then([&](const ZUpdateResult& result) {
                for (const ZClientFailure& failure : result.failures)
                    said.append(failure.what + u": "_s + failure.why);
                end();
            })
            .fail(failed);
    if (job == u"pictures"_s)
        client.fetchPictures().then(end).fail(failed);
    if (job == u"configuration"_s) {
        QString error;
        if (!client.open(u"."_s, {{u"key"_s, QString::fromUtf8(bulk)}}, &error))
            said.append(error);
        end();
    }
    if (job == u"save"_s) {
        QObject::connect(tables(), &ZDataTableMgr::sigVersionsSaved, &here, [&](bool ok) {
            if (!ok)
                said.append(u"not saved"_s);
            end();
        });
        QMetaObject::invokeMethod(tables(), "writeLocalVersion"); // at once, not in a second
    }
    if (job == u"flash"_s) {
        QObject::connect(&flashes, &ZFlashConfigMgr::sigPassEnded, &here, [&] {
            for (const ZFlashConfigInfo& flash : flashes.getMessageMap()) {
                if (!flashes.isPresent(flash.flashName))
                    said.append(flashes.getFailure(flash.flashName));
            }
            end();
        });
        QMetaObject::invokeMethod(&flashes, "sltDownLoadFlash");
    }
    if (job == u"tidy"_s)
        client.tidy().then(end).fail(failed);
    if (job == u"gift"_s)
        tables()->loadGiftTable();
    QTimer look;
    look.start(5);
    const QDeadlineTimer limit(60000);
    while (!ended && !limit.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        for (const char* words : {"礼物数据表加载成功", "数据没变化", "礼物数据表加载失败",
                                  "保存静态表失败", "静态表下载错误"})
            ended = ended || (job == u"gift"_s && LogLines::count(QString::fromUtf8(words)) > 0);
    }
    const QRegularExpression failures(job == u"gift"_s ? u"失败|错误"_s : u"^tidy .*result=0"_s);
    said += LogLines::lines().filter(failures);
    return ended ? said.join(u'\n') : u"never ended"_s;
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
    WorkFolder m_folder;
    HttpServer m_server;
    ZGlobalClient m_client;
    Tree m_before;
    QMap<QString, Tree> m_after; // by job

    QByteArray root() const { return QFile::encodeName(QDir::currentPath()); }

    void begin(const QString& job)
    {
        write(m_before);
        Faults::arm({}, root().constData()); // syncs do not wait for the disk
        m_server.serve(gifts, m_before[pathOf(Table::CS_GiftList)]);
        if (job != u"gift"_s)
            return;
        // A gift table that came in once is not stored a second time.
        const QByteArray body = tableFor(ZGiftListMgr::declaration(), "[{'giftId': 'next'}]");
        run(job, m_client);
        m_server.serve(gifts, body + bulk);
    }

    /** What must not be, in the tree as it is now. */
    QString faultOf(const QString& job, bool leftovers) const
    {
        const Tree now = tree();
        const Tree& after = m_after[job];
        for (const QString& path : now.keys() + m_before.keys()) {
            const bool isDescription = path.endsWith(u".flajson"_s);
            const QString folder = path.section(u'/', 0, -2) + u'/';
            if (!now.contains(path) && after.contains(path))
                return path + u" is gone"_s;
            for (const QString& other : (m_before.contains(path) ? m_before : after).keys())
                if (isDescription && now.contains(path) && other.startsWith(folder)
                    && !now.contains(other))
                    return path + u" is there without "_s + other;
            const QByteArray is = now.value(path, "gone");
            if (!now.contains(path) || m_before.value(path, "none") == is
                || after.value(path, "none") == is)
                continue;
            if (!leftovers || !path.contains(QRegularExpression(u"_temp_|\\.whole-|\\.unpack-"_s)))
                return u"%1 has %2 bytes"_s.arg(path).arg(is.size());
        }
        return {};
    }

    /** What is wrong after a run that said this; the next one is on a healthy machine. */
    QString judge(const QString& job, const QString& said, bool leftovers)
    {
        QString fault = faultOf(job, leftovers);
        if (fault.isEmpty() && said.contains(u"never ended"_s))
            fault = said;
        if (fault.isEmpty() && said.isEmpty() && !leftovers && tree() != m_after[job])
            fault = u"nothing is told"_s;
        Faults::arm({}, root().constData());
        const QString again = run(job, m_client);
        if (fault.isEmpty() && !again.isEmpty())
            fault = u"afterwards: "_s + again;
        const Tree now = tree();
        for (const QString& path : now.keys() + m_after[job].keys()) {
            const bool isRight = now.value(path) == m_after[job].value(path);
            if (fault.isEmpty() && !isRight && !(leftovers && !m_after[job].contains(path)))
                fault = path + u" is not right afterwards"_s;
        }
        return fault.isEmpty() ? fault : u"%1 (told: %2)"_s.arg(fault, said);
    }

    std::unique_ptr<QProcess> child(const QString& job, const QProcessEnvironment& environment)
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
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
    void initTestCase();
    void cleanup() { Faults::disarm(); }

    void failingCalls_data();
    void failingCalls();
    void noRoom_data() { jobRows(jobs.mid(0, 6), {u"full disk"_s, u"file-size limit"_s}); }
    void noRoom();
    void inTheWay_data() { jobRows(jobs.mid(0, 6), {u"write-protected"_s, u"folder"_s}); }
    void inTheWay();
    void links();
    void hostileNames_data();
    void hostileNames();
    void kills_data() { jobRows(jobs, {u"killed"_s}); }
    void kills();
    void twoProcesses_data() { jobRows(jobs, {u"two processes"_s}); }
    void twoProcesses();
};

void tst_faults::initTestCase()
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
                {u"zglobal.json"_s, "{\"cmsServer\": \"" + m_server.baseUrl().toUtf8() + "/\"}"},
                {u"common.ini"_s, "[Host]\nkey=value\n\n[TableVersion]\nMessage=1\n"},
                {u"res/activity/ActivityAwardEffect"_s, "before"}};
    for (const QString& folder : {u"res/animation/stale_1"_s, u"res/flash/abc_11"_s})
        for (const QString& name :
             {u"a"_s, u"b/c"_s, u"%1.flajson"_s.arg(folder.section(u'/', 2).section(u'_', 0, 0))})
            m_before[folder + u'/' + name] = "stale";
    for (int id = 1; id < 3; ++id)
        m_server.serve(u"/pic%1"_s.arg(id), "\x89PNG\r\n\x1a\n" + bulk);
    for (const char* name : {"abc", "two_words"})
        m_server.serve(u"/app/logo/flash/"_s + QString::fromLatin1(name), archive(name));
    for (const TableStatus& status : tables()->getTableStatuses()) {
        if (status.kind < 0)
            m_server.serve(u"/app/resources/"_s + status.table,
                           tableFor(*status.declaration, "[]") + bulk);
    }
    for (const Table::EDataTableType type : TableCatalogue::types()) {
        m_server.serve(u"/app/resources/"_s + TableCatalogue::name(type),
                       gift + (changed.contains(type) ? bulk : QByteArray()));
        tables()->setTableVersion(type, 1, false);
    }
    ZGlobalConfig::getInstance().setConfig(u"cmsServer"_s, m_server.baseUrl() + u'/');
    ZGlobalConfig::getInstance().setConfig(u"ServerType"_s, u"1002"_s);
    for (const Table::EDataTableType type : TableCatalogue::types())
        m_before[pathOf(type)] = gift;
    write(m_before);
    configure(m_server.baseUrl());

    const QMap<QString, int> changes {{u"update"_s, 4},   {u"gift"_s, 1}, {u"flash"_s, 10},
                                      {u"pictures"_s, 2}, {u"save"_s, 1}, {u"configuration"_s, 1},
                                      {u"tidy"_s, 6}};
    for (const QString& job : jobs) {
        begin(job);
        QCOMPARE(run(job, m_client), QString());
        const Tree after = tree();
        int different = 0;
        QStringList paths = after.keys() + m_before.keys();
        paths.removeDuplicates();
        for (const QString& path : qAsConst(paths))
            different += after.value(path) != m_before.value(path) ? 1 : 0;
        QCOMPARE(different, changes[job]);
        m_after[job] = after;
    }
}

void tst_faults::failingCalls_data()
{
    jobRows(jobs,
            {u"open"_s, u"write"_s, u"rename"_s, u"unlink"_s, u"mkdir"_s, u"sync"_s, u"close"_s});
}

void tst_faults::failingCalls()
{
    QFETCH(QString, job);
    QFETCH(QString, how);
    Faults::Fault fault {Faults::Open, 0, ENOSPC};
    while (how != QString::fromLatin1(Faults::name(fault.call)))
        fault.call = Faults::Call(fault.call + 1);
    begin(job);
    Faults::arm(fault, root().constData());
    run(job, m_client);
    const int calls = Faults::disarm();
    const int step = soaks() ? 1 : calls / 2 + 1;
    for (const int times : {1, Faults::forGood}) {
        fault.times = times;
        for (fault.at = 1; fault.at <= calls; fault.at += step) {
            begin(job);
            Faults::arm(fault, root().constData());
            const QString said = run(job, m_client);
            Faults::disarm();
            // A gift table that cannot be read back is meant to go; the next update fetches it.
            if (said.contains(u"礼物数据表加载失败"_s))
                continue;
            // What others open, close and lock may fail unnoticed; what is stored may not.
            const bool matters = job != u"flash"_s && job != u"tidy"_s
                && (fault.call == Faults::Write || fault.call == Faults::Rename
                    || fault.call == Faults::Sync);
            QVERIFY2(!matters || !said.isEmpty(), qPrintable(QString::number(fault.at)));
            const QString wrong = judge(job, said, fault.call == Faults::Unlink);
            QVERIFY2(wrong.isEmpty(),
                     qPrintable(u"%1 of %2, %3: "_s.arg(fault.at).arg(calls).arg(
                                    fault.times == 1 ? u"once"_s : u"for good"_s)
                                + wrong));
        }
    }
}

void tst_faults::noRoom()
{
    QFETCH(QString, job);
    QFETCH(QString, how);
    const QByteArray folder = root();
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit {};
    getrlimit(RLIMIT_FSIZE, &limit);
    const bool disk = how == u"full disk"_s;
    const rlim_t room = job == u"save"_s ? 0 : 30000;
    if (disk && mount("tmpfs", folder, "tmpfs", 0, "size=4m") != 0)
        QSKIP("this user may not mount a small disk");
    QVERIFY(chdir(folder) == 0);
    begin(job);
    if (disk) {
        const int filler = int(QStorageInfo(QDir::current()).bytesAvailable() - qint64(room));
        WorkFolder::write(u"filler"_s, QByteArray(filler, 'f'));
    }
    const rlimit small {room, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, disk ? &limit : &small);
    const QString said = run(job, m_client);
    setrlimit(RLIMIT_FSIZE, &limit);
    QFile::remove(u"filler"_s);
    const QString wrong = judge(job, said, false);
    std::signal(SIGXFSZ, previous);
    if (disk)
        QVERIFY(chdir("/") == 0 && umount(folder) == 0 && chdir(folder) == 0);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    QVERIFY(!said.isEmpty());
}

void tst_faults::inTheWay()
{
    QFETCH(QString, job);
    QFETCH(QString, how);
    begin(job);
    const bool folder = how == u"folder"_s;
    if (folder && job == u"pictures"_s)
        QSKIP("a folder in place of a picture counts as one");
    const uid_t me = geteuid();
    QStringList places;
    const Tree& after = m_after[job];
    for (const QString& path : after.keys()) {
        if (folder && after[path] != m_before.value(path) && QFileInfo(path).fileName() != u"a"_s) {
            places.append(path);
            QFile::remove(path);
            QVERIFY(QDir().mkpath(path + u"/in the way"_s));
        }
    }
    const QString closed = places.isEmpty() ? QDir::currentPath() : QString();
    if (!folder)
        QVERIFY(QFile::setPermissions(closed, QFile::Permissions(0x5555)));
    if (!folder && me == 0)
        QVERIFY(seteuid(65534) == 0);
    const QString said = run(job, m_client);
    QVERIFY(seteuid(me) == 0);
    if (!folder)
        QFile::setPermissions(closed, QFile::Permissions(0x7755));
    QVERIFY(!said.isEmpty());
    for (const QString& place : places) {
        QVERIFY2(QDir(place).exists(u"in the way"_s), qPrintable(place));
        QDir(place).removeRecursively();
        if (m_before.contains(place))
            WorkFolder::write(place, m_before[place]);
    }
    const QString wrong = judge(job, said, false);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void tst_faults::links()
{
    write(m_before);
    WorkFolder::write(u"elsewhere/file"_s, "x");
    QVERIFY(QDir().mkpath(u"elsewhere/tables"_s) && QDir(u"res/dataTable"_s).removeRecursively());
    const QString elsewhere = QDir().absoluteFilePath(u"elsewhere"_s);
    for (const QString& link : {u"res/animation/x_1"_s, u"res/flash/abc_9"_s})
        QVERIFY(QFile::link(elsewhere, link));
    QVERIFY(QFile::link(elsewhere + u"/tables"_s, u"res/dataTable"_s));
    QCOMPARE(run(u"update"_s, m_client), QString());
    QCOMPARE(run(u"tidy"_s, m_client), QString());
    QVERIFY(!QFileInfo(u"res/animation/x_1"_s).isSymLink());
    QVERIFY(!QFileInfo(u"res/flash/abc_9"_s).isSymLink());
    QCOMPARE(WorkFolder::read(u"elsewhere/file"_s), QByteArray("x"));
    QCOMPARE(WorkFolder::files(u"elsewhere/tables"_s).size(), TableCatalogue::types().size());
}

void tst_faults::hostileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("good");
    for (const char* name : {"../../x", "a/b", "a\\b", "C:x", "con", "a\tb", "/x", "x/..", "nul"})
        QTest::newRow(QByteArray(name).toPercentEncoding(" /").constData())
            << QString::fromUtf8(name) << false;
    for (const char* name : {"rose", "飞机 1", "con1", ".x"})
        QTest::newRow(name) << QString::fromUtf8(name) << true;
}

void tst_faults::hostileNames()
{
    QFETCH(QString, name);
    QFETCH(bool, good);
    begin({});
    m_server.serve(u"/f"_s, archive("x"));
    m_server.serve(QUrl(u"/app/logo/flash/"_s + name).path(QUrl::FullyEncoded),
                   archive(name.toUtf8()));
    const QJsonArray row {name, u"1"_s, u"1"_s};
    const QStringList columns = columnsOf(ZFlashConfigMgr::declaration()).split(u' ');
    WorkFolder::write(u"in/hostile"_s, WorkFolder::table(columns, {row}));
    ZFlashConfigMgr& flashes = ZFlashConfigMgr::getInstance();
    QVERIFY(flashes.loadListTable(u"in/hostile"_s));
    const QStringList before = WorkFolder::files();
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
        if (!stays)
            QCOMPARE(WorkFolder::files(), before);
    }
    write(m_before);
    QVERIFY(flashes.loadListTable(u"in/flashes"_s));
}

void tst_faults::kills()
{
    QFETCH(QString, job);
    QTemporaryDir reports;
    const QString report = reports.filePath(u"calls"_s);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ZGLOBAL_FAULT_BELOW"_s, QDir::currentPath());
    environment.insert(u"ZGLOBAL_FAULT_REPORT"_s, report);
    QVector<QPair<QString, int>> calls;
    const int count = soaks() ? 40 : 3;
    for (int i = 0; i <= count; ++i) {
        begin(job);
        const auto process = child(job, environment);
        QTRY_COMPARE_WITH_TIMEOUT(process->state(), QProcess::NotRunning, 60000);
        // One killed before its name was in its lock counts for ten minutes: let them be over.
        for (const QString& path : WorkFolder::files()) {
            QFile lock(path);
            if (path.endsWith(u".lock"_s) && lock.open(QIODevice::ReadWrite))
                lock.setFileTime(QDateTime::currentDateTime().addSecs(-660),
                                 QFileDevice::FileModificationTime);
        }
        const QByteArray what = process->readAllStandardError()
            + environment.value(u"ZGLOBAL_FAULT_CALL"_s).toLatin1() + ' '
            + environment.value(u"ZGLOBAL_FAULT_AT"_s).toLatin1();
        QVERIFY2(process->exitStatus() == (i > 0 ? QProcess::CrashExit : QProcess::NormalExit),
                 what);
        for (const QByteArray& line : WorkFolder::read(report).split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (i == 0 && words.size() == 2 && words[1].toInt() > 0)
                calls.append({QString::fromLatin1(words[0]), words[1].toInt()});
        }
        const QString wrong = judge(job, {}, true);
        QVERIFY2(wrong.isEmpty(), what + ": " + wrong.toUtf8());
        const auto& at = calls.at(QRandomGenerator::global()->bounded(calls.size()));
        environment.insert(u"ZGLOBAL_FAULT_CALL"_s, at.first);
        environment.insert(u"ZGLOBAL_FAULT_ERROR"_s, u"kill"_s);
        environment.insert(u"ZGLOBAL_FAULT_AT"_s,
                           QString::number(1 + QRandomGenerator::global()->bounded(at.second)));
    }
}

void tst_faults::twoProcesses()
{
    QFETCH(QString, job);
    for (int i = 0; i < (soaks() ? 40 : 1); ++i) {
        begin(job);
        const auto one = child(job, QProcessEnvironment::systemEnvironment());
        const auto other = child(job, QProcessEnvironment::systemEnvironment());
        for (const auto& process : {one.get(), other.get()}) {
            QTRY_COMPARE_WITH_TIMEOUT(process->state(), QProcess::NotRunning, 60000);
            const QByteArray said = process->readAllStandardError();
            // What the other one has removed already is no concern.
            QVERIFY2(process->exitStatus() == QProcess::NormalExit
                         && (process->exitCode() == 0 || job == u"tidy"_s),
                     said);
        }
        QVERIFY(tree() == m_after[job]);
    }
}

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
