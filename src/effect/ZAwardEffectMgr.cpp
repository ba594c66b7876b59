#include "effect/ZAwardEffectMgr.h"

#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"

namespace {

constexpr char iconFolder[] = "/app/images/activity/effect/";

} // namespace

ZAwardEffectMgr& ZAwardEffectMgr::getInstance()
{
    static ZAwardEffectMgr instance;
    return instance;
}

const TableDeclaration& ZAwardEffectMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZAwardEffectMgr, ZAwardEffectInfo> table {
        {
            {Required, IntegerAsText(), Z_FIELD(ZAwardEffectInfo, id)},
            {Required, Integer(), Z_FIELD(ZAwardEffectInfo, sort)},
            {Required, Text(), Z_FIELD(ZAwardEffectInfo, name), TextUse::Name},
            {Required, Text(), Z_FIELD(ZAwardEffectInfo, flash),
             RefersTo {EDataTable::FlashConfig, "flashName"}},
            {Required, Text(), Z_FIELD(ZAwardEffectInfo, icon),
             FileOn {"ImageResServer", iconFolder}},
            {Required, Text(), Z_FIELD(ZAwardEffectInfo, descs), TextUse::Words},
        },
        KeyedBy {&ZAwardEffectInfo::id, &ZAwardEffectMgr::m_infos},
        Logs {"CS_PlatAwardEffect加载完毕"}};
    return table;
}

bool ZAwardEffectMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZAwardEffectMgr::clear()
{
    m_infos.clear();
}

ZAwardEffectInfo ZAwardEffectMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

QString ZAwardEffectMgr::getIconUrlById(const QString& id)
{
    const auto found = m_infos.constFind(id);
    if (found == m_infos.constEnd())
        return {};
    return ResourceServer::imageRes() + QLatin1String(iconFolder) + found->icon;
}
