#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "privilege/ZFansConfigMgr.h"
#include "privilege/ZNobilityListMgr.h"
#include "privilege/zFirstRechargeBox.h"
#include "privilege/zNoblePrivilegeMgr.h"
#include "support/Tables.h"

#include <QDateTime>
#include <QtTest>

namespace {

const QString fansColumns = u"id category diamond sortValue name cancelDiamond categoryName "
                            "guardVal brocastId rewardMedl rewardCarId addTime"_s;

} // namespace

/** Ranks of nobility, their privileges, the boxes for a first recharge, and fans tiers. */
class tst_privilege : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZNobilityListMgr* m_nobility = ZNobilityListMgr::getInstance();
    ZFansConfigMgr& m_fans = ZFansConfigMgr::getInstance();

private Q_SLOTS:
    void initTestCase();
    void prices();
    void exclusive_data();
    void exclusive();
    void privileges();
    void boxes();
    void tiers();
    void highestTier_data();
    void highestTier();
};

void tst_privilege::initTestCase()
{
    ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
}

void tst_privilege::prices()
{
    QVERIFY(ZNobilityListMgr::consumeDeclaration().load(
        tableOf(columnsOf(ZNobilityListMgr::consumeDeclaration()),
                "[['3', 'early'], [4, 'number'], ['3', 'late']]")));
    QCOMPARE(m_nobility->getListNobleId(), QVector<int>({3, 0, 3}));
    QCOMPARE(m_nobility->getNobleConsumeInfoById(3).nobleName, u"late"_s);
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
    QVERIFY(ZNobilityListMgr::configDeclaration().load(
        tableOf(u"nobleId exclusiveCar customCar headFrameId chatSkinList"_s,
                "[['1', '', '1'], ['2', 'car_9', '2'], ['3', 'tiger', true, 'f_201', '5,6']]")));
    QTEST(m_nobility->isExclusiveCar(id), "car");
    QTEST(m_nobility->isLogoHeadFrame(id), "frame");
    QCOMPARE(m_nobility->getNobleConfigInfoById(u"3"_s).chatSkinList, u"5,6"_s);
}

void tst_privilege::privileges()
{
    zNoblePrivilegeMgr& privileges = zNoblePrivilegeMgr::getInstance();
    QVERIFY(loadTable<zNoblePrivilegeMgr>(
        u"icon id isOpen nobleId name"_s,
        "[['b.png', 'b'], ['', 'c'], ['%3.png', 'a', true], ['late.png', 'b']]"));
    QCOMPARE(privileges.getList().size(), 4);
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
    QVERIFY(boxes.getInfoById(QString()).rewards.isEmpty());
    QVERIFY(loadTable<zFirstRechargeBox>(
        u"picture startTime id amount name"_s,
        "[['p.png', '2026-01-02 03:04:05', '10', 9.9], ['', '', '2', 30]]"));
    const zFirstRechargeBoxInfo box = boxes.getInfoById(u"10"_s);
    QCOMPARE(box.amount, 9.9);
    QCOMPARE(box.startTime, QDateTime({2026, 1, 2}, {3, 4, 5}).toSecsSinceEpoch());
    QCOMPARE(boxes.getList().first().id, u"10"_s);
    ZDataTableMgr::getInstance()->setTableVersion(EDataTable::FirstRechargeBoxTask, 1, false);
    QCOMPARE(boxes.getPictureUrlById(u"10"_s), u"http://img/app/logo/firstrecharge/p.png?1"_s);
    QVERIFY(boxes.getPicturePathById(u"10"_s).startsWith(u"res/images/"_s));
    QCOMPARE(boxes.getPictureUrlById(u"2"_s), QString());
    QCOMPARE(boxes.getPicturePathById(u"unknown"_s), QString());
}

void tst_privilege::tiers()
{
    QVERIFY(loadTable<ZFansConfigMgr>(
        fansColumns,
        "[['9', '2', '520', '3', 'nine'], ['10', '2', '520', '20'], null, "
        "['11', '2', '99', 'x'], ['1', '3', '1', '1'], ['9', '2', '520', '3', 'later']]"));
    QCOMPARE(m_fans.getInfoById(u"9"_s).name, u"later"_s);
    QCOMPARE(m_fans.getInfoById(u"12"_s).id, QString());
    QCOMPARE(m_fans.getInfoByCategoryAndDiamond(2, u"520"_s).id, u"10"_s);
    QCOMPARE(m_fans.getInfoByCategoryAndDiamond(2, u"0520"_s).id, QString());
    QStringList ids;
    for (const zFansInfo& info : m_fans.getListByCategory(2))
        ids.append(info.id);
    QCOMPARE(ids, QStringList({u"11"_s, u"9"_s, u"10"_s}));
    QVERIFY(m_fans.getListByCategory(4).isEmpty());
}

void tst_privilege::highestTier_data()
{
    QTest::addColumn<int>("category");
    QTest::addColumn<QString>("diamond");
    QTest::addColumn<bool>("highest");
    QTest::newRow("highest") << 1 << u"1000"_s << true;
    QTest::newRow("lower") << 1 << u"500"_s << false;
    QTest::newRow("same value, other text") << 1 << u"01000"_s << false;
    QTest::newRow("beyond 32 bits") << 2 << u"5000000000"_s << true;
    QTest::newRow("first of equals in order of sortValue") << 3 << u"0100"_s << true;
    QTest::newRow("second of equals") << 3 << u"100"_s << false;
    QTest::newRow("all prices 0") << 4 << u"0"_s << false;
    QTest::newRow("no such category") << 5 << u"1000"_s << false;
    QTest::newRow("no price") << 1 << QString() << false;
}

void tst_privilege::highestTier()
{
    QFETCH(int, category);
    QFETCH(QString, diamond);
    QFETCH(bool, highest);
    QVERIFY(loadTable<ZFansConfigMgr>(
        fansColumns,
        "[['a', '1', '500', '1'], ['b', '1', '1000', '2'], ['c', '2', '4000000000', '1'], "
        "['d', '2', '5000000000', '2'], ['e', '3', '100', '2'], ['f', '3', '0100', '1'], "
        "['g', '4', '0', '1'], ['h', '4', '', '2']]"));
    zFansInfo info;
    info.category = QString::number(category);
    info.diamond = diamond;
    QCOMPARE(m_fans.isHighestTierFans(info), highest);
}

QTEST_GUILESS_MAIN(tst_privilege)

#include "tst_privilege.moc"
