#include "gift/ZGiftListMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"

#include <QDebug>
#include <QJsonDocument>

#include <algorithm>
#include <limits>

namespace {

/** A row as read: the gift, and what only the loader needs to know of it. */
struct GiftRow : ZGiftInfo
{
    bool valid = false;
    QString pcAnimationName;
    double scale = 1.0;
};

const TableColumns<GiftRow, ZGiftInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<GiftRow, ZGiftInfo> declared {
        {Required, "id", Integer(), Z_FIELD(GiftRow, id)},
        {Required, "giftType", Integer(), Z_FIELD(GiftRow, giftType)},
        {Required, "giftId", Text(), Z_FIELD(GiftRow, giftId)},
        {Required, "price", Integer(), Z_FIELD(GiftRow, price)},
        {Required, "giftName", Text(), Z_FIELD(GiftRow, giftName)},
        {Required, "startTime", Date(), Z_FIELD(GiftRow, startTime)},
        {Required, "endTime", Date(), Z_FIELD(GiftRow, endTime)},
        {Required, "prankType", Integer(), Z_FIELD(GiftRow, prankType)},
        {Required, "animationName", Text(), Z_FIELD(GiftRow, animationName)},
        {Optional, "pcAnimationName", Text(), Z_FIELD(GiftRow, pcAnimationName),
         "replaces animationName, and sets isPcAnimation, unless empty"},
        {Required, "broadcastStart", Text(), Z_FIELD(GiftRow, broadcastStart)},
        {Required, "broadcastEnd", Text(), Z_FIELD(GiftRow, broadcastEnd)},
        {Required, "broadcastAnimationName", Text(), Z_FIELD(GiftRow, broadcastAnimationName)},
        {Optional, "broadcastBgAndAnimationName", Text(),
         Z_FIELD(GiftRow, broadcastBgAndAnimationName)},
        {Required, "broadcastDuration", "never read"},
        {Required, "duration", "never read"},
        {Required, "descs", Text(), Z_FIELD(GiftRow, descs)},
        {Required, "showArea", Integer(), Z_FIELD(GiftRow, showArea)},
        {Required, "sequenceId", Integer(), Z_FIELD(GiftRow, sequenceId)},
        {Required, "giftLabelId", Text(), Z_FIELD(GiftRow, giftLabelId)},
        {Required, "isVisible", Flag(), Z_FIELD(GiftRow, isVisible)},
        {Required, "valid", Flag(), Z_FIELD(GiftRow, valid), "a row without it is left out"},
        {Required, "alterDateTime", DateAsText(), Z_FIELD(GiftRow, alterDateTime)},
        {Optional, "giftDisplayLocation", Integer(), Z_FIELD(GiftRow, giftDisplayLocation)},
        {Optional, "giftFamily", Integer(), Z_FIELD(GiftRow, giftFamily)},
        {Optional, "labelStartTime", Date(), Z_FIELD(GiftRow, labelStartTime)},
        {Optional, "labelEndTime", Date(), Z_FIELD(GiftRow, labelEndTime)},
        {Optional, "animScaleRate", Number(), Z_FIELD(GiftRow, scale),
         "its half becomes animScaleRate when above 0"},
        {Optional, "maxGiftGroup", Integer(), Z_FIELD(GiftRow, maxGiftGroup)},
        {Optional, "sendTimeInterval", Integer(), Z_FIELD(GiftRow, sendTimeInterval)},
        {Optional, "showTab", Integer(), Z_FIELD(GiftRow, showTab)},
        {Optional, "showTabIcon", Text(), Z_FIELD(GiftRow, showTabIcon)},
        {Optional, "activityPage", Text(), Z_FIELD(GiftRow, activityPage)},
        {Optional, "wishGift", Integer(), Z_FIELD(GiftRow, wishGift)},
        {Optional, "effectUrl", Text(), Z_FIELD(GiftRow, effectUrl)},
        {Required, "activityId", Text(), Z_FIELD(GiftRow, activityId)},
        {Optional, "clientParam", Text(), Z_FIELD(GiftRow, clientParam),
         "its JSON gives pcIconGeo and showGiftPanelType"},
        {Optional, "assignId", Text(), Z_FIELD(GiftRow, assignId)},
    };
    return declared;
}

QRect rectangle(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 4)
        return {};
    return {parts.at(0).toInt(), parts.at(1).toInt(), parts.at(2).toInt(), parts.at(3).toInt()};
}

