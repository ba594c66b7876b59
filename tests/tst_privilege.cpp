#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "privilege/ZNobilityListMgr.h"
#include "privilege/zFirstRechargeBox.h"
#include "privilege/zNoblePrivilegeMgr.h"
#include "support/Literals.h"
#include "support/Tables.h"

#include <QDateTime>
#include <QtTest>

/** Ranks of nobility, their privileges, and the boxes for a first recharge. */
class tst_privilege : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZNobilityListMgr* m_nobility = ZNobilityListMgr::getInstance();

private Q_SLOTS:
    void initTestCase();
    void prices();
    void exclusive_data();
    void exclusive();
    void privileges();
    void boxes();
};

void tst_privilege::initTestCase()
{
    ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
}

void tst_privilege::prices()
{
    const auto load = [this](const QString& path) {
        return m_nobility->loadNobleConsumeInfoListTable(path);
    };
    const QString columns =
        u"nobleId nobleName upgradeReturnDiamond time renewReturnDiamond blackBean returnDiamond"_s
        u" renewBlackBean"_s;
    const auto count = [] { return ZNobilityListMgr::consumeDeclaration().recordCount(); };
    QCOMPARE(requiredFault(m_folder, columns, load, count), QString());
    QCOMPARE(m_nobility->getListNobleId(), QVector<int> {0});

    QVERIFY(load(tableOf(m_folder, columns,
                         "[['3', 'early'], [4, 'number'], "
                         "['3', 'late', '10,,30', '30', '200']]")));
    QCOMPARE(m_nobility->getListNobleId(), QVector<int>({3, 0, 3}));
    const ZNobleConsumeInfo info = m_nobility->getNobleConsumeInfoById(3);
    QCOMPARE(info.nobleName, u"late"_s);
    QCOMPARE(info.upgradeReturnDiamond, QStringList({u"10"_s, u""_s, u"30"_s}));
    QCOMPARE(info.time, 30);
    QCOMPARE(info.renewReturnDiamond, u"200"_s);
    QCOMPARE(m_nobility->getNobleConsumeInfoById(0).upgradeReturnDiamond, QStringList(u""_s));
    QVERIFY(m_nobility->getNobleConsumeInfoById(4).upgradeReturnDiamond.isEmpty());
}

void tst_privilege::exclusive_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("car");
    QTest::addColumn<bool>("frame");
    QTest::newRow("empty") << QString() << false << false;
    QTest::newRow("beginning, other case") << u"CAR_9"_s << true << false;
    QTest::newRow("more than the beginning") << u"car_9_gold"_s << true << false;
    QTest::newRow("less than the beginning") << u"car_"_s << false << false;
    QTest::newRow("whole, other case") << u"TIGER"_s << true << false;
    QTest::newRow("more than the whole") << u"tiger_gold"_s << false << false;
    QTest::newRow("frame") << u"f_201"_s << false << true;
    QTest::newRow("frame, other case") << u"F_201"_s << false << false;
}

void tst_privilege::exclusive()
{
    QFETCH(QString, id);
    const auto load = [this](const QString& path) {
        return m_nobility->loadNobleConfigInfoListTable(path);
    };
    const QString columns = u"nobleId exclusiveCar customCar headFrameId chatSkinList"_s;
    const auto count = [] { return ZNobilityListMgr::configDeclaration().recordCount(); };
    QCOMPARE(requiredFault(m_folder, columns, load, count), QString());
    QVERIFY(load(tableOf(m_folder, columns,
                         "[['1', '', '1'], ['2', 'car_9', '2'], "
                         "['3', 'tiger', true, 'f_201', '5,6']]")));
    QTEST(m_nobility->isExclusiveCar(id), "car");
    QTEST(m_nobility->isLogoHeadFrame(id), "frame");
    QCOMPARE(m_nobility->getNobleConfigInfoById(u"3"_s).chatSkinList, u"5,6"_s);
}

void tst_privilege::privileges()
{
    zNoblePrivilegeMgr& privileges = zNoblePrivilegeMgr::getInstance();
    const auto load = [&](const QString& path) { return privileges.loadListTable(path); };
    const QString columns = u"id nobleId name"_s;
    const auto count = [] { return zNoblePrivilegeMgr::declaration().recordCount(); };
    QCOMPARE(requiredFault(m_folder, columns, load, count), QString());

    QVERIFY(
        load(tableOf(m_folder, u"sortValue icon isOpen "_s + columns,
                     "[[7, 'b.png', true, 'b'], [10, '', true, 'c'], [10, '%3.png', true, 'a'], "
                     "[5, 'late.png', true, 'b']]")));
    QString order;
    for (const zNoblePrivilegeInfo& info : privileges.getList())
        order += info.id;
    QCOMPARE(order, u"bbca"_s);
    QVERIFY(privileges.getInfoById(u"a"_s).isOpen);
    ZDataTableMgr::getInstance()->setTableVersion(EDataTable::NoblePrivilegeConfig, 8, false);
    QCOMPARE(privileges.getIconUrlById(u"a"_s), u"http://img/app/logo/nobleprivilege/%3.png?8"_s);
    QCOMPARE(privileges.getIconUrlById(u"b"_s), u"http://img/app/logo/nobleprivilege/late.png?8"_s);
    QVERIFY(privileges.getIconPathById(u"a"_s).startsWith(u"res/images/"_s));
    QCOMPARE(privileges.getIconUrlById(u"c"_s), QString());
    QCOMPARE(privileges.getIconPathById(u"unknown"_s), QString());
}

void tst_privilege::boxes()
{
    zFirstRechargeBox& boxes = zFirstRechargeBox::getInstance();
    const auto load = [&](const QString& path) { return boxes.loadListTable(path); };
    const QString columns = u"id amount name"_s;
    const auto count = [] { return zFirstRechargeBox::declaration().recordCount(); };
    QCOMPARE(requiredFault(m_folder, columns, load, count), QString());
    QVERIFY(boxes.getInfoById(QString()).rewards.isEmpty());

    QVERIFY(load(tableOf(
        m_folder, u"rewards picture startTime "_s + columns,
        "[['G1,car_2', 'p.png', '2026-01-02 03:04:05', '10', 9.9], ['', '', '', '2', 30]]")));
    const zFirstRechargeBoxInfo box = boxes.getInfoById(u"10"_s);
    QCOMPARE(box.amount, 9.9);
    QCOMPARE(box.rewards, QStringList({u"G1"_s, u"car_2"_s}));
    QCOMPARE(box.startTime, QDateTime({2026, 1, 2}, {3, 4, 5}).toSecsSinceEpoch());
    QCOMPARE(boxes.getList().first().id, u"10"_s);
    ZDataTableMgr::getInstance()->setTableVersion(EDataTable::FirstRechargeBoxTask, 1, false);
    QCOMPARE(boxes.getPictureUrlById(u"10"_s), u"http://img/app/logo/firstrecharge/p.png?1"_s);
    QVERIFY(boxes.getPicturePathById(u"10"_s).startsWith(u"res/images/"_s));
    QCOMPARE(boxes.getPictureUrlById(u"2"_s), QString());
    QCOMPARE(boxes.getPicturePathById(u"unknown"_s), QString());
}

QTEST_GUILESS_MAIN(tst_privilege)

#include "tst_privilege.moc"
