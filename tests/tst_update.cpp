#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/zErrorInfo.h"
#include "support/LogLines.h"
#include "support/Patience.h"
#include "support/Tables.h"
#include "testing/ZTestServer.h"

#include <QDir>
#include <QtTest>

using Table = EDataTable;

namespace {

/** How a promise ended: "ok", or the error's message and its code if it has one. */
template <class Value>
QString outcome(const QtPromise::QPromise<Value>& promise)
{
    QString answer;
    promise.then([&] { answer = u"ok"_s; })
        .fail([&](const zErrorInfo& error) {
            answer = error.message() + (error.code() == 0 ? u""_s : u" with a code"_s);
        })
        .fail([&] { answer = u"rejected with something else"_s; });
    const bool settled = QTest::qWaitFor([&] { return !answer.isEmpty(); }, patience);
    return settled ? answer : u"never settled"_s;
}

QByteArray giftTable(const QByteArray& name)
{
    return tableBytes(columnsOf(ZGiftListMgr::declaration()),
                      "[{'giftId': 'G1', 'valid': true, 'giftName': '" + name + "'}]");
}

const QByteArray plainTable = tableBytes(u"id"_s, "[]");
const QString refused = u"静态表下载错误"_s;
const QString unsaved = u"保存静态表失败"_s;
const QString giftAddress = u"/app/resources/CS_GiftList"_s;

} // namespace

/** The update of tables, against a real server. */
class tst_update : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    QScopedPointer<ZTestServer> m_server;
    ZDataTableMgr* m_tables = nullptr;

    QString pathOf(Table::EDataTableType type)
    {
        return u"res/dataTable/"_s + m_tables->getTableFileName(type);
    }

