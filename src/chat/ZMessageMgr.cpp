#include "chat/ZMessageMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZMessageInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZMessageInfo> declared {
        {Required, "id", IntegerAsText(), Z_FIELD(ZMessageInfo, id)},
        {Required, "tabType", Integer(), Z_FIELD(ZMessageInfo, tabType)},
        {Required, "handleType", Integer(), Z_FIELD(ZMessageInfo, handleType)},
        {Required, "randomId", Text(), Z_FIELD(ZMessageInfo, randomId)},
        {Required, "zh_cn", Text(), Z_FIELD(ZMessageInfo, zh_cn)},
        {Required, "opt", Text(), Z_FIELD(ZMessageInfo, opt)},
        {Optional, "jumpUrl", Text(), Z_FIELD(ZMessageInfo, jumpUrl)},
    };
    return declared;
}

} // namespace

ZMessageMgr& ZMessageMgr::getInstance()
{
    static ZMessageMgr instance;
    return instance;
}

bool ZMessageMgr::loadMessageListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZMessageInfo& info) {
        m_messageMap.insert(info.id, info);
        m_messageList.append(info);
    });
    qDebug().noquote() << QStringLiteral("Message加载完毕");
    return true;
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

TableDescription ZMessageMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"),
                              QStringLiteral("the map holds the later row, the list both"),
                              [] { return getInstance().m_messageList; });
}
