#include "privilege/ZFansConfigMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

#include <algorithm>

namespace {

const TableColumns<zFansInfo>& columns()
{
    static const TableColumns<zFansInfo> declared {
        {Required, "id", Cells::Text(), Z_FIELD(zFansInfo, id)},
        {Required, "name", Cells::Text(), Z_FIELD(zFansInfo, name)},
        {Required, "diamond", Cells::Text(), Z_FIELD(zFansInfo, diamond)},
        {Required, "addTime", Cells::Text(), Z_FIELD(zFansInfo, addTime)},
        {Required, "rewardCarId", Cells::Text(), Z_FIELD(zFansInfo, rewardCarId)},
        {Required, "rewardMedl", Cells::Text(), Z_FIELD(zFansInfo, rewardMedl)},
        {Required, "brocastId", Cells::Text(), Z_FIELD(zFansInfo, brocastId)},
        {Required, "sortValue", Cells::Text(), Z_FIELD(zFansInfo, sortValue)},
        {Required, "guardVal", Cells::Text(), Z_FIELD(zFansInfo, guardVal)},
        {Required, "category", Cells::Text(), Z_FIELD(zFansInfo, category)},
        {Required, "categoryName", Cells::Text(), Z_FIELD(zFansInfo, categoryName)},
        {Required, "cancelDiamond", Cells::Text(), Z_FIELD(zFansInfo, cancelDiamond)},
    };
    return declared;
}

} // namespace

ZFansConfigMgr& ZFansConfigMgr::getInstance()
{
    static ZFansConfigMgr instance;
    return instance;
}

bool ZFansConfigMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const zFansInfo& info) { m_infos.insert(info.id, info); });
    qInfo().noquote() << QStringLiteral("FansConfig加载完毕");
    return true;
}

void ZFansConfigMgr::clear()
{
    m_infos.clear();
}

zFansInfo ZFansConfigMgr::getInfoById(QString id)
{
    return m_infos.value(id);
}

zFansInfo ZFansConfigMgr::getInfoByCategoryAndDiamond(int category, const QString& diamond)
{
    const QString wanted = QString::number(category);
    for (const zFansInfo& info : qAsConst(m_infos)) {
        if (info.category == wanted && info.diamond == diamond)
            return info;
    }
    return {};
}

QList<zFansInfo> ZFansConfigMgr::getListByCategory(int category)
{
    const QString wanted = QString::number(category);
    QList<zFansInfo> tiers;
    for (const zFansInfo& info : qAsConst(m_infos)) {
        if (info.category == wanted)
            tiers.append(info);
    }
    std::sort(tiers.begin(), tiers.end(), [](const zFansInfo& left, const zFansInfo& right) {
        return left.sortValue.toInt() < right.sortValue.toInt();
    });
    return tiers;
}

bool ZFansConfigMgr::isHighestTierFans(const zFansInfo& info)
{
    if (info.diamond.isEmpty())
        return false;
    QString highest;
    for (const zFansInfo& tier : getListByCategory(info.category.toInt())) {
        if (tier.diamond.toLongLong() > highest.toLongLong())
            highest = tier.diamond;
    }
    return !highest.isEmpty() && info.diamond == highest;
}

TableDescription ZFansConfigMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_infos; });
}
