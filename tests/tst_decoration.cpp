#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageCarInfoListMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "decoration/ZMedalMgr.h"
#include "decoration/ZUserStampMgr.h"
#include "decoration/zFunStampMgr.h"
#include "support/Answers.h"
#include "support/Cases.h"

#include <QtTest>

/** What users wear: levels, frames, medals, cars and stamps. */
class tst_decoration : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    ZFunLevelMgr* m_levels = ZFunLevelMgr::getInstance();
    ZImageFrameInfoListMgr* m_frames = ZImageFrameInfoListMgr::getInstance();

private Q_SLOTS:
    void init()
    {
        auto& config = ZGlobalConfig::getInstance();
        config.setConfig(u"ImageResServer"_s, u"http://img"_s);
        config.setConfig(u"ZZResServer"_s, u"http://zz/"_s);
        config.setConfig(u"funlevelDir"_s, QString());
        m_levels->clear();
    }

    void ladder_data() { Cases::rows("decoration"); }

    void ladder()
    {
        QFETCH(int, level);
        QFETCH(QString, badge);
        QFETCH(int, number);
        QTEST(m_levels->getFunLevelNameById(level), "title");
        QCOMPARE(m_levels->getLocalFunLevelImagePathById(level),
                 u"ui//funlevel/new/lv_%1.png"_s.arg(badge));
        QCOMPARE(m_levels->getLocalFunLevelNumberPathById(level),
                 u"ui//funlevel/number/num%1.png"_s.arg(number));
    }

    /** Every rank once, of five levels each up to 70 and of ten above. */
    void ladderIsComplete()
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

    void framePeriods_data() { Cases::rows("decoration"); }

    void framePeriods()
    {
        QFETCH(QJsonValue, schedule);
        QFETCH(QString, at);
        QFETCH(QString, icon); // "own" where no period is in force
        const QJsonObject frame {
            {u"icon2"_s, u"own"_s},
            {u"flash"_s, u"fown"_s},
            {u"timePeriodConfig"_s, schedule.isObject() ? textOf(schedule) : schedule}};
        QVERIFY(loadTable<ZImageFrameInfoListMgr>(QJsonDocument(QJsonArray {frame}).toJson()));
        const QTime time = QTime::fromString(at, u"HH:mm:ss.zzz"_s);
        QCOMPARE(m_frames->getEffectiveIconAt(0, time), icon);
        QCOMPARE(m_frames->getEffectiveFlashAt(0, time), u"f"_s + icon);
        QTEST(m_frames->getPeriodStartTimeAt(0, time).toString(u"HH:mm:ss"_s), "start");
    }

    void answers_data() { Cases::rows("decoration"); }

    void answers()
    {
        QFETCH(QJsonValue, lines);
        const std::function level([this](int id) {
            const stFunLevelItem item = m_levels->getFunLevelItem(id);
            return u"%1 %2 %3"_s.arg(item.levelName, QString::number(item.exp), item.carId);
        });
        const std::function isInPeriod(
            [this](int id) { return m_frames->getCurrentPeriodStartTime(id).isValid(); });
        const std::function medals(
            [] { return QStringList(ZMedalMgr::getInstance()->getMedalMap().keys()); });
        const std::function medal([](const QString& id) {
            const ZMedalInfo info = ZMedalMgr::getInstance()->getMedalMap().value(id);
            return QString(info.groupId + u' ' + info.isCommon);
        });
        const std::function clear([] {
            ZMedalMgr::getInstance()->clear();
            return !ZMedalMgr::declaration().load(u"missing"_s);
        });
        const std::function startTime([](const QString& id) {
            const qint64 seconds = ZImageCarInfoListMgr::getInstance()->getInfoById(id).startTime;
            return QDateTime::fromSecsSinceEpoch(seconds).toString(Qt::ISODate);
        });
        Answers(
            {Z_ANSWER(ZFunLevelMgr, getMaxLevel),
             Z_ANSWER(ZFunLevelMgr, getLevelNameByLevel),
             Z_ANSWER(ZFunLevelMgr, getLevelByLevelName),
             Z_ANSWER(ZFunLevelMgr, getFunLevelNameById),
             Z_ANSWER(ZFunLevelMgr, getLocalFunLevelImagePathById),
             Z_ANSWER(ZFunLevelMgr, getFunLevelFlashUrlById),
             Z_ANSWER(ZFunLevelMgr, getFunLevelImagePathById),
             Z_ANSWER(ZImageFrameInfoListMgr, getFramePathById),
             Z_ANSWER(ZImageFrameInfoListMgr, getFrameUrlById),
             Z_ANSWER(ZImageFrameInfoListMgr, getEffectiveFramePathById),
             Z_ANSWER(ZImageFrameInfoListMgr, getEffectiveFrameUrlById),
             Z_ANSWER(ZImageFrameInfoListMgr, getEffectiveIconById),
             Z_ANSWER(ZImageFrameInfoListMgr, getEffectiveFlashById),
             Z_ANSWER(ZMedalMgr, getMedalNameById),
             Z_ANSWER(ZMedalMgr, getMedalImageUrlById),
             Z_ANSWER(ZMedalMgr, getMedalImagePathById),
             Z_ANSWER(ZMedalMgr, getMedalDynamicUrlById),
             Z_ANSWER(ZMedalMgr, getShouHuMedalImagePathById),
             Z_ANSWER(ZMedalMgr, getMedalJsonInfoById),
             Z_ANSWER(ZMedalMgr, getMedalInfoById),
             Z_ANSWER(ZImageCarInfoListMgr, getCarImageUrlById),
             Z_ANSWER(ZImageCarInfoListMgr, getCarImagePathById),
             Z_ANSWER(ZImageCarInfoListMgr, getCarAnimationUrlById),
             Z_ANSWER(ZImageCarInfoListMgr, getCarAnimationPathById),
             Z_ANSWER(ZUserStampMgr, getStampImageUrlById),
             Z_ANSWER(ZUserStampMgr, getStampImagePathById),
             Z_ANSWER(zFunStampMgr, getFunStampImageUrlById),
             Z_ANSWER(zFunStampMgr, getFunStampImagePathById),
             {u"level record"_s, Answers::of(level)},
             {u"isInPeriod"_s, Answers::of(isInPeriod)},
             {u"medals"_s, Answers::of(medals)},
             {u"medal"_s, Answers::of(medal)},
             {u"clear"_s, Answers::of(clear)},
             {u"startTime"_s, Answers::of(startTime)},
             {u"micAnimation"_s,
              Answers::of(&ZImageFrameInfoListMgr::getInfoById, &ZImageFrameInfo::micAnimation)},
             {u"price"_s, Answers::of(&ZImageCarInfoListMgr::getInfoById, &ZImageCarInfo::price)},
             {u"duration"_s, Answers::of(&ZUserStampMgr::getInfoById, &ZUserStampInfo::duration)},
             {u"activityId"_s,
              Answers::of(&zFunStampMgr::getInfoById, &zFunStampInfo::activityId)}})
            .check(lines.toArray());
    }
};

QTEST_GUILESS_MAIN(tst_decoration)

#include "tst_decoration.moc"