ZGiftInfo giftOf(const GiftRow& row)
{
    ZGiftInfo gift = row;
    // Tables state the scale for a stage twice this client's.
    const double half = row.scale / 2;
    if (half > std::numeric_limits<double>::epsilon())
        gift.animScaleRate = half;
    if (!row.pcAnimationName.isEmpty()) {
        gift.isPcAnimation = true;
        gift.animationName = row.pcAnimationName;
    }
    const QJsonObject client = QJsonDocument::fromJson(row.clientParam.toUtf8()).object();
    gift.pcIconGeo = rectangle(client.value(QLatin1String("pcIconGeo")).toString());
    gift.showGiftPanelType = client.value(QLatin1String("showGiftPanelType")).toInt();
    return gift;
}

QString animationNameOf(const QString& fileName)
{
    if (fileName.endsWith(QLatin1String(".mp4")))
        return fileName;
    return CacheNames::withoutExtension(fileName);
}

QString versioned(const QString& name, const QString& version)
{
    return QStringLiteral("%1_%2").arg(name, version);
}

QString animationPath(const QString& fileName, const QString& version)
{
    return QStringLiteral("%1/%2_%3")
        .arg(QStringLiteral("res/animation/"), animationNameOf(fileName), version);
}

QString animationUrl(const QString& fileName, const QString& version)
{
    return QStringLiteral("%1/app/logo/giftanimation/%2?%3")
        .arg(ResourceServer::images(), fileName, version);
}

QString broadcastPath(const QString& fileName, const QString& version)
{
    if (fileName.isEmpty())
        return {};
    return QStringLiteral("%1/%2_%3")
        .arg(QStringLiteral("res/flash"), QStringLiteral("bc") + animationNameOf(fileName),
             version);
}

QString broadcastUrl(const QString& fileName, const QString& version)
{
    if (fileName.isEmpty())
        return {};
    return QStringLiteral("%1/app/logo/giftanimation/bc%2?%3")
        .arg(ResourceServer::images(), fileName, version);
}

bool isOnSale(const ZGiftInfo& gift, qint64 time)
{
    return gift.startTime <= time && time <= gift.endTime;
}

bool countsAsVisible(const ZGiftInfo& gift)
{
    static const QSet<QString> alwaysVisible {QStringLiteral("Annual2024G19"),
                                              QStringLiteral("Annual2024G20"),
                                              QStringLiteral("Anniversary2025G18")};
    return gift.isVisible || alwaysVisible.contains(gift.giftId);
}

} // namespace

ZGiftListMgr* ZGiftListMgr::getInstance()
{
    static ZGiftListMgr instance;
    return &instance;
}

bool ZGiftListMgr::loadGiftListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const GiftRow& row) {
        if (!row.valid)
            return;
        const ZGiftInfo gift = giftOf(row);
        m_giftMap.insert(gift.giftId, gift);
        m_giftList.append(gift);
    });
    qDebug().noquote() << QStringLiteral("GiftList.json加载完毕");
    return true;
}

void ZGiftListMgr::clear()
{
    m_giftMap.clear();
    m_giftList.clear();
}

ZGiftInfo ZGiftListMgr::getGiftInfoById(const QString& id)
{
    return m_giftMap.value(id);
}

QString ZGiftListMgr::getGiftNameById(const QString& id)
{
    return getGiftInfoById(id).giftName;
}

const QHash<QString, ZGiftInfo>& ZGiftListMgr::getGiftMap()
{
    return m_giftMap;
}

const QVector<ZGiftInfo>& ZGiftListMgr::getGiftList()
{
    return m_giftList;
}

QString ZGiftListMgr::getGiftImageUrlById(const QString& id)
{
    if (id.isEmpty())
        return {};
    return QStringLiteral("%1/app/logo/gift/%2?imageView2/0/w/138/h/138&%3")
        .arg(ResourceServer::images(), id, getGiftInfoById(id).alterDateTime);
}

QString ZGiftListMgr::getGiftImagePathById(const QString& id)
{
    return CacheNames::imagePath(getGiftImageUrlById(id));
}

QString ZGiftListMgr::getGiftAnimationNameById(const QString& id)
{
    return animationNameOf(getGiftInfoById(id).animationName);
}

QString ZGiftListMgr::getGiftAnimationPathById(const QString& id)
{
    if (id.isEmpty() || isGiftInvalid(id))
        return {};
    const ZGiftInfo gift = getGiftInfoById(id);
    return animationPath(gift.animationName, gift.alterDateTime);
}

