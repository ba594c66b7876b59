#include "chat/ZMessageMgr.h"

#include "datatable/DeclaredTable.h"

ZMessageMgr& ZMessageMgr::getInstance()
{
    static ZMessageMgr instance;
    return instance;
}

const TableDeclaration& ZMessageMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZMessageMgr, ZMessageInfo> table {
        {
            {Required, IntegerAsText(), Z_FIELD(ZMessageInfo, id)},
            {Required, Integer(), Z_FIELD(ZMessageInfo, tabType)},
            {Required, Integer(), Z_FIELD(ZMessageInfo, handleType)},
            {Required, Text(), Z_FIELD(ZMessageInfo, randomId)},
            {Required, Text(), Z_FIELD(ZMessageInfo, zh_cn)},
            {Required, Text(), Z_FIELD(ZMessageInfo, opt)},
            {Optional, Text(), Z_FIELD(ZMessageInfo, jumpUrl), TextUse::Address},
        },
        KeyedBy {&ZMessageInfo::id, &ZMessageMgr::m_messageMap},
        Listed {&ZMessageMgr::m_messageList},
        Logs {"Message加载完毕"}};
    return table;
}

bool ZMessageMgr::loadMessageListTable(const QString& path)
{
    return declaration().load(path);
}

void ZMessageMgr::clear()
{
    m_messageMap.clear();
    m_messageList.clear();
}

const QHash<QString, ZMessageInfo>& ZMessageMgr::getMessageMap()
{
    return m_messageMap;
}

const QVector<ZMessageInfo>& ZMessageMgr::getMessagelist() const
{
    return m_messageList;
}

ZMessageInfo ZMessageMgr::getMessageInfoById(QString id)
{
    return m_messageMap.value(id);
}

int ZMessageMgr::getMessageTabType(QString id)
{
    return getMessageInfoById(id).tabType;
}
