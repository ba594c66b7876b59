#include "privilege/zNoblePrivilegeMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"

#include <algorithm>

namespace {

constexpr char iconFolder[] = "/app/logo/nobleprivilege/";

} // namespace

zNoblePrivilegeMgr& zNoblePrivilegeMgr::getInstance()
{
    static zNoblePrivilegeMgr instance;
    return instance;
}

const TableDeclaration& zNoblePrivilegeMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<zNoblePrivilegeMgr, zNoblePrivilegeInfo> table {
        {
            {Required, Text(), Z_FIELD(zNoblePrivilegeInfo, id)},
            {Required, Text(), Z_FIELD(zNoblePrivilegeInfo, nobleId),
             RefersTo {EDataTable::NobleConsume, "nobleId"}},
            {Required, Text(), Z_FIELD(zNoblePrivilegeInfo, name), TextUse::Name},
            {Optional, Text(), Z_FIELD(zNoblePrivilegeInfo, description), TextUse::Words},
            {Optional, Text(), Z_FIELD(zNoblePrivilegeInfo, icon),
             FileOn {"ImageResServer", iconFolder}},
            {Optional, Integer(), Z_FIELD(zNoblePrivilegeInfo, sortValue)},
            {Optional, Flag(), Z_FIELD(zNoblePrivilegeInfo, isOpen)},
        },
        KeyedBy {&zNoblePrivilegeInfo::id, &zNoblePrivilegeMgr::m_infos},
        Listed {&zNoblePrivilegeMgr::m_list},
        Afterwards {&zNoblePrivilegeMgr::sortList},
        Logs {"NoblePrivilegeConfig加载完毕"}};
    return table;
}

bool zNoblePrivilegeMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void zNoblePrivilegeMgr::clear()
{
    m_infos.clear();
    m_list.clear();
}

zNoblePrivilegeInfo zNoblePrivilegeMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

const QVector<zNoblePrivilegeInfo>& zNoblePrivilegeMgr::getList()
{
    return m_list;
}

QString zNoblePrivilegeMgr::getIconUrlById(const QString& id)
{
    const QString icon = getInfoById(id).icon;
    if (icon.isEmpty())
        return {};
    const int version =
        ZDataTableMgr::getInstance()->getTableVersion(EDataTable::NoblePrivilegeConfig);
    return ResourceServer::versionedImage(iconFolder, icon, version);
}

QString zNoblePrivilegeMgr::getIconPathById(const QString& id)
{
    return CacheNames::imagePath(getIconUrlById(id));
}

void zNoblePrivilegeMgr::sortList()
{
    std::stable_sort(m_list.begin(), m_list.end(),
                     [](const zNoblePrivilegeInfo& left, const zNoblePrivilegeInfo& right) {
                         return left.sortValue < right.sortValue;
                     });
}