private Q_SLOTS:
    void init()
    {
        m_server.reset(new ZTestServer);
        m_tables = ZDataTableMgr::getInstance();
        m_tables->clearTables();
        QDir(u"res"_s).removeRecursively();
        QDir().mkpath(u"res/dataTable"_s);
        ZGlobalConfig::getInstance().setConfig(u"cmsServer"_s, m_server->baseUrl() + u"/"_s);
        ZGlobalConfig::getInstance().setConfig(u"ServerType"_s, u"1002"_s);
        for (const auto type : TableCatalogue::types())
            m_server->serve(u"/app/resources/"_s + TableCatalogue::name(type), plainTable);
    }

    void oneTable()
    {
        m_tables->setTableVersion(Table::Message, 3, false);
        const QString path =
            ZTestFolder::write(pathOf(Table::Message), QByteArray()); // empty: not current
        const LogLines log;
        QCOMPARE(outcome(m_tables->updateDataTable(Table::Message)), u"ok"_s);
        QCOMPARE(LogLines::lines(), QStringList {u"保存静态表成功 Message "_s + path});
        QCOMPARE(ZTestFolder::read(path), plainTable);
        QCOMPARE(outcome(m_tables->updateDataTable(Table::Message)), u"ok"_s);
        m_tables->setTableVersion(Table::Message, 4, false);
        QLoggingCategory::setFilterRules(u"zglobal.update.info=false"_s);
        QCOMPARE(outcome(m_tables->updateDataTable(Table::Message)), u"ok"_s);
        QLoggingCategory::setFilterRules(QString());
        QCOMPARE(LogLines::lines().size(), 1);
        QCOMPARE(m_server->targets(),
                 QStringList({u"/app/resources/Message?3"_s, u"/app/resources/Message?4"_s}));
        QCOMPARE(ZTestFolder::files(u"res/dataTable"_s).size(), 2);
    }

    void failures()
    {
        const LogLines log;
        m_server->serve(u"/app/resources/Message"_s, "<html>");
        QCOMPARE(outcome(m_tables->updateDataTable(Table::Message)),
                 u"数据表解析失败,tableUrl:%1/app/resources/Message?0"_s.arg(m_server->baseUrl()));
        m_server->cutOff(u"/app/resources/Doutu"_s, plainTable, 5);
        QCOMPARE(outcome(m_tables->updateDataTable(Table::Doutu)), refused);
        m_server->fail(u"/app/resources/Doutu"_s, 503);
        QCOMPARE(outcome(m_tables->updateDataTable(Table::Doutu)), refused);
        QCOMPARE(LogLines::count(u"静态表下载错误 Doutu"_s), 2);
        QCOMPARE(ZTestFolder::files(u"res/dataTable"_s), QStringList());

        QDir(u"res/dataTable"_s).removeRecursively();
        ZTestFolder::write(u"res/dataTable"_s, "a file where the folder should be");
        QCOMPARE(outcome(m_tables->updateDataTable(Table::PCSkin)), unsaved);
        QCOMPARE(LogLines::lines().last(), u"保存静态表失败 PCSkin "_s + pathOf(Table::PCSkin));
        m_server->close();
        QCOMPARE(outcome(m_tables->updateDataTable(Table::Message)), refused);
    }

    /** What becomes of a table, as it is told and, of failed updates, can be asked for. */
    void tells()
    {
        const QString side = u"ActivityAwardEffect"_s;
        const QString server = m_server->baseUrl();
        ZGlobalConfig::getInstance().setConfig(u"cmsServer"_s,
                                               QString(server).insert(7, u"me:secret@"_s) + u"/"_s);
        QString told;
        QObject scope;
        const auto note = [&](const char* what) {
            return [&told, what](const QString& table, int kind, int version) {
                told = u"%1 %2 %3 %4"_s.arg(QLatin1String(what), table).arg(kind).arg(version);
            };
        };
        connect(m_tables, &ZDataTableMgr::sigTableUpdated, &scope, note("updated"));
        connect(m_tables, &ZDataTableMgr::sigTableLoaded, &scope, note("loaded"));
        connect(m_tables, &ZDataTableMgr::sigTableFailed, &scope, [&](const TableFailure& failure) {
            note("failed")(failure.table, failure.kind, failure.version);
            told += u" %1 %2 %3|"_s.arg(failure.step).arg(failure.httpStatus).arg(failure.address)
                + failure.cause;
            told.replace(server, u"S"_s);
        });
        const auto update = [&](const QByteArray& body, int status = 200) {
            m_server->answer(u"/app/resources/Message"_s, {status, body});
            outcome(m_tables->updateDataTable(Table::Message));
            return told;
        };
        m_tables->setTableVersion(Table::Message, 3, false);
        const QString address = u"S/app/resources/Message"_s;
        QCOMPARE(update({}, 404),
                 u"failed Message 22 3 1 404 %1|%1: HTTP status 404"_s.arg(address));
        QCOMPARE(
            update("<html>\n"),
            u"failed Message 22 3 2 0 %1|%1: 7 bytes that are no table, the first \"<html>.\": "
            "not JSON at byte 1: illegal value"_s.arg(address));
        QDir(u"res/dataTable"_s).removeRecursively();
        const QString path = pathOf(Table::Message);
        QVERIFY2(
            update(plainTable).startsWith(u"failed Message 22 3 3 0 %1|%2: "_s.arg(address, path)),
            qPrintable(told));
        QDir().mkpath(u"res/dataTable"_s);
        QCOMPARE(update(plainTable), u"updated Message 22 3"_s);
        QVERIFY(!m_tables->loadTable(Table::Message));
        QCOMPARE(told, u"failed Message 22 3 4 0 |%1 has no column \"tabType\""_s.arg(path));
        QCOMPARE(statusOf(u"Message"_s).lastFailure.step, TableFailure::Store); // for good

        const auto fetch = [&](const QByteArray& body) {
            m_server->serve(u"/app/resources/"_s + side, body);
            return outcome(m_tables->updateUnversionedTable(side, u"new/side"_s)).right(20);
        };
        const TableStatus status = statusOf(side);
        const QByteArray good = tableBytes(status, u"required"_s, {});
        QCOMPARE(fetch(good), u"ok"_s);
        QCOMPARE(told, u"updated ActivityAwardEffect -1 0"_s);
        QVERIFY(m_tables->loadUnversionedTable(side, u"new/side"_s));
        QCOMPARE(told, u"loaded ActivityAwardEffect -1 0"_s);
        QCOMPARE(fetch(plainTable), u"has no column \"rankType\""_s.right(20));
        QCOMPARE(ZTestFolder::read(u"new/side"_s), good);
    }

    void versionChangesMeanwhile()
    {
        m_tables->setTableVersion(Table::Message, 1, false);
        const QString first = pathOf(Table::Message);
        m_server->hold(u"/app/resources/Message"_s);
        const QtPromise::QPromise<void> update = m_tables->updateDataTable(Table::Message);
        QTRY_COMPARE(m_server->held(), 1);
        m_tables->setTableVersion(Table::Message, 2, false);
        m_server->release(u"/app/resources/Message"_s);
        QCOMPARE(outcome(update), u"ok"_s);
        QVERIFY(QFile::exists(first));
        QVERIFY(!QFile::exists(pathOf(Table::Message)));
    }

    void allTables()
    {
        const int all = TableCatalogue::types().size();
        QDir(u"res"_s).removeRecursively();
        m_server->fail(u"/app/resources/PCSkin"_s, 500); // none of those that are waited for
        for (const int times : {1, 2}) {
            QCOMPARE(outcome(m_tables->updateAllDataTable()), u"ok"_s);
            QTRY_COMPARE(m_server->requests(u"/app/resources/PCSkin"_s), times);
            QCOMPARE(m_server->targets().size(), all + times - 1);
            QCOMPARE(ZTestFolder::files(u"res/dataTable"_s).size(), all - 1);
        }

        init();
        m_server->fail(u"/app/resources/PublicConfig"_s, 404);
        m_server->fail(u"/app/resources/SystemConfig"_s, 404);
        m_server->hold(u"/app/resources/CS_PkRankInfo"_s);
        const LogLines log;
        QCOMPARE(outcome(m_tables->updateAllDataTable()), u"网络不给力，请重试"_s);
        m_server->release(u"/app/resources/CS_PkRankInfo"_s);
        QTRY_COMPARE(ZTestFolder::files(u"res/dataTable"_s).size(), all - 2);
        QVERIFY(QFile::exists(pathOf(Table::CS_PkRankInfo)));
        for (const QString& told :
             {u"更新静态表出错"_s, u"下载错误 PublicConfig"_s, u"下载错误 SystemConfig"_s})
            QCOMPARE(LogLines::count(told), 1);
    }

    void giftTables()
    {
        m_server->serve(giftAddress, giftTable("rose"));
        QCOMPARE(outcome(m_tables->updateGiftDataTable()), u"ok"_s);
        const QString path = pathOf(Table::CS_GiftList);
        const LogLines log;
        QCOMPARE(outcome(m_tables->updateGiftDataTable()), u"数据没变化"_s);
        QCOMPARE(LogLines::lines().join(u' '),
                 u"数据没变化 updateGiftDataTable %1?0"_s.arg(m_server->baseUrl() + giftAddress));
        QCOMPARE(m_server->targets().size(), 2);
        m_server->serve(giftAddress, "[]");
        QVERIFY(outcome(m_tables->updateGiftDataTable()).startsWith(u"数据表解析失败"_s));
        QCOMPARE(ZTestFolder::read(path), giftTable("rose"));

        m_server->serve(giftAddress, giftTable("lily"));
        m_tables->loadGiftTable();
        QTRY_COMPARE(LogLines::count(u"礼物数据表加载成功 "_s), 1);
        QCOMPARE(ZGiftListMgr::getInstance()->getGiftNameById(u"G1"_s), u"lily"_s);

        m_server->serve(giftAddress, plainTable); // a table, but not of gifts
        m_tables->loadGiftTable();
        QTRY_COMPARE(LogLines::count(u"礼物数据表加载失败 "_s), 1);
        QVERIFY(!QFile::exists(pathOf(Table::CS_GiftList)));
        QCOMPARE(ZGiftListMgr::getInstance()->getGiftNameById(u"G1"_s), u"lily"_s);
    }

    void downloads()
    {
        const QString url = m_server->baseUrl() + u"/pic?138"_s;
        const QString path = u"new/folder/picture"_s;
        const auto fetched = [&](const QByteArray& served, bool keeps) {
            m_server->serve(u"/pic"_s, served);
            const QString ended = outcome(m_tables->downloadFile(path, url, keeps));
            return QString(ended + u' ' + QString::fromUtf8(ZTestFolder::read(path)));
        };
        QCOMPARE(fetched("one", true), u"ok one"_s);
        QCOMPARE(fetched("two", true), u"ok one"_s);
        QCOMPARE(m_server->targets(), QStringList {u"/pic?138"_s});
        QCOMPARE(fetched("two", false), u"ok two"_s);
        QCOMPARE(fetched("", false), u"ok two"_s);

        m_server->fail(u"/pic"_s, 404);
        const QString failure = outcome(m_tables->downloadFile(path, url, false));
        QVERIFY2(failure.contains(u"/pic"_s) && !failure.contains(u"138"_s)
                     && !failure.endsWith(u" with a code"_s),
                 qPrintable(failure));
        m_server->serve(u"/pic"_s, "three");
        const QString unwritable = outcome(m_tables->downloadFile(u"new/folder"_s, url, false));
        QVERIFY2(unwritable.startsWith(u"Cannot write new/folder: "_s), qPrintable(unwritable));
        QVERIFY(outcome(m_tables->downloadFile(QString(), QString(), true)) != u"ok"_s);
    }
};

QTEST_GUILESS_MAIN(tst_update)

#include "tst_update.moc"
