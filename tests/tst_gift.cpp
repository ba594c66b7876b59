#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"
#include "support/CacheName.h"
#include "support/Tables.h"

#include <QDateTime>
#include <QtTest>

namespace {

qint64 seconds(const QString& date)
{
    return QDateTime::fromString(date, u"yyyy-MM-dd HH:mm:ss"_s).toSecsSinceEpoch();
}

} // namespace

class tst_gift : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZGiftListMgr* m_gifts = ZGiftListMgr::getInstance();
    const QString m_version = QString::number(seconds(u"2026-01-02 03:04:05"_s));

    /** Loads valid gifts that are on sale in the first half of 2026, but for the stated cells. */
    bool load(const QByteArray& gifts)
    {
        QJsonArray rows = jsonOf(gifts);
        for (QJsonValueRef row : rows) {
            QJsonObject gift {{u"valid"_s, true},
                              {u"isVisible"_s, true},
                              {u"startTime"_s, u"2026-01-01 00:00:00"_s},
                              {u"endTime"_s, u"2026-06-30 23:59:59"_s},
                              {u"alterDateTime"_s, u"2026-01-02 03:04:05"_s}};
            const QJsonObject cells = row.toObject();
            for (auto cell = cells.begin(); cell != cells.end(); ++cell)
                gift.insert(cell.key(), cell.value());
            row = gift;
        }
        return loadTable<ZGiftListMgr>(QJsonDocument(rows).toJson());
    }

private Q_SLOTS:
    void init()
    {
        m_gifts->clear();
        ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
    }

    void defaults();
    void rows();
    void specialCells_data();
    void specialCells();
    void addresses();
    void animationNames_data();
    void animationNames();
    void validity_data();
    void validity();
};

void tst_gift::defaults()
{
    QVERIFY(loadTable<ZGiftListMgr>(columnsOf(ZGiftListMgr::declaration(), false),
                                    "[{'giftId': 'G', 'valid': true}]"));
    const ZGiftInfo info = m_gifts->getGiftInfoById(u"G"_s);
    QCOMPARE(info.labelStartTime, -1);
    QCOMPARE(info.maxGiftGroup, -1);
    QCOMPARE(info.animScaleRate, 0.5);
    QVERIFY(m_gifts->checkGiftFamilyEq(u"G"_s, 0));
    QVERIFY(!m_gifts->checkShowTabEq(u"unknown"_s, 0));
}

void tst_gift::rows()
{
    QVERIFY(load("[{'giftId': 'a', 'price': 1}, {'giftId': 'off', 'valid': false}, "
                 "{'giftId': 'number', 'valid': 1}, {'giftId': 'text', 'valid': 'true'}, "
                 "{'giftId': 'b'}, {'giftId': 'a', 'price': 3, 'startTime': '2026/01/01'}]"));
    QStringList ids;
    for (const ZGiftInfo& info : m_gifts->getGiftList())
        ids.append(info.giftId);
    QCOMPARE(ids, QStringList({u"a"_s, u"b"_s, u"a"_s}));
    QCOMPARE(m_gifts->getGiftMap().size(), 2);
    QCOMPARE(m_gifts->getGiftInfoById(u"a"_s).price, 3);
    QCOMPARE(m_gifts->getGiftInfoById(u"a"_s).startTime, QDateTime().toSecsSinceEpoch());
    QCOMPARE(m_gifts->getGiftList().first().startTime, seconds(u"2026-01-01 00:00:00"_s));
    QCOMPARE(m_gifts->getGiftInfoById(u"A"_s).giftId, QString());
    QCOMPARE(m_gifts->getGiftInfoById(u"b"_s).alterDateTime, m_version);
}

