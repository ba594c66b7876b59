#include "chat/ZQuickInputMessageMgr.h"

#include "datatable/DeclaredTable.h"

ZQuickInputMessageMgr& ZQuickInputMessageMgr::getInstance()
{
    static ZQuickInputMessageMgr instance;
    return instance;
}

const TableDeclaration& ZQuickInputMessageMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZQuickInputMessageMgr, ZQuickInputMessageInfo> table {
        {
            {Required, Text(), Z_FIELD(ZQuickInputMessageInfo, id)},
            {Required, Text(), Z_FIELD(ZQuickInputMessageInfo, item)},
        },
        Listed {&ZQuickInputMessageMgr::m_phrases},
        Logs {"QuickInputMessage加载完毕"},
        Afterwards {&ZQuickInputMessageMgr::sigUpdateFinished}};
    return table;
}

bool ZQuickInputMessageMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZQuickInputMessageMgr::clear()
{
    m_phrases.clear();
}

QVector<ZQuickInputMessageInfo>& ZQuickInputMessageMgr::getQuickInputMessages()
{
    return m_phrases;
}
