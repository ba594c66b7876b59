#include "demo/Demo.h"
#include "demo/Steps.h"

#include "command/Flashes.h"
#include "console/Literals.h"
#include "console/Wait.h"
#include "effect/ZActivityAwardEffectMgr.h"
#include "effect/ZAwardEffectMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "effect/ZRecreationMgr.h"

#include <QFile>

void Steps::effects(Demo& demo)
{
    ZRecreationMgr& recreation = ZRecreationMgr::getInstance();
    TextTable table({u"effect"_s, u"name"_s, u"animation folder"_s, u"animation address"_s});
    const QStringList magic = recreation.getRecreationIdByTypeKey(E_RecreationMagic);
    for (const QString& id : magic)
        table.add({id, recreation.getRecreationInfoById(id).name,
                   recreation.getRecreationAnimationPathById(id),
                   demo.shortened(recreation.getRecreationAnimationUrlById(id))});
    demo.show(table);
    demo.expect(magic == QStringList {u"M1"_s, u"M2"_s, u"M3"_s},
                u"the magic among the recreation effects, beside %1 games and %2 wishes"_s
                    .arg(recreation.getRecreationIdByTypeKey(E_RecreationGame).size())
                    .arg(recreation.getRecreationIdByTypeKey(E_RecreationWish).size()));

    ZAwardEffectMgr& awards = ZAwardEffectMgr::getInstance();
    const ZAwardEffectInfo award = awards.getInfoById(u"1"_s);
    demo.expect(award.flash == u"level_up"_s,
                u"award %1 plays %2, icon %3"_s.arg(
                    award.name, award.flash, demo.shortened(awards.getIconUrlById(award.id))));
    const ZActivityAwardEffectInfo activity =
        ZActivityAwardEffectMgr::getInstance().getInfoById(u"A2"_s);
    demo.expect(activity.availableTime == 2 * 24 * 60 * 60,
                u"award %1 of activity %2 is shown for %3 s"_s.arg(
                    activity.name, activity.activityId, QString::number(activity.availableTime)));
}

void Steps::flashes(Demo& demo)
{
    int announced = 0;
    QObject context;
    QObject::connect(&ZFlashConfigMgr::getInstance(), &ZFlashConfigMgr::sigDownloadFlash, &context,
                     [&announced] { ++announced; });
    const auto first = settled(demo.client().fetchFlashes());
    demo.say(u"loadFlash() downloads what is missing and unpacks it on the thread pool:"_s);
    demo.show(Flashes::asTable());
    demo.expect(first.value.downloads == 4 && announced == 0 && first.value.failures.isEmpty(),
                u"%1 animations downloaded and unpacked"_s.arg(first.value.downloads));
    const auto second = settled(demo.client().fetchFlashes());
    demo.expect(announced == 1 && second.value.downloads == 0,
                u"a second pass finds every one present and says so"_s);
}
