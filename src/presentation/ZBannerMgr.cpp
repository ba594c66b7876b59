#include "presentation/ZBannerMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "host/ZImageCacheUtil.h"
#include "presentation/EmbeddedPages.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QUrlQuery>

#include <algorithm>

namespace {

// A page at the root of its site counts here: its path "/" is part of most addresses.
constexpr char pathPattern[] = "^https?://[^/]+(/.*)";

QString config(const QString& key)
{
    return ZGlobalConfig::getInstance().getConfig(key);
}

QUrl largeBannerUrl()
{
    QUrlQuery query;
    const auto add = [&query](const QString& name, const QString& value) {
        // Encoded here, since the query itself would leave "+" and "%" for the server to decode.
        query.addQueryItem(name, QString::fromLatin1(QUrl::toPercentEncoding(value)));
    };
    add(QStringLiteral("userId"), config(QStringLiteral("userId")));
    add(QStringLiteral("sessionId"), config(QStringLiteral("sessionId")));
    add(QStringLiteral("product"), QStringLiteral("pc_anchor"));
    QUrl url(config(QStringLiteral("H5Server")) + QStringLiteral("cms/app/data/bannerConfigInfo"));
    url.setQuery(query);
    return url;
}

const QRegularExpression& pagePattern()
{
    static const QRegularExpression pattern(QString::fromLatin1(pathPattern));
    return pattern;
}

bool isForOthers(const ZBannerInfo& info)
{
    return !info.showPosition.contains(QLatin1String("pc_anchor"));
}

} // namespace

QSharedPointer<ZBannerMgr> ZBannerMgr::m_instance;

ZBannerMgr* ZBannerMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZBannerMgr>(new ZBannerMgr);
    return m_instance.data();
}

template <bool isNew>
const TableDeclaration& ZBannerMgr::declarationOf()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZBannerMgr, ZBannerInfo> table {
        {
            {Required, Integer(), Z_FIELD(ZBannerInfo, id)},
            {Required, Integer(), Z_FIELD(ZBannerInfo, bannerType)},
            {Required, Text(), Z_FIELD(ZBannerInfo, bannerContent), FileOn {"ImageResServer", ""},
             OnlyWhere {"bannerType", 1, 2}},
            {Required, Integer(), Z_FIELD(ZBannerInfo, lpType)},
            {Required, Text(), Z_FIELD(ZBannerInfo, landingPage), TextUse::Address},
            {Required, Integer(), Z_FIELD(ZBannerInfo, weight), Between {0}},
            {Required, TruncatedNumber(), Z_FIELD(ZBannerInfo, startDate)},
            {Required, TruncatedNumber(), Z_FIELD(ZBannerInfo, endDate), EndOf {"startDate"}},
            {Required, Integer(), Z_FIELD(ZBannerInfo, isLive), Between {0, 1}},
            {Required, Integer(), Z_FIELD(ZBannerInfo, isHalf), Between {0, 1}},
            {Optional, Integer(), Z_FIELD(ZBannerInfo, isCefOpen),
             "above 0 the trimmed landingPage joins the pages for the embedded browser, for good",
             Between {0, 1}, OpensEmbedded {"landingPage", pathPattern}},
            {Optional, Text(), Z_FIELD(ZBannerInfo, showPosition), Wants {"pc_anchor"}},
            {Optional, Text(), Z_FIELD(ZBannerInfo, name), TextUse::Name},
            {Optional, Integer(), Z_FIELD(ZBannerInfo, showByFunLevel), "-1 without the column",
             Between {-1}},
            {Optional, Integer(), Z_FIELD(ZBannerInfo, tipsType), "-1 without the column",
             Between {-1}},
        },
        EachRow {&ZBannerMgr::notePage},
        LeftOut {&ZBannerInfo::showPosition, "a row without \"pc_anchor\" in it is left out",
                 &isForOthers},
        JoinedBy {&ZBannerInfo::id, &ZBannerMgr::m_banners},
        Listed {isNew ? &ZBannerMgr::m_newList : &ZBannerMgr::m_list},
        Duplicates {"the map, which both tables share, holds the later row, the lists both"},
        Logs {"BannerList.json加载完毕"},
        Afterwards {[](ZBannerMgr& banners) { banners.sortListByWeight(isNew); }},
        Afterwards {&ZBannerMgr::sigUpdate},
        Afterwards {&ZBannerMgr::updateLargeBanner}};
    return table;
}

