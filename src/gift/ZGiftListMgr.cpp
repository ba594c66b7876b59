#include "gift/ZGiftListMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"

#include <QJsonDocument>

#include <array>
#include <limits>
#include <tuple>

using CacheNames::VersionedName;

namespace {

constexpr char giftFolder[] = "/app/logo/gift/";
constexpr char animationFolder[] = "/app/logo/giftanimation/";
constexpr char broadcastPictureFolder[] = "/app/logo/gift/bc";
constexpr char broadcastFolder[] = "/app/logo/giftanimation/bc";

/** A row as read: the gift, and what only the loader needs to know of it. */
struct GiftRow : ZGiftInfo
{
    bool valid = false;
    QString pcAnimationName;
    double scale = 1.0;
};

QRect rectangle(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 4)
        return {};
    return {parts.at(0).toInt(), parts.at(1).toInt(), parts.at(2).toInt(), parts.at(3).toInt()};
}

ZGiftInfo giftOf(GiftRow&& row)
{
    // Tables state the scale for a stage twice this client's.
    const double half = row.scale / 2;
    if (half > std::numeric_limits<double>::epsilon())
        row.animScaleRate = half;
    if (!row.pcAnimationName.isEmpty()) {
        row.isPcAnimation = true;
        row.animationName = row.pcAnimationName;
    }
    if (!row.clientParam.isEmpty()) {
        const QJsonObject client = QJsonDocument::fromJson(row.clientParam.toUtf8()).object();
        row.pcIconGeo = rectangle(client.value(QLatin1String("pcIconGeo")).toString());
        row.showGiftPanelType = client.value(QLatin1String("showGiftPanelType")).toInt();
    }
    return std::move(row);
}

QString animationNameOf(const QString& fileName)
{
    if (fileName.endsWith(QLatin1String(".mp4")))
        return fileName;
    return CacheNames::withoutExtension(fileName);
}

QString animationPath(const QString& fileName, const QString& version)
{
    return VersionedName {animationNameOf(fileName), version}.in(CacheFolders::animations());
}

QString animationUrl(const QString& fileName, const QString& version)
{
    return ResourceServer::versionedImage(animationFolder, fileName, version);
}

QString broadcastPath(const QString& fileName, const QString& version)
{
    if (fileName.isEmpty())
        return {};
    return VersionedName {QStringLiteral("bc") + animationNameOf(fileName), version}.in(
        CacheFolders::flashes());
}

QString broadcastUrl(const QString& fileName, const QString& version)
{
    if (fileName.isEmpty())
        return {};
    return ResourceServer::versionedImage(broadcastFolder, fileName, version);
}

bool countsAsVisible(const ZGiftInfo& gift)
{
    static const QSet<QString> alwaysVisible {QStringLiteral("Annual2024G19"),
                                              QStringLiteral("Annual2024G20"),
                                              QStringLiteral("Anniversary2025G18")};
    return gift.isVisible || alwaysVisible.contains(gift.giftId);
}

constexpr int panelOnly = 2;

constexpr std::array<stGiftRule, 4> rules {{
    {stGiftRule::Always, "its sale has begun", "startTime",
     [](const ZGiftInfo& gift, qint64 time) { return gift.startTime <= time; }},
    {stGiftRule::Always, "its sale is not over", "endTime",
     [](const ZGiftInfo& gift, qint64 time) { return time <= gift.endTime; }},
    {stGiftRule::CheckVisible, "it counts as visible", "isVisible",
     [](const ZGiftInfo& gift, qint64) { return countsAsVisible(gift); }},
    {stGiftRule::CheckDisplayLocation, "it is shown in the gift panel", "giftDisplayLocation",
     [](const ZGiftInfo& gift, qint64) { return (gift.giftDisplayLocation & ~panelOnly) == 0; }},
}};

} // namespace

ZGiftListMgr* ZGiftListMgr::getInstance()
{
    static ZGiftListMgr instance;
    return &instance;
}

