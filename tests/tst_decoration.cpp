#include "datatable/ZDataTableMgr.h"
#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageCarInfoListMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "decoration/ZMedalMgr.h"
#include "decoration/ZUserStampMgr.h"
#include "decoration/zFunStampMgr.h"
#include "host/ZGlobalConfig.h"
#include "support/CacheName.h"
#include "support/Tables.h"

#include <QtTest>

namespace {

QString cached(const QString& address)
{
    return u"res/images/"_s + cacheName(address);
}

} // namespace

/** What users wear: levels, frames, medals, cars and stamps. */
class tst_decoration : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZFunLevelMgr* m_levels = ZFunLevelMgr::getInstance();
    ZImageFrameInfoListMgr* m_frames = ZImageFrameInfoListMgr::getInstance();
    ZMedalMgr* m_medals = ZMedalMgr::getInstance();
    ZImageCarInfoListMgr* m_cars = ZImageCarInfoListMgr::getInstance();
    ZUserStampMgr* m_userStamps = ZUserStampMgr::getInstance();
    zFunStampMgr& m_funStamps = zFunStampMgr::getInstance();

private Q_SLOTS:
    void init();

    void ladder_data();
    void ladder();
    void ladderIsComplete();
    void levelTable();
    void levelResources();
    void framePeriods_data();
    void framePeriods();
    void frameAddresses();
    void medals();
    void medalRows();
    void cars();
    void stamps();
};

void tst_decoration::init()
{
    auto& config = ZGlobalConfig::getInstance();
    config.setConfig(u"ImageResServer"_s, u"http://img"_s);
    config.setConfig(u"ZZResServer"_s, u"http://zz/"_s);
    config.setConfig(u"funlevelDir"_s, QString());
    ZDataTableMgr::getInstance()->setTableVersion(EDataTable::CS_MedalList, 33, false);
    ZDataTableMgr::getInstance()->setTableVersion(EDataTable::CS_FunStamp, 21, false);
    m_levels->clear();
}

void tst_decoration::ladder_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("expected"); // title, badge, number
    const auto row = [](int level, const QString& title, const QString& badge, int number) {
        QTest::addRow("%d", level)
            << level
            << u"%1 ui//funlevel/new/lv_%2.png ui//funlevel/number/num%3.png"_s.arg(
                   title, badge, QString::number(number));
    };
    row(-3, u"平民-3"_s, u"pm"_s, -3);
    row(5, u"平民5"_s, u"pm"_s, 5);
    row(70, u"亲王5"_s, u"qw"_s, 70);
    row(120, u"天帝10"_s, u"td"_s, 120);
    row(125, u"仙帝5"_s, u"xd"_s, 115);
    row(131, u"仙尊1"_s, u"xz"_s, 111);
    row(150, u"圣皇10"_s, u"sz_new"_s, 130);
    row(190, u"无极神10"_s, u"wjs"_s, 170);
}

void tst_decoration::ladder()
{
    QFETCH(int, level);
    const QStringList answers {m_levels->getFunLevelNameById(level),
                               m_levels->getLocalFunLevelImagePathById(level),
                               m_levels->getLocalFunLevelNumberPathById(level)};
    QTEST(answers.join(u' '), "expected");
}

/** Every rank once, of five levels each up to 70 and of ten above. */
void tst_decoration::ladderIsComplete()
{
    QSet<QString> badges;
    QSet<QString> titles;
    for (int level = 1; level <= 190; ++level) {
        const int number = (level - 1) % (level <= 70 ? 5 : 10) + 1;
        const QString title = m_levels->getFunLevelNameById(level);
        QVERIFY2(title.endsWith(QString::number(number)), qPrintable(title));
        titles.insert(title);
        badges.insert(m_levels->getLocalFunLevelImagePathById(level));
    }
    QCOMPARE(badges.size(), 26);
    QCOMPARE(titles.size(), 190);
}

