#include "gift/ZGiftLabelMgr.h"

#include "datatable/DeclaredTable.h"

ZGiftLabelMgr& ZGiftLabelMgr::getInstance()
{
    static ZGiftLabelMgr instance;
    return instance;
}

const TableDeclaration& ZGiftLabelMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZGiftLabelMgr, ZGiftLabelInfo> table {
        {
            {Required, Text(), Z_FIELD(ZGiftLabelInfo, id), ThereToBeNamed()},
            {Required, Text(), Z_FIELD(ZGiftLabelInfo, alterDateTime)},
            {Required, Text(), Z_FIELD(ZGiftLabelInfo, giftLabelName), TextUse::Name},
            {Required, Text(), Z_FIELD(ZGiftLabelInfo, startColor), TextUse::Colour},
            {Required, Text(), Z_FIELD(ZGiftLabelInfo, endColor), TextUse::Colour},
        },
        KeyedBy {&ZGiftLabelInfo::id, &ZGiftLabelMgr::m_labels},
        Logs {"礼物标签表加载完毕"},
        Afterwards {&ZGiftLabelMgr::sigUpdate}};
    return table;
}

bool ZGiftLabelMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
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