void tst_gift::specialCells_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QJsonValue>("cell");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QRect>("area");
    QTest::addColumn<int>("panel");
    const auto scale = [](const char* name, const QJsonValue& cell, double expected) {
        QTest::newRow(name) << u"animScaleRate"_s << cell << expected << QRect() << 0;
    };
    scale("scale 3", 3, 1.5);
    scale("scale 1", 1, 0.5);
    scale("scale 0", 0, 0.5);
    scale("scale negative", -2, 0.5);
    scale("scale as text", u"3"_s, 0.5);
    scale("scale too small to halve", 4e-16, 0.5);
    const auto client = [](const char* name, const QString& text, const QRect& area, int panel) {
        QTest::newRow(name) << u"clientParam"_s << QJsonValue(text) << 0.5 << area << panel;
    };
    client("area", u"{\"pcIconGeo\":\"10,20,30,40\",\"showGiftPanelType\":2}"_s, {10, 20, 30, 40},
           2);
    client("area with an empty part", u"{\"pcIconGeo\":\"10,,30,40\"}"_s, {10, 0, 30, 40}, 0);
    client("area of three", u"{\"pcIconGeo\":\"10,20,30\"}"_s, {}, 0);
    client("area of five", u"{\"pcIconGeo\":\"1,2,3,4,5\",\"showGiftPanelType\":\"2\"}"_s, {}, 0);
    client("not JSON", u"{pcIconGeo"_s, {}, 0);
}

void tst_gift::specialCells()
{
    QFETCH(QString, column);
    QFETCH(QJsonValue, cell);
    const QJsonArray gifts {QJsonObject {{u"giftId"_s, u"g"_s}, {column, cell}}};
    QVERIFY(load(QJsonDocument(gifts).toJson()));
    const ZGiftInfo info = m_gifts->getGiftInfoById(u"g"_s);
    QTEST(info.animScaleRate, "scale");
    QTEST(info.pcIconGeo, "area");
    QTEST(info.showGiftPanelType, "panel");
    QCOMPARE(info.clientParam, column == u"clientParam"_s ? cell.toString() : QString());
}

void tst_gift::addresses()
{
    QVERIFY(load("[{'giftId': 'G%1', 'animationName': 'rain.%2.json', "
                 "'broadcastAnimationName': 'sky.zip', 'broadcastBgAndAnimationName': 'land', "
                 "'showTabIcon': 'app/tab/1.png'}, {'giftId': 'bare'}]"));
    const QString id = u"G%1"_s;
    QCOMPARE(m_gifts->getGiftImageUrlById(id),
             u"http://img/app/logo/gift/G%1?imageView2/0/w/138/h/138&"_s + m_version);
    QCOMPARE(m_gifts->getGiftImageUrlById(u"no"_s),
             u"http://img/app/logo/gift/no?imageView2/0/w/138/h/138&"_s);
    QCOMPARE(m_gifts->getGiftAnimationUrlById(id),
             u"http://img/app/logo/giftanimation/rain.%2.json?"_s + m_version);
    QCOMPARE(m_gifts->getGiftAnimationPathById(id), u"res/animation//rain_"_s + m_version);
    QCOMPARE(m_gifts->getGiftAnimationPathByAniName(u"rain.%2.json"_s, m_version),
             m_gifts->getGiftAnimationPathById(id));
    QCOMPARE(m_gifts->getGiftBGAnimationUrlById(id),
             u"http://img/app/logo/giftanimation/bcsky.zip?"_s + m_version);
    QCOMPARE(m_gifts->getGiftBGAnimationPathById(id), u"res/flash/bcsky_"_s + m_version);
    QCOMPARE(m_gifts->getGiftBGAndAnimationPathById(id), u"res/flash/bcland_"_s + m_version);
    QCOMPARE(m_gifts->getGiftShowTabIconUrlById(id), u"http://img/app/tab/1.png"_s);
    QVERIFY(m_gifts->getGiftShowTabIconPathById(id).startsWith(u"res/gift/tabBgImg/"_s));
    QCOMPARE(m_gifts->getGiftImagePathById(u"no"_s),
             u"res/images/"_s + cacheName(m_gifts->getGiftImageUrlById(u"no"_s)));
    QCOMPARE(m_gifts->getAllAnimationName(),
             QSet<QString>({u"rain_"_s + m_version, u"_"_s + m_version}));
    for (const QString& answer :
         {m_gifts->getGiftAnimationUrlById(u"no"_s), m_gifts->getGiftAnimationPathById(u"no"_s),
          m_gifts->getGiftImageUrlById(QString()), m_gifts->getGiftImagePathById(QString()),
          m_gifts->getGiftBGAnimationUrlById(u"bare"_s),
          m_gifts->getGiftBGAndAnimationPathById(u"bare"_s),
          m_gifts->getGiftShowTabIconPathById(u"bare"_s), m_gifts->getGiftBGImageUrlById(u"no"_s),
          m_gifts->getGiftAnimationUrlByAniName(QString(), m_version)})
        QCOMPARE(answer, QString());
}

