#include "demo/Demo.h"
#include "demo/Steps.h"

#include "command/Banners.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Wait.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/ZPCSkinMgr.h"
#include "presentation/ZPublicConfigMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "presentation/zH5WebConfigMgr.h"

#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int patience = 10 * 1000; // milliseconds

/** Where an address opens, told and checked. */
void judge(Demo& demo, const QString& address, bool embedded)
{
    const Banners::Verdict verdict = Banners::verdictOn(address);
    demo.say(address);
    QString told = Banners::told(verdict);
    told.replace(address, u"this very page"_s);
    demo.expect(verdict.embedded == embedded, told);
}

} // namespace

void Steps::banners(Demo& demo)
{
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    const auto hasPicture = [banners](const ZBannerInfo& banner) {
        return banner.bannerType > 2
            || QFileInfo(banners->getBannerImagePathById(banner.id)).size() > 0;
    };
    const QVector<ZBannerInfo> list = banners->getList(false);
    // The pictures have been under way since the tables were loaded.
    const bool fetched =
        waitUntil([&] { return std::all_of(list.begin(), list.end(), hasPicture); }, patience);
    demo.say(u"By weight, smaller first, equals in table order; one is for phones only:"_s);
    demo.show(Banners::asTable(false));
    demo.say(u"Those that fold and unfold, in table order:"_s);
    demo.show(Banners::asTable(true));
    const bool sorted = std::is_sorted(list.begin(), list.end(),
                                       [](const ZBannerInfo& left, const ZBannerInfo& right) {
                                           return left.weight < right.weight;
                                       });
    demo.expect(sorted && list.size() == 5, u"%1 banners in their order"_s.arg(list.size()));
    demo.expect(fetched, u"every picture has been fetched"_s);
}

void Steps::pages(Demo& demo)
{
    judge(demo, u"https://m.example.com/activity/annual?from=banner&room=1"_s, true);
    judge(demo, u"https://h5.example.com/large/gala?full=1"_s, true);
    judge(demo, u"https://h5.example.com/large/plain"_s, false);
    TextTable table({u">id"_s, u"secondary banner"_s, u"embedded"_s});
    ZOtherBannerMgr* others = ZOtherBannerMgr::getInstance();
    const QVector<ZOtherBannerInfo> list = others->getList();
    for (const ZOtherBannerInfo& other : list)
        table.add({QString::number(other.id), other.targetObject.trimmed(),
                   Readable::yesNo(others->otherBannerIsByCef(other.targetObject))});
    demo.show(table);
    demo.expect(others->otherBannerIsByCef(u"https://h5.example.com/hall/dance"_s)
                    && !others->otherBannerIsByCef(u"https://h5.example.com/hall/music"_s),
                u"%1 secondary banners"_s.arg(list.size()));
}

void Steps::skin(Demo& demo)
{
    ZPCSkinMgr& skins = ZPCSkinMgr::getInstance();
    bool announced = false;
    QObject context;
    QObject::connect(&skins, &ZPCSkinMgr::sigDownloadImages, &context,
                     [&announced] { announced = true; });
    skins.loadPCSkinImages();
    waitUntil([&announced] { return announced; }, patience);
    for (const auto place : {ZPCSkinMgr::E_SkinAll, ZPCSkinMgr::E_SkinTop}) {
        const QString path = skins.getSkinPath(place);
        demo.say(demo.shortened(skins.getSkinUrl(place)));
        demo.expect(QFileInfo(path).size() > 0, u"is "_s + path);
    }
    demo.expect(announced, u"a signal tells that both are there"_s);
}

void Steps::webPages(Demo& demo)
{
    zH5WebConfigMgr& pages = zH5WebConfigMgr::getInstance();
    TextTable table({u"page"_s, u"address"_s});
    const auto add = [&](const QString& title, const QString& address) {
        table.add({title, demo.shortened(address)});
    };
    const QString recharge = pages.getURLByDefine(E_H5Recharge);
    const QString noble = pages.getURLByDefine(E_H5NobleCenter);
    const QString activity = pages.getURLByDefine(E_H5ActivityCenter);
    const QString help = pages.getAppURLByDefine(E_H5HelpCenter, u"H5Server"_s);
    add(u"E_H5Recharge"_s, recharge);
    add(u"E_H5NobleCenter"_s, noble);
    add(u"E_H5FansGroup"_s, pages.getURLByDefine(E_H5FansGroup));
    add(u"E_H5ActivityCenter"_s, activity);
    add(u"E_H5HelpCenter, by key"_s, help);
    demo.show(table);
    demo.expect(recharge == demo.server().baseUrl() + u"/web/pc/recharge.html?version=27"_s
                    && noble.endsWith(u"tab=1&version=27"_s),
                u"each carries the version of the table"_s);
    demo.expect(activity == u"https://h5.example.com/activity?version=27"_s
                    && help == u"http://help.example.com/pc?version=27"_s,
                u"a full address stands for itself"_s);
}

void Steps::settings(Demo& demo)
{
    ZPublicConfigMgr& settings = ZPublicConfigMgr::getInstance();
    ZSystemConfigMgr& system = ZSystemConfigMgr::getInstance();
    TextTable table({u"define"_s, u"value"_s, u"meaning"_s});
    const auto add = [&table](const QString& define, const QString& value, const QString& meaning) {
        table.add({define, value, meaning});
    };
    const ZPublicConfigInfo hotline =
        settings.getInfoByDefine(ZPublicConfigMgr::E_PublicServiceHotline);
    const ZPublicConfigInfo rate =
        settings.getInfoByDefine(ZPublicConfigMgr::E_PublicDiamondsPerYuan);
    const ZSystemConfigInfo filter = system.getInfoByDefine(E_SysChatFilterEnable);
    const ZSystemConfigInfo sizes = system.getInfoByDefine(E_SysVideoSizes);
    add(u"E_PublicServiceHotline"_s, hotline.value, hotline.desc);
    add(u"E_PublicDiamondsPerYuan"_s, rate.value, rate.desc);
    add(u"E_SysChatFilterEnable"_s, filter.configValue, filter.desc);
    add(u"E_SysVideoSizes"_s, sizes.configValue, u"%1, of %2"_s.arg(sizes.desc, sizes.params));
    demo.show(table);
    demo.expect(hotline.value == u"400-000-0000"_s && rate.value == u"100"_s,
                u"public settings by their define"_s);
    demo.expect(filter.configValue == u"1"_s && sizes.configKey == u"videoSizes"_s
                    && !system.isConfigData(u"4"_s),
                u"switches and values of the system by theirs"_s);
}
