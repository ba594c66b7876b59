#include "presentation/ZPublicConfigMgr.h"

#include "datatable/DeclaredTable.h"

ZPublicConfigMgr& ZPublicConfigMgr::getInstance()
{
    static ZPublicConfigMgr instance;
    return instance;
}

const TableDeclaration& ZPublicConfigMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZPublicConfigMgr, ZPublicConfigInfo> table {
        {
            {Required, Text(), Z_FIELD(ZPublicConfigInfo, id)},
            {Required, Text(), Z_FIELD(ZPublicConfigInfo, value)},
            {Required, Text(), Z_FIELD(ZPublicConfigInfo, desc)},
        },
        KeyedBy {&ZPublicConfigInfo::id, &ZPublicConfigMgr::m_infos},
        Logs {"PublicConfig加载完毕"}};
    return table;
}

bool ZPublicConfigMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZPublicConfigMgr::clear()
{
    m_infos.clear();
}

const ZPublicConfigInfo ZPublicConfigMgr::getInfoByDefine(const EPublicConfitType& type)
{
    return getInfoById(QString::number(type));
}

ZPublicConfigInfo ZPublicConfigMgr::getInfoById(const QString& id)
{
    return m_infos.value(id);
}