const TableDeclaration& ZGiftListMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZGiftListMgr, ZGiftInfo, GiftRow> table {
        {
            {Required, Integer(), Z_FIELD(GiftRow, id)},
            {Required, Integer(), Z_FIELD(GiftRow, giftType)},
            {Required, Text(), Z_FIELD(GiftRow, giftId), FileOn {"ImageResServer", giftFolder}},
            {Required, Integer(), Z_FIELD(GiftRow, price), Between {0}},
            {Required, Text(), Z_FIELD(GiftRow, giftName), TextUse::Name},
            {Required, Date(), Z_FIELD(GiftRow, startTime)},
            {Required, Date(), Z_FIELD(GiftRow, endTime), EndOf {"startTime"}},
            {Required, Integer(), Z_FIELD(GiftRow, prankType)},
            {Required, Text(), Z_FIELD(GiftRow, animationName),
             ArchiveOn {"ImageResServer", animationFolder, "alterDateTime"}},
            {Optional, Text(), Z_FIELD(GiftRow, pcAnimationName),
             "replaces animationName, and sets isPcAnimation, unless empty",
             ArchiveOn {"ImageResServer", animationFolder, "alterDateTime"}},
            {Required, Text(), Z_FIELD(GiftRow, broadcastStart)},
            {Required, Text(), Z_FIELD(GiftRow, broadcastEnd)},
            {Required, Text(), Z_FIELD(GiftRow, broadcastAnimationName),
             ArchiveOn {"ImageResServer", broadcastFolder, "alterDateTime"}},
            {Optional, Text(), Z_FIELD(GiftRow, broadcastBgAndAnimationName),
             ArchiveOn {"ImageResServer", broadcastFolder, "alterDateTime"},
             FileOn {"ImageResServer", broadcastPictureFolder, "{giftId}"}},
            {Required, "broadcastDuration", "never read"},
            {Required, "duration", "never read"},
            {Required, Text(), Z_FIELD(GiftRow, descs), TextUse::Words},
            {Required, Integer(), Z_FIELD(GiftRow, showArea)},
            {Required, Integer(), Z_FIELD(GiftRow, sequenceId)},
            {Required, Text(), Z_FIELD(GiftRow, giftLabelId),
             RefersTo {EDataTable::CS_GiftLabel, "id"}},
            {Required, Flag(), Z_FIELD(GiftRow, isVisible)},
            {Required, Flag(), Z_FIELD(GiftRow, valid)},
            {Required, DateAsText(), Z_FIELD(GiftRow, alterDateTime)},
            {Optional, Integer(), Z_FIELD(GiftRow, giftDisplayLocation), Between {0, 3}},
            {Optional, Integer(), Z_FIELD(GiftRow, giftFamily)},
            {Optional, Date(), Z_FIELD(GiftRow, labelStartTime), Within {"startTime", "endTime"}},
            {Optional, Date(), Z_FIELD(GiftRow, labelEndTime), EndOf {"labelStartTime"}},
            {Optional, "animScaleRate", Number(), Z_FIELD(GiftRow, scale), Between {0},
             "its half becomes animScaleRate when above 0"},
            {Optional, Integer(), Z_FIELD(GiftRow, maxGiftGroup), Between {0}},
            {Optional, Integer(), Z_FIELD(GiftRow, sendTimeInterval), Between {0}},
            {Optional, Integer(), Z_FIELD(GiftRow, showTab)},
            {Optional, Text(), Z_FIELD(GiftRow, showTabIcon), FileOn {"ImageResServer", "/"}},
            {Optional, Text(), Z_FIELD(GiftRow, activityPage), TextUse::Address},
            {Optional, Integer(), Z_FIELD(GiftRow, wishGift)},
            {Optional, Text(), Z_FIELD(GiftRow, effectUrl), TextUse::Address},
            {Required, Text(), Z_FIELD(GiftRow, activityId)},
            {Optional, Text(), Z_FIELD(GiftRow, clientParam),
             "its JSON gives pcIconGeo and showGiftPanelType", TextUse::Object},
            {Optional, Text(), Z_FIELD(GiftRow, assignId)},
        },
        LeftOut {&GiftRow::valid, "a row without it is left out",
                 [](const GiftRow& row) { return !row.valid; }},
        MadeBy {&giftOf},
        KeyedBy {&ZGiftInfo::giftId, &ZGiftListMgr::m_giftMap},
        Listed {&ZGiftListMgr::m_giftList},
        Logs {"GiftList.json加载完毕"}};
    return table;
}

