#include "command/Banners.h"

#include "console/Literals.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "why/Subjects.h"

#include <QFile>
#include <QJsonObject>

#include <algorithm>

namespace {

QString pictureOf(const ZBannerInfo& banner)
{
    const QString path = ZBannerMgr::getInstance()->getBannerImagePathById(banner.id);
    return QFile::exists(path) ? path : QString();
}

/** One that the banner does not have is no picture that has not come in. */
QString pictureState(const ZBannerInfo& banner)
{
    if (!ZBannerMgr::hasPicture(banner) || banner.bannerContent.isEmpty())
        return u"none"_s;
    return pictureOf(banner).isEmpty() ? u"missing"_s : u"there"_s;
}

bool isListed(const QString& page)
{
    for (const bool isNew : {false, true}) {
        const QVector<ZBannerInfo>& list = ZBannerMgr::getInstance()->getList(isNew);
        const bool found = std::any_of(list.begin(), list.end(), [&page](const ZBannerInfo& info) {
            return info.isCefOpen > 0 && info.landingPage.trimmed() == page.trimmed();
        });
        if (found)
            return true;
    }
    return false;
}

} // namespace

QString Banners::loadFault(bool isNew)
{
    return Why::loadFault(Why::statusOf(isNew ? u"CS_BannerConfigNew"_s : u"CS_BannerConfig"_s));
}

TextTable Banners::asTable(bool isNew)
{
    TextTable table(
        {u">id"_s, isNew ? u""_s : u">weight"_s, u"name"_s, u"picture"_s, u"opens"_s, u"page"_s});
    const QVector<ZBannerInfo>& list = ZBannerMgr::getInstance()->getList(isNew);
    for (const ZBannerInfo& banner : list) {
        const bool embedded = ZBannerMgr::getInstance()->bannerIsByCef(banner.landingPage);
        // Only one of the lists is in the order of weights.
        const QString weight = isNew ? QString() : QString::number(banner.weight);
        table.add({QString::number(banner.id), weight, banner.name, pictureState(banner),
                   embedded ? u"embedded"_s : u"outside"_s, banner.landingPage.trimmed()});
    }
    return table;
}

QJsonArray Banners::asJson(bool isNew)
{
    QJsonArray array;
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    const QVector<ZBannerInfo>& list = banners->getList(isNew);
    for (const ZBannerInfo& banner : list)
        array.append(QJsonObject {{u"id"_s, banner.id},
                                  {u"weight"_s, banner.weight},
                                  {u"name"_s, banner.name},
                                  {u"imageUrl"_s, banners->getBannerImageUrlById(banner.id)},
                                  {u"picture"_s, pictureOf(banner)},
                                  {u"pictureState"_s, pictureState(banner)},
                                  {u"landingPage"_s, banner.landingPage},
                                  {u"embedded"_s, banners->bannerIsByCef(banner.landingPage)}});
    return array;
}

Banners::Verdict Banners::verdictOn(const QString& address)
{
    QString page = ZBannerMgr::getInstance()->bannerCefPage(address);
    if (!page.isEmpty()) {
        const QString lister =
            isListed(page) ? u"a banner"_s : u"the web service or a banner for other clients"_s;
        return {true, page, lister};
    }
    page = ZOtherBannerMgr::getInstance()->otherBannerCefPage(address);
    if (!page.isEmpty())
        return {true, page, u"a secondary banner"_s};
    return {};
}

QString Banners::told(const Verdict& verdict)
{
    if (!verdict.embedded)
        return u"outside: no listed page has its path in this address"_s;
    return u"embedded: listed by %1 as %2"_s.arg(verdict.listedBy, verdict.page.trimmed());
}