QString ZGiftListMgr::getGiftAnimationUrlById(const QString& id)
{
    if (id.isEmpty() || isGiftInvalid(id))
        return {};
    const ZGiftInfo gift = getGiftInfoById(id);
    return animationUrl(gift.animationName, gift.alterDateTime);
}

QString ZGiftListMgr::getGiftAnimationPathByAniName(const QString& animationName,
                                                    const QString& version)
{
    return animationName.isEmpty() ? QString() : animationPath(animationName, version);
}

QString ZGiftListMgr::getGiftAnimationUrlByAniName(const QString& animationName,
                                                   const QString& version)
{
    return animationName.isEmpty() ? QString() : animationUrl(animationName, version);
}

QString ZGiftListMgr::getGiftBGAndAnimationPathById(const QString& id)
{
    const ZGiftInfo gift = getGiftInfoById(id);
    return broadcastPath(gift.broadcastBgAndAnimationName, gift.alterDateTime);
}

QString ZGiftListMgr::getGiftBGAndAnimationUrlById(const QString& id)
{
    const ZGiftInfo gift = getGiftInfoById(id);
    return broadcastUrl(gift.broadcastBgAndAnimationName, gift.alterDateTime);
}

QString ZGiftListMgr::getGiftBGAnimationPathById(const QString& id)
{
    const ZGiftInfo gift = getGiftInfoById(id);
    return broadcastPath(gift.broadcastAnimationName, gift.alterDateTime);
}

QString ZGiftListMgr::getGiftBGAnimationUrlById(const QString& id)
{
    const ZGiftInfo gift = getGiftInfoById(id);
    return broadcastUrl(gift.broadcastAnimationName, gift.alterDateTime);
}

QString ZGiftListMgr::getGiftBGImageUrlById(const QString& id)
{
    if (id.isEmpty() || isGiftInvalid(id))
        return {};
    return QStringLiteral("%1/app/logo/gift/bc%2?%3")
        .arg(ResourceServer::images(), id, getGiftInfoById(id).alterDateTime);
}

QString ZGiftListMgr::getGiftShowTabIconPathById(const QString& id)
{
    const QString address = getGiftShowTabIconUrlById(id);
    if (address.isEmpty())
        return {};
    return QStringLiteral("res/gift/tabBgImg/") + CacheNames::ofAddress(address);
}

QString ZGiftListMgr::getGiftShowTabIconUrlById(const QString& id)
{
    const QString icon = getGiftInfoById(id).showTabIcon;
    return icon.isEmpty() ? QString() : QStringLiteral("%1/%2").arg(ResourceServer::images(), icon);
}

QSet<QString> ZGiftListMgr::getAllAnimationName()
{
    QSet<QString> folders;
    for (const ZGiftInfo& gift : qAsConst(m_giftMap))
        folders.insert(versioned(animationNameOf(gift.animationName), gift.alterDateTime));
    return folders;
}

bool ZGiftListMgr::isGiftInvalid(const QString& id)
{
    return !m_giftMap.contains(id);
}

bool ZGiftListMgr::checkGiftTimeValid(const QString& id, qint64 time)
{
    return checkGiftValid(id, time, false, false);
}

bool ZGiftListMgr::checkGiftValidForVote(const QString& id, qint64 time)
{
    return checkGiftTimeValid(id, time);
}

bool ZGiftListMgr::checkGiftValid(const QString& id, qint64 time, const bool& checkDisplayLocation,
                                  bool checkVisible)
{
    if (id.isEmpty() || isGiftInvalid(id))
        return false;
    const ZGiftInfo gift = getGiftInfoById(id);
    if (!isOnSale(gift, time))
        return false;
    if (checkVisible && !countsAsVisible(gift))
        return false;
    constexpr int panelOnly = 2;
    return !checkDisplayLocation || (gift.giftDisplayLocation & ~panelOnly) == 0;
}

bool ZGiftListMgr::checkGiftFamilyEq(const QString& id, int family)
{
    return !isGiftInvalid(id) && getGiftInfoById(id).giftFamily == family;
}

bool ZGiftListMgr::checkShowTabEq(const QString& id, int showTab)
{
    return !isGiftInvalid(id) && getGiftInfoById(id).showTab == showTab;
}

TableDescription ZGiftListMgr::describeTable()
{
    return columns().describe(QStringLiteral("giftId"),
                              QStringLiteral("the map holds the later row, the list both"),
                              [] { return getInstance()->m_giftList; });
}