void tst_decoration::levelTable()
{
    QCOMPARE(m_levels->getMaxLevel(), 200);
    QCOMPARE(m_levels->getLevelNameByLevel(1, true), QString());
    QVERIFY(loadTable<ZFunLevelMgr>(
        "[{'level': 195, 'levelName': '永恒神5', 'bigIconName': 'big%1.png'}, "
        "{'level': 3, 'levelName': 'old'}, {'level': 3, 'levelName': '平2民12', "
        "'exp': 9, 'carId': 'c'}, {'level': 7, 'levelName': '永恒神5'}, "
        "{'level': 8, 'levelName': 'a1\\n'}, {'level': 9}]"));
    QCOMPARE(m_levels->getMaxLevel(), 195);
    QCOMPARE(m_levels->getFunLevelItem(3).exp, 9);
    QCOMPARE(m_levels->getFunLevelItem(3).carId, u"c"_s);
    QCOMPARE(m_levels->getFunLevelItem(4).level, 0);
    QCOMPARE(m_levels->getLevelNameByLevel(0, false), u"平2民12"_s);
    QCOMPARE(m_levels->getLevelNameByLevel(3, true), u"平2民"_s);
    QCOMPARE(m_levels->getLevelNameByLevel(8, true), u"a1\n"_s);
    QCOMPARE(m_levels->getLevelNameByLevel(4, false), QString());
    QCOMPARE(m_levels->getLevelNameByLevel(999, true), u"永恒神"_s);
    QCOMPARE(m_levels->getLevelByLevelName(u"永恒神5"_s), 7);
    QCOMPARE(m_levels->getLevelByLevelName(u"永恒神"_s), 0);
    QCOMPARE(m_levels->getLevelByLevelName(QString()), 0);
    QCOMPARE(m_levels->getFunLevelNameById(195), u"永恒神5"_s);
    QCOMPARE(m_levels->getFunLevelNameById(196), QString());
    QCOMPARE(m_levels->getLocalFunLevelImagePathById(195),
             u"http://imgrn/level/funlevel/big%1.png"_s);
    QCOMPARE(m_levels->getLocalFunLevelImagePathById(191), u"ui//funlevel/new/"_s);
}

void tst_decoration::levelResources()
{
    const QString animation = u"http://zz//app/logo/flash/"_s;
    QCOMPARE(m_levels->getFunLevelFlashUrlById(50), QString());
    QCOMPARE(m_levels->getFunLevelFlashUrlById(51), animation + u"cfxzgg99"_s);
    QCOMPARE(m_levels->getFunLevelFlashUrlById(170), animation + u"app_170cfdj_xz"_s);
    QCOMPARE(m_levels->getFunLevelFlashUrlById(171), QString());
    QVERIFY(loadTable<ZFunLevelMgr>("[{'level': 51, 'iconFlashName': 'own'}, "
                                    "{'level': 201, 'iconName': 'lv.png'}]"));
    QCOMPARE(m_levels->getFunLevelFlashUrlById(51), animation + u"own"_s);
    QCOMPARE(m_levels->getFunLevelFlashUrlById(201), QString());
    QCOMPARE(m_levels->getFunLevelImagePathById(201),
             cached(u"http://zz/app/images/newzz/funlevel/lv201.png"_s));
    QCOMPARE(m_levels->getFunLevelImagePathById(51), QString());
    ZGlobalConfig::getInstance().setConfig(u"funlevelDir"_s, u"ui/levels"_s);
    QCOMPARE(m_levels->getFunLevelImagePathById(201), u"ui/levels/lv201.png"_s);
    QCOMPARE(m_levels->getFunLevelImagePathById(202), QString());
}

