#include "gift/ZGiftLabelMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZGiftLabelInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZGiftLabelInfo> declared {
        {Required, "id", Text(), Z_FIELD(ZGiftLabelInfo, id)},
        {Required, "alterDateTime", Text(), Z_FIELD(ZGiftLabelInfo, alterDateTime)},
        {Required, "giftLabelName", Text(), Z_FIELD(ZGiftLabelInfo, giftLabelName)},
        {Required, "startColor", Text(), Z_FIELD(ZGiftLabelInfo, startColor)},
        {Required, "endColor", Text(), Z_FIELD(ZGiftLabelInfo, endColor)},
    };
    return declared;
}

} // namespace

ZGiftLabelMgr& ZGiftLabelMgr::getInstance()
{
    static ZGiftLabelMgr instance;
    return instance;
}

bool ZGiftLabelMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZGiftLabelInfo& info) { m_labels.insert(info.id, info); });
    qDebug().noquote() << QStringLiteral("礼物标签表加载完毕");
    Q_EMIT sigUpdate();
    return true;
}

void ZGiftLabelMgr::clear()
{
    m_labels.clear();
}

ZGiftLabelInfo ZGiftLabelMgr::getInfoById(QString id)
{
    return m_labels.value(id);
}

const QMap<QString, ZGiftLabelInfo>& ZGiftLabelMgr::getGiftLabelMap()
{
    return m_labels;
}

TableDescription ZGiftLabelMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_labels; });
}
