#pragma once

#include "models/ZRecordModel.h"

/**
 * The banners of CS_BannerConfig by ascending weight, or those of CS_BannerConfigNew in table
 * order.
 *
 * Roles beside the columns: "imageUrl" and "imagePath" of the picture, and "opensEmbedded", whether
 * the embedded browser opens the landing page.
 */
class ZGLOBALMODELS_EXPORT ZBannerModel : public ZRecordModel
{
    Q_OBJECT

public:
    explicit ZBannerModel(bool isNew, QObject* parent = nullptr);

    int imagePathRole() const { return m_imagePathRole; }

private:
    int m_imagePathRole;
};