const TableDeclaration& ZBannerMgr::declaration()
{
    return declarationOf<false>();
}

const TableDeclaration& ZBannerMgr::newDeclaration()
{
    return declarationOf<true>();
}

bool ZBannerMgr::loadBannerListTable(const QString& path, bool isNew)
{
    return (isNew ? newDeclaration() : declaration()).load(path);
}

void ZBannerMgr::clear()
{
    m_banners.clear();
    m_list.clear();
    m_newList.clear();
}

const QVector<ZBannerInfo>& ZBannerMgr::getList(bool isNew)
{
    return isNew ? m_newList : m_list;
}

const QHash<int, ZBannerInfo>& ZBannerMgr::getBannerMap()
{
    return m_banners;
}

QString ZBannerMgr::getBannerImageUrlById(const int& id)
{
    const auto found = m_banners.constFind(id);
    if (found == m_banners.constEnd())
        return {};
    return ResourceServer::imageRes() + found->bannerContent;
}

QString ZBannerMgr::getBannerImagePathById(const int& id)
{
    return CacheNames::imagePath(getBannerImageUrlById(id));
}

bool ZBannerMgr::hasPicture(const ZBannerInfo& banner)
{
    return banner.bannerType == 1 || banner.bannerType == 2;
}

QStringList ZBannerMgr::getMissingImageUrls()
{
    QStringList missing;
    for (const ZBannerInfo& info : qAsConst(m_banners)) {
        if (hasPicture(info) && !QFileInfo(getBannerImagePathById(info.id)).isFile())
            missing.append(getBannerImageUrlById(info.id));
    }
    return missing;
}

void ZBannerMgr::loadBannerImages()
{
    const QStringList missing = getMissingImageUrls();
    if (missing.isEmpty()) {
        Q_EMIT sigDownloadImages();
        return;
    }
    // One missing picture must not keep the others from being shown.
    const auto announce = [this] { Q_EMIT sigDownloadImages(); };
    ZImageCacheUtil::preloadList(missing).then(announce, announce);
}

bool ZBannerMgr::bannerIsByCef(const QString& url)
{
    return !bannerCefPage(url).isEmpty();
}

QString ZBannerMgr::bannerCefPage(const QString& url)
{
    const QString page = EmbeddedPages::pageFor(url, m_tablePages);
    return page.isEmpty() ? EmbeddedPages::pageFor(url, m_serverPages) : page;
}

const QHash<QString, QString>& ZBannerMgr::getTablePages()
{
    return m_tablePages;
}

const QHash<QString, QString>& ZBannerMgr::getServerPages()
{
    return m_serverPages;
}

void ZBannerMgr::sortListByWeight(bool isNew)
{
    if (isNew)
        return;
    std::stable_sort(m_list.begin(), m_list.end(),
                     [](const ZBannerInfo& left, const ZBannerInfo& right) {
                         return left.weight < right.weight;
                     });
}

void ZBannerMgr::updateLargeBanner()
{
    m_serverPages.clear();
    ZHttpComm::getInstance()
        ->get(largeBannerUrl())
        .then([this](const QByteArray& answer) { addServerPages(answer); })
        .fail([] {}); // the tables' pages have to do then
}

void ZBannerMgr::notePage(const ZBannerInfo& info, const QJsonArray&)
{
    if (info.isCefOpen > 0)
        EmbeddedPages::add(info.landingPage.trimmed(), pagePattern(), m_tablePages);
}

void ZBannerMgr::addServerPages(const QByteArray& answer)
{
    const QJsonObject body = QJsonDocument::fromJson(answer).object();
    for (const auto& element : body.value(QLatin1String("data")).toArray()) {
        const QJsonObject banner = element.toObject();
        const QString page = banner.value(QLatin1String("landingPage")).toString();
        if (banner.value(QLatin1String("isCefOpen")).toInt() == 1 && !page.isEmpty())
            EmbeddedPages::add(page, pagePattern(), m_serverPages);
    }
}
