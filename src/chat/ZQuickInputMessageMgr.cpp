#include "chat/ZQuickInputMessageMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZQuickInputMessageInfo>& columns()
{
    static const TableColumns<ZQuickInputMessageInfo> declared {
        {Required, "id", Cells::Text(), Z_FIELD(ZQuickInputMessageInfo, id)},
        {Required, "item", Cells::Text(), Z_FIELD(ZQuickInputMessageInfo, item)},
    };
    return declared;
}

} // namespace

ZQuickInputMessageMgr& ZQuickInputMessageMgr::getInstance()
{
    static ZQuickInputMessageMgr instance;
    return instance;
}

bool ZQuickInputMessageMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZQuickInputMessageInfo& info) { m_phrases.append(info); });
    qDebug().noquote() << QStringLiteral("QuickInputMessage加载完毕");
    Q_EMIT sigUpdateFinished();
    return true;
}

void ZQuickInputMessageMgr::clear()
{
    m_phrases.clear();
}

QVector<ZQuickInputMessageInfo>& ZQuickInputMessageMgr::getQuickInputMessages()
{
    return m_phrases;
}

TableDescription ZQuickInputMessageMgr::describeTable()
{
    return columns().describe(QString(), QStringLiteral("all are kept, in table order"),
                              [] { return getInstance().m_phrases; });
}