void tst_decoration::framePeriods_data()
{
    QTest::addColumn<QString>("schedule");
    QTest::addColumn<QString>("at");
    QTest::addColumn<QString>("icon"); // "own" where no period is in force
    QTest::addColumn<QString>("start");
    const auto schedule = [](const QString& periods) {
        return u"{\"periodConfigs\":[%1]}"_s.arg(periods);
    };
    const auto period = [](const QString& start, const QString& end, const QString& icon) {
        return u"{\"startTime\":\"%1\",\"endTime\":\"%2\",\"icon1\":\"%3\",\"flash\":\"f%3\"}"_s
            .arg(start, end, icon);
    };
    const QString own = u"own"_s;
    const QString begins = u"22:00:00"_s;
    const QString night = schedule(period(begins, u"06:00:00"_s, u"night"_s));
    QTest::newRow("evening") << night << u"23:30:00.000"_s << u"night"_s << begins;
    QTest::newRow("first moment") << night << u"22:00:00.000"_s << u"night"_s << begins;
    QTest::newRow("last moment") << night << u"06:00:00.000"_s << u"night"_s << begins;
    QTest::newRow("after the end") << night << u"06:00:00.001"_s << own << QString();
    QTest::newRow("noon") << night << u"12:00:00.000"_s << own << QString();
    QTest::newRow("no time") << night << QString() << own << QString();
    const QString eight = u"08:00:00"_s;
    const QString moment = schedule(period(eight, eight, u"m"_s));
    QTest::newRow("moment") << moment << u"08:00:00.000"_s << u"m"_s << eight;
    QTest::newRow("half a second on") << moment << u"08:00:00.500"_s << own << QString();
    const QStringList several {u"7,null"_s, period(u"8:00"_s, u"10:00:00"_s, u"short"_s),
                               period(eight, u"10:00:00"_s, QString()),
                               period(u"09:00:00"_s, u"10:00:00"_s, u"second"_s)};
    QTest::newRow("first of two holds")
        << schedule(several.join(u',')) << u"09:30:00.000"_s << QString() << eight;
    for (const char* text : {"", "night", "[]", "{}", "{\"periodConfigs\":{}}",
                             "{\"periodConfigs\":[]}", "{\"periodConfigs\":[{}]}"})
        QTest::addRow("schedule '%s'", text)
            << QString::fromLatin1(text) << u"00:00:00.000"_s << own << QString();
}

void tst_decoration::framePeriods()
{
    QFETCH(QString, schedule);
    QFETCH(QString, icon);
    QFETCH(QString, at);
    const QByteArray escaped = schedule.toUtf8().replace('"', "\\'");
    QVERIFY(loadTable<ZImageFrameInfoListMgr>(
        "[{'icon2': 'own', 'flash': 'fown', 'timePeriodConfig': '" + escaped + "'}]"));
    const QTime time = QTime::fromString(at, u"HH:mm:ss.zzz"_s);
    QCOMPARE(m_frames->getEffectiveIconAt(0, time), icon);
    QCOMPARE(m_frames->getEffectiveFlashAt(0, time), u"f"_s + icon);
    QTEST(m_frames->getPeriodStartTimeAt(0, time).toString(u"HH:mm:ss"_s), "start");
}

