#include "demo/Demo.h"
#include "demo/Steps.h"

#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "decoration/ZMedalMgr.h"
#include "privilege/ZFansConfigMgr.h"
#include "privilege/ZNobilityListMgr.h"

#include <QJsonObject>

void Steps::fansTiers(Demo& demo)
{
    constexpr int category = 2;
    ZFansConfigMgr& fans = ZFansConfigMgr::getInstance();
    TextTable table({u"tier"_s, u"name"_s, u">diamonds"_s, QString()});
    int highest = 0;
    int lastSort = 0;
    bool sorted = true;
    const QList<zFansInfo> tiers = fans.getListByCategory(category);
    for (const zFansInfo& tier : tiers) {
        const bool isHighest = fans.isHighestTierFans(tier);
        highest += isHighest ? 1 : 0;
        sorted = sorted && tier.sortValue.toInt() >= lastSort;
        lastSort = tier.sortValue.toInt();
        table.add({tier.id, tier.name, tier.diamond, isHighest ? u"<- highest"_s : QString()});
    }
    demo.show(table);
    demo.expect(tiers.size() > 1 && sorted, u"%1 tiers in their order"_s.arg(tiers.size()));
    demo.expect(highest == 1, u"one of them is the highest"_s);
}

void Steps::levels(Demo& demo)
{
    constexpr int ladderTop = 190;
    ZFunLevelMgr* levels = ZFunLevelMgr::getInstance();
    TextTable table({u">level"_s, u"title"_s, u"in the table"_s, u"badge"_s});
    bool asMeant = true;
    for (const int level : {1, 25, 60, 101, 150, 190, 195}) {
        const QString badge = levels->getLocalFunLevelImagePathById(level);
        const QString title = levels->getFunLevelNameById(level);
        asMeant = asMeant && !title.isEmpty()
            && badge.startsWith(u"ui//funlevel/new/"_s) == (level <= ladderTop);
        table.add({QString::number(level), title, levels->getLevelNameByLevel(level, true),
                   demo.shortened(badge)});
    }
    demo.show(table);
    demo.expect(
        asMeant,
        u"up to %1 the badge comes with the client, above from the server"_s.arg(ladderTop));
    const int top = levels->getMaxLevel();
    demo.expect(levels->getLevelNameByLevel(top + 60, false)
                    == levels->getLevelNameByLevel(top, false),
                u"beyond level %1 everybody is %2"_s.arg(QString::number(top),
                                                         levels->getLevelNameByLevel(top, false)));
}

void Steps::headFrames(Demo& demo)
{
    constexpr int id = 103;
    ZImageFrameInfoListMgr* frames = ZImageFrameInfoListMgr::getInstance();
    demo.say(u"Frame %1, %2, changes with the hour:"_s.arg(QString::number(id),
                                                           frames->getInfoById(id).name));
    TextTable table({u"at"_s, u"since"_s, u"picture"_s, u"animation"_s});
    const auto add = [&](const QString& when, const QTime& at) {
        table.add({when, frames->getPeriodStartTimeAt(id, at).toString(u"HH:mm"_s),
                   frames->getEffectiveIconAt(id, at), frames->getEffectiveFlashAt(id, at)});
    };
    const QTime night(2, 30);
    const QTime noon(12, 0);
    const QTime now = QTime::currentTime();
    add(u"02:30"_s, night);
    add(u"12:00"_s, noon);
    add(u"now"_s, now);
    demo.show(table);
    demo.expect(frames->getEffectiveIconAt(id, night) == u"night.png"_s
                    && frames->getPeriodStartTimeAt(id, night) == QTime(22, 0),
                u"the night began the evening before"_s);
    demo.expect(frames->getEffectiveIconAt(id, noon) == u"day.png"_s, u"at noon it is day"_s);
    demo.expect(frames->getPeriodStartTimeAt(id, now).isValid(), u"one is in force now"_s);
}

void Steps::medal(Demo& demo)
{
    const QString id = u"14"_s;
    ZMedalMgr* medals = ZMedalMgr::getInstance();
    const QString json = medals->getMedalInfoById(id);
    QString line;
    const QStringList members = json.split(QLatin1Char(','));
    for (const QString& member : members) {
        constexpr int width = 88;
        const QString next = member + (&member == &members.last() ? u""_s : u","_s);
        if (Terminal::columns(line + next) > width) {
            demo.say(line);
            line.clear();
        }
        line += next;
    }
    demo.say(line);
    demo.expect(medals->getMedalJsonInfoById(id).value(u"keepTime"_s).toString() == u"90天"_s,
                u"medal %1 %2, with a column that its record does not know"_s.arg(
                    id, medals->getMedalNameById(id)));
}

void Steps::nobility(Demo& demo)
{
    ZNobilityListMgr* nobility = ZNobilityListMgr::getInstance();
    TextTable table({u">rank"_s, u"name"_s, u">price"_s, u">returned"_s, u">renewal"_s, u">days"_s,
                     u"own car"_s});
    const QVector<int> ranks = nobility->getListNobleId();
    for (const int rank : ranks) {
        const ZNobleConsumeInfo info = nobility->getNobleConsumeInfoById(rank);
        const stNobleConfig config = nobility->getNobleConfigInfoById(QString::number(rank));
        table.add({QString::number(rank), info.nobleName, info.blackBean, info.returnDiamond,
                   info.renewBlackBean, QString::number(info.time),
                   config.exclusiveCar + (config.customCar ? u"*"_s : QString())});
    }
    demo.show(table);
    demo.expect(ranks.size() == 7, u"%1 ranks"_s.arg(ranks.size()));
    const QVector<QPair<QString, bool>> cars {{u"noble_knight"_s, true},
                                              {u"NOBLE_DUKE_red"_s, true},
                                              {u"noble_knight_2"_s, false},
                                              {u"car_taxi"_s, false}};
    for (const auto& car : cars) {
        const bool exclusive = nobility->isExclusiveCar(car.first);
        demo.expect(exclusive == car.second,
                    u"%1 belongs to a rank: %2"_s.arg(car.first, Readable::yesNo(exclusive)));
    }
}
