#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

/** A tier that a viewer can hold in an anchor's fans group; every field is the cell's text. */
struct zFansInfo
{
    QString id;
    QString name;
    QString diamond; ///< price in diamonds, decimal
    QString addTime;
    QString rewardCarId;
    QString rewardMedl;
    QString brocastId;
    QString sortValue; ///< display order within the category, decimal
    QString guardVal;
    QString category; ///< decimal
    QString categoryName;
    QString cancelDiamond;
};

/** The fans tiers of table FansConfigNew, by id. */
class ZGLOBAL_EXPORT ZFansConfigMgr : public QObject
{
    Q_OBJECT

public:
    static ZFansConfigMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    zFansInfo getInfoById(QString id);

    /**
     * The first tier in id order with this category and price, both compared as texts; a default
     * record when there is none.
     */
    zFansInfo getInfoByCategoryAndDiamond(int category, const QString& diamond);

    /**
     * The tiers of a category by ascending sortValue, one that is no number counting as 0. Tiers of
     * equal sortValue come in no particular order.
     */
    QList<zFansInfo> getListByCategory(int category);

    /**
     * Whether the record's price is written exactly as the highest price of its category. Prices
     * are ranked as numbers and compared as texts, so "0100" is not the highest where "100" is; a
     * category whose prices are all 0 or empty has no highest.
     */
    bool isHighestTierFans(const zFansInfo& info);

Q_SIGNALS:
    /** Never emitted here; there for programs that connect to it. */
    void sigUpdateFinished();

private:
    ZFansConfigMgr() = default;

    QMap<QString, zFansInfo> m_infos;
};
