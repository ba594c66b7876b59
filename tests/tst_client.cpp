#include "client/ZGlobalClient.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/zErrorInfo.h"
#include "support/Literals.h"
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
};

void tst_client::initTestCase()
{
    QString error;
    QVERIFY(!m_client.open(u"."_s, {}, &error));
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

QTEST_GUILESS_MAIN(tst_client)

#include "tst_client.moc"
