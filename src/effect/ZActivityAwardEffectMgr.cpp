#include "effect/ZActivityAwardEffectMgr.h"

#include "datatable/DeclaredTable.h"

ZActivityAwardEffectMgr& ZActivityAwardEffectMgr::getInstance()
{
    static ZActivityAwardEffectMgr instance;
    return instance;
}

const TableDeclaration& ZActivityAwardEffectMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZActivityAwardEffectMgr, ZActivityAwardEffectInfo> table {
        {
            {Required, Text(), Z_FIELD(ZActivityAwardEffectInfo, id)},
            {Required, Text(), Z_FIELD(ZActivityAwardEffectInfo, rankType)},
            {Required, Text(), Z_FIELD(ZActivityAwardEffectInfo, effectId),
             RefersTo {EDataTable::CS_PlatAwardEffect, "id"}},
            {Required, Text(), Z_FIELD(ZActivityAwardEffectInfo, name), TextUse::Name},
            {Required, Text(), Z_FIELD(ZActivityAwardEffectInfo, effectIcon)},
            {Required, Integer(), Z_FIELD(ZActivityAwardEffectInfo, availableTime)},
            {Required, Integer(), Z_FIELD(ZActivityAwardEffectInfo, availableGapTime)},
            {Required, Text(), Z_FIELD(ZActivityAwardEffectInfo, activityId)},
            {Required, "remark", "never read"},
        },
        Beforehand {&ZActivityAwardEffectMgr::clear},
        KeyedBy {&ZActivityAwardEffectInfo::id, &ZActivityAwardEffectMgr::m_infos},
        Logs {"ActivityAwardEffect加载完毕"}};
    return table;
}

bool ZActivityAwardEffectMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZActivityAwardEffectMgr::clear()
{
    m_infos.clear();
}

ZActivityAwardEffectInfo ZActivityAwardEffectMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}
