#include "chat/ZBubbleConfigMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"

namespace {

QString tableVersion()
{
    return QString::number(ZDataTableMgr::getInstance()->getTableVersion(EDataTable::BubbleConfig));
}

QString ninePatchUrl(const QString& form, const QString& id, const QString& rendition)
{
    if (id.isEmpty())
        return {};
    return QStringLiteral("%1/app/images/nineImage/bubble_%2_%3.9.png%4/%5")
        .arg(ResourceServer::imageRes(), form, id, rendition, tableVersion());
}

} // namespace

ZBubbleConfigMgr& ZBubbleConfigMgr::getInstance()
{
    static ZBubbleConfigMgr instance;
    return instance;
}

const TableDeclaration& ZBubbleConfigMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZBubbleConfigMgr, ZBubbleConfigInfo> table {
        {
            {Required, IntegerAsText(), Z_FIELD(ZBubbleConfigInfo, bubbleId),
             FileOn {"ImageResServer", "/app/images/nineImage/", "bubble_bg_{}.9.png"},
             FileOn {"ImageResServer", "/app/images/nineImage/", "bubble_chat_{}.9.png"},
             FileOn {"ImageResServer", "/app/images/nobility/", "bubble_small_{}.png"}},
            {Required, IntegerAsText(), Z_FIELD(ZBubbleConfigInfo, bubbleType)},
            {Required, Text(), Z_FIELD(ZBubbleConfigInfo, name), TextUse::Name},
            {Required, Text(), Z_FIELD(ZBubbleConfigInfo, descs), TextUse::Words},
            {Optional, Text(), Z_FIELD(ZBubbleConfigInfo, borderWidths),
             "\"17\" without the column"},
            {Optional, Text(), Z_FIELD(ZBubbleConfigInfo, paddings), "\"-10\" without the column"},
        },
        KeyedBy {&ZBubbleConfigInfo::bubbleId, &ZBubbleConfigMgr::m_bubbleMap},
        Listed {&ZBubbleConfigMgr::m_bubbleList},
        Logs {"BubbleConfig加载完毕"},
        Afterwards {&ZBubbleConfigMgr::sigBubbleLoadFinish}};
    return table;
}

bool ZBubbleConfigMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void ZBubbleConfigMgr::clear()
{
    m_bubbleMap.clear();
    m_bubbleList.clear();
}

const ZBubbleConfigInfo ZBubbleConfigMgr::getInfoById(const QString& id) const
{
    return m_bubbleMap.value(id);
}

const QVector<ZBubbleConfigInfo> ZBubbleConfigMgr::getMessageList() const
{
    return m_bubbleList;
}

QString ZBubbleConfigMgr::getImageUrlById(const QString& id)
{
    return ninePatchUrl(QStringLiteral("bg"), id, QStringLiteral("?imageMogr2/thumbnail/x44"));
}

QString ZBubbleConfigMgr::getChatUrlById(const QString& id)
{
    return ninePatchUrl(QStringLiteral("chat"), id,
                        QStringLiteral("?imageMogr2/thumbnail/!33.333p"));
}

QString ZBubbleConfigMgr::getThumbEnableUrlById(const QString& id)
{
    if (id.isEmpty())
        return {};
    return QStringLiteral("%1/app/images/nobility/bubble_small_%2.png?%3")
        .arg(ResourceServer::imageRes(), id, tableVersion());
}

QString ZBubbleConfigMgr::getImagePathById(const QString& id)
{
    return CacheNames::imagePath(getImageUrlById(id));
}

QString ZBubbleConfigMgr::getChatPathById(const QString& id)
{
    return CacheNames::imagePath(getChatUrlById(id));
}

QString ZBubbleConfigMgr::getThumbEnableImagePathById(const QString& id)
{
    return getImagePathById(id) + QStringLiteral("_thumb_enable");
}

QtPromise::QPromise<QString> ZBubbleConfigMgr::getImagePathAndDownloadById(const QString& id)
{
    return ZDataTableMgr::getInstance()->downloadFile(getImagePathById(id), getImageUrlById(id),
                                                      true);
}

QtPromise::QPromise<QString>
ZBubbleConfigMgr::getThumbEnableImagePathAndDownloadById(const QString& id)
{
    return ZDataTableMgr::getInstance()->downloadFile(getThumbEnableImagePathById(id),
                                                      getThumbEnableUrlById(id), true);
}
