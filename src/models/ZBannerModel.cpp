#include "models/ZBannerModel.h"

#include "presentation/ZBannerMgr.h"

ZBannerModel::ZBannerModel(bool isNew, QObject* parent)
    : ZRecordModel(isNew ? QStringLiteral("CS_BannerConfigNew") : QStringLiteral("CS_BannerConfig"),
                   parent)
{
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    const auto id = [this](int row) { return value(row, QStringLiteral("id")).toInt(); };
    addRole("imageUrl", [=](int row) { return banners->getBannerImageUrlById(id(row)); });
    m_imagePathRole =
        addRole("imagePath", [=](int row) { return banners->getBannerImagePathById(id(row)); });
    addRole("opensEmbedded", [=](int row) {
        return banners->bannerIsByCef(value(row, QStringLiteral("landingPage")).toString());
    });
}