void tst_decoration::frameAddresses()
{
    // Two periods that hold every time, whose picture is "%1" in one frame and empty in the other.
    QByteArray rows = R"([{'headFrameId': 0, 'icon2': 'a.png', 'version': 7, 'micAnimation': 'mic',
        'timePeriodConfig': 'ALWAYS'},
        {'headFrameId': 1, 'icon2': 'b.png', 'timePeriodConfig': 'EVER'}])";
    QByteArray always =
        R"({\'periodConfigs\':[)"
        R"({\'startTime\':\'00:00:00\',\'endTime\':\'12:00:00\',\'icon1\':\'%1\'},)"
        R"({\'startTime\':\'12:00:00\',\'endTime\':\'00:00:00\',\'icon1\':\'%1\'}]})";
    rows.replace("ALWAYS", always).replace("EVER", always.replace("%1", ""));
    QVERIFY(loadTable<ZImageFrameInfoListMgr>(rows));
    QCOMPARE(m_frames->getInfoById(0).micAnimation, u"mic"_s);
    QCOMPARE(m_frames->getFramePathById(0), u"res/logo//frame/7_a.png"_s);
    QCOMPARE(m_frames->getFrameUrlById(0), u"http://zz/app/logo/headframe/a.png"_s);
    QCOMPARE(m_frames->getEffectiveFramePathById(0), u"res/logo//frame/7_%1"_s);
    QCOMPARE(m_frames->getEffectiveFrameUrlById(0), u"http://zz/app/logo/headframe/%1"_s);
    QVERIFY(m_frames->getCurrentPeriodStartTime(0).isValid());
    QCOMPARE(m_frames->getFramePathById(1), u"res/logo//frame/0_b.png"_s);
    QCOMPARE(m_frames->getFramePathById(2), QString());
    QCOMPARE(m_frames->getFrameUrlById(2), QString());
    // Named without their parameters, as by whoever connects them: each name has one function.
    const auto icon = &ZImageFrameInfoListMgr::getEffectiveIconById;
    const auto flash = &ZImageFrameInfoListMgr::getEffectiveFlashById;
    for (const auto lookup : {&ZImageFrameInfoListMgr::getEffectiveFramePathById,
                              &ZImageFrameInfoListMgr::getEffectiveFrameUrlById, icon, flash}) {
        QCOMPARE((m_frames->*lookup)(1), QString());
        QCOMPARE((m_frames->*lookup)(2), QString());
    }
}

void tst_decoration::medals()
{
    QVERIFY(loadTable<ZMedalMgr>(R"([{'medalId': 5, 'name': 'five',
        'isCommon': 1, 'groupId': '2', 'dynamicUrl': '/moving.png'},
        {'medalId': '12', 'name': 'text id'}])"));
    QCOMPARE(m_medals->getMedalNameById(u"5"_s), u"five"_s);
    QCOMPARE(m_medals->getMedalNameById(u"0"_s), u"text id"_s);
    QCOMPARE(m_medals->getMedalMap().value(u"5"_s).groupId, u"0"_s);
    QCOMPARE(m_medals->getMedalMap().value(u"5"_s).isCommon, u"1"_s);
    const QString address = u"http://img/app/images/activity/tags/medal_%2.png?33"_s;
    QCOMPARE(m_medals->getMedalImageUrlById(u"%2"_s), address);
    QCOMPARE(m_medals->getMedalImagePathById(u"%2"_s), cached(address));
    QCOMPARE(m_medals->getMedalDynamicUrlById(u"5"_s), u"http://img/moving.png"_s);
    QCOMPARE(m_medals->getShouHuMedalImagePathById(u"5"_s), u"ui/medal/achieveLevel//5.png"_s);
    const QString none;
    QCOMPARE(
        QStringList({m_medals->getMedalImageUrlById(none), m_medals->getMedalImagePathById(none),
                     m_medals->getShouHuMedalImagePathById(none),
                     m_medals->getMedalDynamicUrlById(u"0"_s),
                     m_medals->getMedalDynamicUrlById(u"999"_s)}),
        QStringList({none, none, none, none, none}));
}

