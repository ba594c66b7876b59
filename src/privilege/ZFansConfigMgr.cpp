#include "privilege/ZFansConfigMgr.h"

#include "datatable/DeclaredTable.h"

#include <algorithm>

ZFansConfigMgr& ZFansConfigMgr::getInstance()
{
    static ZFansConfigMgr instance;
    return instance;
}

const TableDeclaration& ZFansConfigMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZFansConfigMgr, zFansInfo> table {
        {
            {Required, Text(), Z_FIELD(zFansInfo, id)},
            {Required, Text(), Z_FIELD(zFansInfo, name), TextUse::Name},
            {Required, Text(), Z_FIELD(zFansInfo, diamond)},
            {Required, Text(), Z_FIELD(zFansInfo, addTime)},
            {Required, Text(), Z_FIELD(zFansInfo, rewardCarId),
             RefersTo {EDataTable::CS_CarList, "id"}},
            {Required, Text(), Z_FIELD(zFansInfo, rewardMedl),
             RefersTo {EDataTable::CS_MedalList, "medalId"}},
            {Required, Text(), Z_FIELD(zFansInfo, brocastId)},
            {Required, Text(), Z_FIELD(zFansInfo, sortValue)},
            {Required, Text(), Z_FIELD(zFansInfo, guardVal)},
            {Required, Text(), Z_FIELD(zFansInfo, category)},
            {Required, Text(), Z_FIELD(zFansInfo, categoryName), TextUse::Name},
            {Required, Text(), Z_FIELD(zFansInfo, cancelDiamond)},
        },
        KeyedBy {&zFansInfo::id, &ZFansConfigMgr::m_infos},
        Logs {"FansConfig加载完毕", QtInfoMsg}};
    return table;
}

bool ZFansConfigMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
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