void tst_gift::animationNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("pcName");
    QTest::addColumn<QString>("expected");
    QTest::newRow("cut before the first dot") << u"a.b.zip"_s << QString() << u"a"_s;
    QTest::newRow("leading dot") << u".zip"_s << QString() << u".zip"_s;
    QTest::newRow("film") << u"a.b.mp4"_s << QString() << u"a.b.mp4"_s;
    QTest::newRow("film in capitals") << u"a.MP4"_s << QString() << u"a"_s;
    QTest::newRow("own animation") << u"a.zip"_s << u"pc.zip"_s << u"pc"_s;
}

void tst_gift::animationNames()
{
    QFETCH(QString, name);
    QFETCH(QString, pcName);
    const QString gifts = u"[{'giftId': 'g', 'animationName': '%1', 'pcAnimationName': '%2'}]"_s;
    QVERIFY(load(gifts.arg(name, pcName).toUtf8()));
    QTEST(m_gifts->getGiftAnimationNameById(u"g"_s), "expected");
    QCOMPARE(m_gifts->getGiftInfoById(u"g"_s).isPcAnimation, !pcName.isEmpty());
}

void tst_gift::validity_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("offset"); // seconds from the start of sale
    QTest::addColumn<bool>("onSale");
    QTest::addColumn<bool>("visible"); // also asked for visibility
    QTest::addColumn<bool>("inPanel"); // also asked for the display location
    const int last =
        static_cast<int>(seconds(u"2026-06-30 23:59:59"_s) - seconds(u"2026-01-01 00:00:00"_s));
    QTest::newRow("first second") << u"plain"_s << 0 << true << true << true;
    QTest::newRow("last second") << u"plain"_s << last << true << true << true;
    QTest::newRow("before") << u"plain"_s << -1 << false << false << false;
    QTest::newRow("after") << u"plain"_s << last + 1 << false << false << false;
    QTest::newRow("hidden") << u"hidden"_s << 0 << true << false << true;
    QTest::newRow("hidden event gift") << u"Annual2024G20"_s << 0 << true << true << true;
    QTest::newRow("hidden event gift, late")
        << u"Annual2024G20"_s << last + 1 << false << false << false;
    QTest::newRow("other case") << u"annual2024g20"_s << 0 << true << false << true;
    QTest::newRow("location 1") << u"at1"_s << 0 << true << true << false;
    QTest::newRow("location 2") << u"at2"_s << 0 << true << true << true;
    QTest::newRow("location 3") << u"at3"_s << 0 << true << true << false;
    QTest::newRow("unknown") << u"no"_s << 0 << false << false << false;
    QTest::newRow("empty") << QString() << 0 << false << false << false;
}

void tst_gift::validity()
{
    QFETCH(QString, id);
    QFETCH(int, offset);
    QVERIFY(load("[{'giftId': 'plain'}, {'giftId': 'hidden', 'isVisible': false}, "
                 "{'giftId': 'Annual2024G20', 'isVisible': false}, "
                 "{'giftId': 'annual2024g20', 'isVisible': false}, "
                 "{'giftId': 'at1', 'giftDisplayLocation': 1}, "
                 "{'giftId': 'at2', 'giftDisplayLocation': 2}, "
                 "{'giftId': 'at3', 'giftDisplayLocation': 3}, {'giftId': ''}]"));
    const qint64 time = seconds(u"2026-01-01 00:00:00"_s) + offset;
    QTEST(m_gifts->checkGiftTimeValid(id, time), "onSale");
    QTEST(m_gifts->checkGiftValidForVote(id, time), "onSale");
    QTEST(m_gifts->checkGiftValid(id, time, false, true), "visible");
    QTEST(m_gifts->checkGiftValid(id, time, true, false), "inPanel");
}

QTEST_GUILESS_MAIN(tst_gift)

#include "tst_gift.moc"