bool ZGiftListMgr::loadGiftListTable(const QString& path)
{
    return declaration().load(path);
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
    return gift(id).giftName;
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
    const QString rendition = QStringLiteral("imageView2/0/w/138/h/138&");
    return ResourceServer::versionedImage(giftFolder, id, rendition + gift(id).alterDateTime);
}

QString ZGiftListMgr::getGiftImagePathById(const QString& id)
{
    return CacheNames::imagePath(getGiftImageUrlById(id));
}

QString ZGiftListMgr::getGiftAnimationNameById(const QString& id)
{
    return animationNameOf(gift(id).animationName);
}

QString ZGiftListMgr::getGiftAnimationPathById(const QString& id)
{
    if (id.isEmpty() || isGiftInvalid(id))
        return {};
    const ZGiftInfo& known = gift(id);
    return animationPath(known.animationName, known.alterDateTime);
}

QString ZGiftListMgr::getGiftAnimationUrlById(const QString& id)
{
    if (id.isEmpty() || isGiftInvalid(id))
        return {};
    const ZGiftInfo& known = gift(id);
    return animationUrl(known.animationName, known.alterDateTime);
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
    const ZGiftInfo& known = gift(id);
    return broadcastPath(known.broadcastBgAndAnimationName, known.alterDateTime);
}

QString ZGiftListMgr::getGiftBGAndAnimationUrlById(const QString& id)
{
    const ZGiftInfo& known = gift(id);
    return broadcastUrl(known.broadcastBgAndAnimationName, known.alterDateTime);
}

QString ZGiftListMgr::getGiftBGAnimationPathById(const QString& id)
{
    const ZGiftInfo& known = gift(id);
    return broadcastPath(known.broadcastAnimationName, known.alterDateTime);
}

QString ZGiftListMgr::getGiftBGAnimationUrlById(const QString& id)
{
    const ZGiftInfo& known = gift(id);
    return broadcastUrl(known.broadcastAnimationName, known.alterDateTime);
}

QString ZGiftListMgr::getGiftBGImageUrlById(const QString& id)
{
    if (id.isEmpty() || isGiftInvalid(id))
        return {};
    return ResourceServer::versionedImage(broadcastPictureFolder, id, gift(id).alterDateTime);
}

QString ZGiftListMgr::getGiftShowTabIconPathById(const QString& id)
{
    const QString address = getGiftShowTabIconUrlById(id);
    if (address.isEmpty())
        return {};
    return CacheFolders::tabIcons() + CacheNames::ofAddress(address);
}

QString ZGiftListMgr::getGiftShowTabIconUrlById(const QString& id)
{
    const QString& icon = gift(id).showTabIcon;
    return icon.isEmpty() ? QString()
                          : QStringLiteral("%1/%2").arg(ResourceServer::imageRes(), icon);
}

QSet<QString> ZGiftListMgr::getAllAnimationName()
{
    QSet<QString> folders;
    for (const ZGiftInfo& gift : qAsConst(m_giftMap))
        folders.insert(
            VersionedName {animationNameOf(gift.animationName), gift.alterDateTime}.whole());
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
    const auto gift = m_giftMap.constFind(id);
    if (id.isEmpty() || gift == m_giftMap.constEnd())
        return false;
    const std::array<bool, 3> asked {true, checkVisible, checkDisplayLocation}; // by EWhen
    const auto areMet = [&](const auto&... rule) {
        return (... && (!asked[rule.when] || rule.holds(*gift, time)));
    };
    return std::apply(areMet, rules); // a loop would call each where this has them inline
}

QVector<stGiftRule> ZGiftListMgr::validityRules()
{
    return QVector<stGiftRule>(rules.begin(), rules.end());
}

bool ZGiftListMgr::checkGiftFamilyEq(const QString& id, int family)
{
    return !isGiftInvalid(id) && gift(id).giftFamily == family;
}

bool ZGiftListMgr::checkShowTabEq(const QString& id, int showTab)
{
    return !isGiftInvalid(id) && gift(id).showTab == showTab;
}

const ZGiftInfo& ZGiftListMgr::gift(const QString& id) const
{
    static const ZGiftInfo unknown;
    const auto found = m_giftMap.constFind(id);
    return found == m_giftMap.constEnd() ? unknown : *found;
}
