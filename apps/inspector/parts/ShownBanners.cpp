#include "inspector/parts/ShownBanners.h"

#include "presentation/ZBannerMgr.h"

ShownBanners::ShownBanners(bool isNew, QObject* parent)
    : ZBannerModel(isNew, parent)
    , m_isNew(isNew)
{
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    m_wordsRole = addRole("words", [this](int row) { return words(row); });
    m_pathRole = addRole("shownPath", [=](int row) {
        return hasPicture(row) ? banners->getBannerImagePathById(id(row).toInt()) : QString();
    });
    m_addressRole = addRole("shownAddress", [=](int row) {
        return hasPicture(row) ? banners->getBannerImageUrlById(id(row).toInt()) : QString();
    });
}

bool ShownBanners::hasPicture(int row) const
{
    return ZBannerMgr::hasPicture(ZBannerMgr::getInstance()->getBannerMap().value(id(row).toInt()));
}

QString ShownBanners::words(int row) const
{
    const QString page = value(row, QStringLiteral("landingPage")).toString();
    const QString opens =
        ZBannerMgr::getInstance()->bannerIsByCef(page) ? tr("opens embedded") : tr("opens outside");
    const QString weight = value(row, QStringLiteral("weight")).toString();
    // Only one of the lists is in the order of weights.
    const QString order = m_isNew ? opens : tr("weight %1, %2").arg(weight, opens);
    return tr("%1. %2 (banner %3)")
               .arg(QString::number(row + 1), value(row, QStringLiteral("name")).toString(),
                    id(row))
        + u'\n' + order + u'\n' + page.trimmed();
}
