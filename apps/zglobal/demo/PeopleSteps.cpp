#include "demo/Demo.h"
#include "demo/Steps.h"

#include "Literals.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "privilege/ZFansConfigMgr.h"

#include <QtGlobal>

void Steps::welcome(Demo& demo)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED // the generator that the phrases are drawn with
        qsrand(2026);
    QT_WARNING_POP
    ZGroupWelcomelMgr* phrases = ZGroupWelcomelMgr::getInstance();
    const QString phrase = phrases->getRandWelcome();
    demo.say(u"“%1”"_s.arg(phrase));
    demo.expect(phrases->getWelcomeList().contains(phrase),
                u"drawn from %1 phrases"_s.arg(phrases->getWelcomeList().size()));
}

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
