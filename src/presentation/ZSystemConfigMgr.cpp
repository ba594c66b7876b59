#include "presentation/ZSystemConfigMgr.h"

#include "datatable/DeclaredTable.h"

ZSystemConfigMgr& ZSystemConfigMgr::getInstance()
{
    static ZSystemConfigMgr instance;
    return instance;
}

const TableDeclaration& ZSystemConfigMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZSystemConfigMgr, ZSystemConfigInfo> table {
        {
            {Required, Text(), Z_FIELD(ZSystemConfigInfo, id)},
            {Required, Text(), Z_FIELD(ZSystemConfigInfo, configKey)},
            {Required, Text(), Z_FIELD(ZSystemConfigInfo, configValue)},
            {Required, Text(), Z_FIELD(ZSystemConfigInfo, desc)},
            {Required, Text(), Z_FIELD(ZSystemConfigInfo, params)},
        },
        KeyedBy {&ZSystemConfigInfo::id, &ZSystemConfigMgr::m_infos},
        Logs {"SystemConfig加载完毕", QtInfoMsg},
        Afterwards {&ZSystemConfigMgr::sigChangeSystemConfigData}};
    return table;
}

bool ZSystemConfigMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZSystemConfigMgr::clear()
{
    m_infos.clear();
}

ZSystemConfigInfo ZSystemConfigMgr::getInfoByDefine(E_SysConfigDefine define)
{
    return getInfoById(QString::number(define));
}

ZSystemConfigInfo ZSystemConfigMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

bool ZSystemConfigMgr::isConfigData(QString id)
{
    return m_infos.contains(id);
}