/** Rows outlive their medals and are read with the last header, a refused one included. */
void tst_decoration::medalRows()
{
    const QString columns = u"medalId name keepTime "_s
        + columnsOf(ZMedalMgr::declaration()).remove(u"medalId "_s).remove(u"name "_s);
    const int width = columns.count(u' ') + 1;
    QVERIFY(loadTable<ZMedalMgr>(columns, "[{'medalId': 31, 'keepTime': 't'}, [32, 'gone']]"));
    const QJsonObject whole = m_medals->getMedalJsonInfoById(u"31"_s);
    QCOMPARE(whole.size(), width);
    QCOMPARE(whole.value(u"keepTime"_s).toString(), u"t"_s);
    QCOMPARE(m_medals->getMedalJsonInfoById(u"32"_s).size(), 2);
    QCOMPARE(m_medals->getMedalInfoById(u"33"_s), QString());

    QVERIFY(loadTable<ZMedalMgr>(columns, "[[31]]"));
    QCOMPARE(m_medals->getMedalNameById(u"32"_s), QString());
    QCOMPARE(m_medals->getMedalJsonInfoById(u"32"_s).value(u"name"_s).toString(), u"gone"_s);
    QVERIFY(!loadTable<ZMedalMgr>(u"renamed"_s, "[]"));
    QCOMPARE(m_medals->getMedalMap().keys(), QList<QString> {u"31"_s});
    m_medals->clear();
    QVERIFY(!ZMedalMgr::declaration().load(u"missing"_s));
    QCOMPARE(m_medals->getMedalInfoById(u"32"_s), u"{\"renamed\":32}"_s);
}

void tst_decoration::cars()
{
    QVERIFY(loadTable<ZImageCarInfoListMgr>(R"([{'id': 'bike',
            'animation': 'run.%2.zip', 'version': 3, 'picture': '%1.png', 'price': 60,
            'startTime': '2026-01-01 00:00:00'}, {'id': 'bare'}])"));
    const QString picture = u"http://img/app/logo/car/%1.png?3"_s;
    QCOMPARE(m_cars->getCarImageUrlById(u"bike"_s), picture);
    QCOMPARE(m_cars->getCarImagePathById(u"bike"_s), cached(picture));
    QCOMPARE(m_cars->getCarAnimationUrlById(u"bike"_s),
             u"http://img/app/logo/caranimation/run.%2.zip?3"_s);
    QCOMPARE(m_cars->getCarAnimationPathById(u"bike"_s), u"res/flashext/run_3"_s);
    QCOMPARE(m_cars->getInfoById(u"bike"_s).price, 60);
    QCOMPARE(m_cars->getInfoById(u"bike"_s).startTime,
             QDateTime(QDate(2026, 1, 1), QTime(0, 0)).toSecsSinceEpoch());
    for (const QString& id : {u"bare"_s, u"unknown"_s})
        QCOMPARE(
            QStringList({m_cars->getCarImageUrlById(id), m_cars->getCarImagePathById(id),
                         m_cars->getCarAnimationUrlById(id), m_cars->getCarAnimationPathById(id)}),
            QStringList({QString(), QString(), QString(), QString()}));
}

void tst_decoration::stamps()
{
    QVERIFY(loadTable<ZUserStampMgr>(u"id picture duration version name"_s,
                                     "[['1', 's.png', 30, 4], ['bare']]"));
    QVERIFY(loadTable<zFunStampMgr>(u"id picture activityId name"_s,
                                    "[['1', 'f.png'], ['bare', '', 'gala']]"));
    const QString user = u"http://img/app/logo/stamp/s.png?4"_s;
    QCOMPARE(m_userStamps->getStampImageUrlById(u"1"_s), user);
    QCOMPARE(m_userStamps->getStampImagePathById(u"1"_s), cached(user));
    QCOMPARE(m_userStamps->getInfoById(u"1"_s).duration, 30);
    const QString fun = u"http://img/app/logo/funstamp/f.png?21"_s;
    QCOMPARE(m_funStamps.getFunStampImageUrlById(u"1"_s), fun);
    QCOMPARE(m_funStamps.getFunStampImagePathById(u"1"_s), cached(fun));
    QCOMPARE(m_funStamps.getInfoById(u"bare"_s).activityId, u"gala"_s);
    for (const QString& id : {u"bare"_s, u"unknown"_s}) {
        QCOMPARE(m_userStamps->getStampImagePathById(id), QString());
        QCOMPARE(m_funStamps.getFunStampImagePathById(id), QString());
    }
}

QTEST_GUILESS_MAIN(tst_decoration)

#include "tst_decoration.moc"
