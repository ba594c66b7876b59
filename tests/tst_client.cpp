#include "client/ZGlobalClient.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/zErrorInfo.h"
#include "support/Literals.h"
#include "support/LogLines.h"
#include "support/Tables.h"
#include "testing/ZTestServer.h"

#include <QtTest>

using Table = EDataTable;

/** What the client adds to the managers, against a server on which things go wrong. */
class tst_client : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    ZTestServer m_server;
    ZGlobalClient m_client;

    /** Publishes a gift table of these columns that names one gift, under this version. */
    void publishGift(const QString& columns, const QString& name, int version)
    {
        const QString row = u"[{'giftId': 'G', 'valid': true, 'giftName': '%1'}]"_s.arg(name);
        m_server.publish(u"CS_GiftList"_s, version, tableBytes(columns, row.toUtf8()));
    }

    /** The tables that failed, or the reason why nothing was updated. */
    QStringList update()
    {
        QStringList failed;
        m_client.update()
            .then([&](const ZUpdateResult& result) {
                for (const ZClientFailure& failure : result.failures)
                    failed.append(failure.what);
            })
            .fail([&](const zErrorInfo& error) { failed = QStringList {error.message()}; })
            .wait();
        return failed;
    }

private Q_SLOTS:
    void initTestCase();
    void refusedVersionIsLeft();
    void failures();
    void report();
};

void tst_client::initTestCase()
{
    QString error;
    QVERIFY(!m_client.open(u"."_s, ZGlobalClient::configurationFor({}), &error));
    QCOMPARE(error, u"no content server is known in ."_s);
    QVERIFY(m_client.open(u"data"_s, ZGlobalClient::configurationFor(m_server.baseUrl()), &error));
    for (const TableStatus& table : ZDataTableMgr::getInstance()->getTableStatuses())
        m_server.publish(table.table, 1, tableBytes(u"id"_s, "[['Hi']]"));
}

void tst_client::refusedVersionIsLeft()
{
    const QString columns = columnsOf(ZGiftListMgr::declaration());
    QString without = columns;
    without.remove(u" descs"_s);
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    publishGift(columns, u"rose"_s, 57);
    QCOMPARE(update(), QStringList {u"ActivityAwardEffect"_s});
    QVERIFY(m_client.load());
    QCOMPARE(gifts->getGiftNameById(u"G"_s), u"rose"_s);

    publishGift(without, u"lily"_s, 58);
    update();
    QVERIFY(m_client.load());
    QCOMPARE(gifts->getGiftNameById(u"G"_s), u"rose"_s);
    const QString told = m_client.failures().first().why;
    QVERIFY2(told.endsWith(u"has no column \"descs\"; back to version 57"_s), qPrintable(told));
    const int asked = m_server.requests(u"/app/resources/CS_GiftList"_s);
    update(); // the refused version is not asked for again, by a new process neither
    QVERIFY(m_client.open(u"."_s, {}));
    update();
    QCOMPARE(m_server.requests(u"/app/resources/CS_GiftList"_s), asked);
    QCOMPARE(ZDataTableMgr::getInstance()->getTableVersion(Table::CS_GiftList), 57);

    publishGift(columns, u"tulip"_s, 59);
    update();
    QVERIFY(m_client.load());
    QCOMPARE(gifts->getGiftNameById(u"G"_s), u"tulip"_s);

    // One that has not come in is no worse than none: the last that did serves meanwhile.
    publishGift(columns, u"daisy"_s, 60);
    m_server.fail(u"/app/resources/CS_GiftList"_s, 503);
    QVERIFY(update().contains(u"CS_GiftList"_s));
    gifts->clear();
    QVERIFY(m_client.load());
    QCOMPARE(gifts->getGiftNameById(u"G"_s), u"tulip"_s);
    publishGift(columns, u"daisy"_s, 60);
    update();
    QVERIFY(m_client.load());
    QCOMPARE(gifts->getGiftNameById(u"G"_s), u"daisy"_s);
}

void tst_client::failures()
{
    // A side table that is none does not replace a good one.
    const QString path = ZTestFolder::write(u"res/activity/ActivityAwardEffect"_s, "good");
    update();
    QCOMPARE(ZTestFolder::read(path), QByteArray("good"));
    m_server.serve(u"/app/versions.json"_s, "[]");
    QCOMPARE(update(),
             QStringList {u"the versions could not be learnt: %1/app/versions.json is not a JSON "
                          "object"_s.arg(m_server.baseUrl())});
}

void tst_client::report()
{
    QString server = m_server.baseUrl() + u"/"_s;
    QVERIFY(m_client.open(u"."_s,
                          {{u"cmsServer"_s, server.insert(7, u"me: secret@"_s)},
                           {u"H5Server"_s, u"http://secret:s/e@c/r?e=t"_s},
                           {u"userId"_s, u"secret"_s}}));
    m_server.serve(u"/app/versions.json"_s, "{\"versions\": {\"Doutu\": 2, \"Message\": 2}}");
    m_server.serve(u"/app/resources/Message"_s, "<html>");
    QLoggingCategory::setFilterRules(u"zglobal.*=false"_s);
    const LogLines log;
    update();
    m_client.load();
    QCOMPARE(LogLines::lines(), QStringList());
    QLoggingCategory::setFilterRules(QString());
    m_server.serve(u"/app/versions.json"_s, "[]");
    update();

    const QJsonObject report = m_client.report();
    const QString text = textOf(report);
    QVERIFY2(!text.contains(u"secret"_s) && !text.contains(u'?'), qPrintable(text));
    QCOMPARE(report[u"library"_s].toObject()[u"qt"_s].toString(), QLatin1String(qVersion()));
    QCOMPARE(report[u"configuration"_s],
             (QJsonObject {{u"cmsServer"_s, QString(m_server.baseUrl() + u"/"_s)},
                           {u"H5Server"_s, u"(no address)"_s},
                           {u"H5WebServer"_s, QString(m_server.baseUrl() + u"/"_s)},
                           {u"ImageResServer"_s, m_server.baseUrl()},
                           {u"ServerType"_s, u"1002"_s},
                           {u"ZZResServer"_s, QString(m_server.baseUrl() + u"/"_s)},
                           {u"userId"_s, u"(set)"_s}}));
    QMap<QString, QJsonValue> tables;
    for (const QJsonValue& table : report[u"tables"_s].toArray())
        tables.insert(table[u"table"_s].toString(), table);
    const QJsonValue broken = tables[u"Message"_s];
    QCOMPARE(broken[u"state"_s].toString(), u"failed"_s);
    QCOMPARE(broken[u"lastFailure"_s][u"step"_s].toString(), u"content"_s);
    QCOMPARE(tables[u"Doutu"_s][u"bytes"_s].toInt(), tableBytes(u"id"_s, "[['Hi']]").size());
    const QJsonValue last = report[u"failures"_s].toArray().last();
    QVERIFY(last[u"why"_s].toString().contains(u"/app/versions.json"_s));
    // Not that the file is missing, but why.
    const QJsonObject told {{u"what"_s, u"Message"_s},
                            {u"why"_s, broken[u"lastFailure"_s][u"cause"_s]}};
    QVERIFY2(report[u"failures"_s].toArray().contains(told), qPrintable(text));
}

QTEST_GUILESS_MAIN(tst_client)

#include "tst_client.moc"
