#include "chat/ZGroupWelcomelMgr.h"
#include "privilege/ZFansConfigMgr.h"
#include "support/Literals.h"
#include "support/WorkFolder.h"

#include <QtTest>

namespace {

const QStringList fansColumns {u"cancelDiamond"_s, u"categoryName"_s, u"category"_s,
                               u"guardVal"_s,      u"sortValue"_s,    u"brocastId"_s,
                               u"rewardMedl"_s,    u"rewardCarId"_s,  u"addTime"_s,
                               u"diamond"_s,       u"name"_s,         u"id"_s};

QJsonArray tier(const char16_t* id, int category, const char16_t* diamond, const char16_t* sort,
                const char16_t* name = u"")
{
    return WorkFolder::row(fansColumns,
                           {{u"id"_s, QString::fromUtf16(id)},
                            {u"category"_s, QString::number(category)},
                            {u"diamond"_s, QString::fromUtf16(diamond)},
                            {u"sortValue"_s, QString::fromUtf16(sort)},
                            {u"name"_s, QString::fromUtf16(name)}});
}

} // namespace

/** Fans tiers, and the welcome words that have no other rule than to be there. */
class tst_fans : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tiers();
    void highestTier_data();
    void highestTier();
    void welcomeWords();
};

void tst_fans::tiers()
{
    WorkFolder folder;
    ZFansConfigMgr& fans = ZFansConfigMgr::getInstance();
    QVERIFY(fans.loadListTable(folder.writeTable(
        fansColumns,
        {tier(u"9", 2, u"520", u"3", u"nine"), tier(u"10", 2, u"520", u"20", u"ten"), QJsonValue(),
         tier(u"11", 2, u"99", u"x"), tier(u"1", 3, u"1", u"1"),
         tier(u"9", 2, u"520", u"3", u"later")})));
    QCOMPARE(fans.getInfoById(u"9"_s).name, u"later"_s);
    QCOMPARE(fans.getInfoById(u"12"_s).id, QString());
    QCOMPARE(fans.getInfoByCategoryAndDiamond(2, u"520"_s).id, u"10"_s);
    QCOMPARE(fans.getInfoByCategoryAndDiamond(2, u"0520"_s).id, QString());
    QStringList ids;
    for (const zFansInfo& info : fans.getListByCategory(2))
        ids.append(info.id);
    QCOMPARE(ids, QStringList({u"11"_s, u"9"_s, u"10"_s}));
    QVERIFY(fans.getListByCategory(4).isEmpty());

    for (const QString& column : fansColumns) {
        QStringList without = fansColumns;
        without.removeOne(column);
        QVERIFY2(!fans.loadListTable(folder.writeTable(without, {})), qPrintable(column));
    }
    QCOMPARE(fans.getInfoById(u"9"_s).name, u"later"_s);
    QVERIFY(fans.loadListTable(folder.writeTable(fansColumns, {})));
    QCOMPARE(fans.getInfoById(u"9"_s).id, QString());
}

void tst_fans::highestTier_data()
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

void tst_fans::highestTier()
{
    QFETCH(int, category);
    QFETCH(QString, diamond);
    QFETCH(bool, highest);
    WorkFolder folder;
    ZFansConfigMgr& fans = ZFansConfigMgr::getInstance();
    QVERIFY(fans.loadListTable(
        folder.writeTable(fansColumns,
                          {tier(u"a", 1, u"500", u"1"), tier(u"b", 1, u"1000", u"2"),
                           tier(u"c", 2, u"4000000000", u"1"), tier(u"d", 2, u"5000000000", u"2"),
                           tier(u"e", 3, u"100", u"2"), tier(u"f", 3, u"0100", u"1"),
                           tier(u"g", 4, u"0", u"1"), tier(u"h", 4, u"", u"2")})));
    zFansInfo info;
    info.category = QString::number(category);
    info.diamond = diamond;
    QCOMPARE(fans.isHighestTierFans(info), highest);
}

void tst_fans::welcomeWords()
{
    WorkFolder folder;
    ZGroupWelcomelMgr* welcome = ZGroupWelcomelMgr::getInstance();
    QVERIFY(welcome->loadGroupWelcomeTable(
        folder.writeTable({u"any"_s, u"other"_s},
                          {QJsonArray {u"Hi"_s, u""_s}, QJsonValue(), u"no"_s,
                           QJsonArray {5, u"Welcome"_s, u"beyond"_s}})));
    QCOMPARE(welcome->getWelcomeList(), QVector<QString>({u"Hi"_s, u"Welcome"_s, u"beyond"_s}));
    QSet<QString> drawn;
    for (int i = 0; i < 200; ++i)
        drawn.insert(welcome->getRandWelcome());
    QCOMPARE(drawn.size(), 3);
    // Its columns are never asked for, so there need be none.
    QVERIFY(welcome->loadGroupWelcomeTable(folder.writeTable({}, {QJsonArray {u"Hi"_s}})));
    QCOMPARE(welcome->getRandWelcome(), u"Hi"_s);
    welcome->clear();
    QCOMPARE(welcome->getWelcomeList(), QVector<QString>());
    QVERIFY(!welcome->loadGroupWelcomeTable(u"missing"_s));
    QCOMPARE(welcome->getRandWelcome(), QString());
}

QTEST_GUILESS_MAIN(tst_fans)

#include "tst_fans.moc"
