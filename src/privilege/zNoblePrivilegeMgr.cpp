#include "privilege/zNoblePrivilegeMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"

#include <QDebug>

#include <algorithm>

namespace {

const TableColumns<zNoblePrivilegeInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<zNoblePrivilegeInfo> declared {
        {Required, "id", Text(), Z_FIELD(zNoblePrivilegeInfo, id)},
        {Required, "nobleId", Text(), Z_FIELD(zNoblePrivilegeInfo, nobleId)},
        {Required, "name", Text(), Z_FIELD(zNoblePrivilegeInfo, name)},
        {Optional, "description", Text(), Z_FIELD(zNoblePrivilegeInfo, description)},
        {Optional, "icon", Text(), Z_FIELD(zNoblePrivilegeInfo, icon)},
        {Optional, "sortValue", Integer(), Z_FIELD(zNoblePrivilegeInfo, sortValue)},
        {Optional, "isOpen", Flag(), Z_FIELD(zNoblePrivilegeInfo, isOpen)},
    };
    return declared;
}

} // namespace

zNoblePrivilegeMgr& zNoblePrivilegeMgr::getInstance()
{
    static zNoblePrivilegeMgr instance;
    return instance;
}

bool zNoblePrivilegeMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const zNoblePrivilegeInfo& info) {
        m_infos.insert(info.id, info);
        m_list.append(info);
    });
    std::stable_sort(m_list.begin(), m_list.end(),
                     [](const zNoblePrivilegeInfo& left, const zNoblePrivilegeInfo& right) {
                         return left.sortValue < right.sortValue;
                     });
    qDebug().noquote() << QStringLiteral("NoblePrivilegeConfig加载完毕");
    return true;
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
    return QStringLiteral("%1/app/logo/nobleprivilege/%2?%3")
        .arg(ResourceServer::images(), icon, QString::number(version));
}

QString zNoblePrivilegeMgr::getIconPathById(const QString& id)
{
    return CacheNames::imagePath(getIconUrlById(id));
}

TableDescription zNoblePrivilegeMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"),
                              QStringLiteral("the map holds the later row, the list both"),
                              [] { return getInstance().m_list; });
}
