#include "presentation/ZBannerMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "host/ZImageCacheUtil.h"
#include "presentation/EmbeddedPages.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QUrlQuery>

#include <algorithm>

namespace {

const TableColumns<ZBannerInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZBannerInfo> declared {
        {Required, "id", Integer(), Z_FIELD(ZBannerInfo, id)},
        {Required, "bannerType", Integer(), Z_FIELD(ZBannerInfo, bannerType)},
        {Required, "bannerContent", Text(), Z_FIELD(ZBannerInfo, bannerContent)},
        {Required, "lpType", Integer(), Z_FIELD(ZBannerInfo, lpType)},
        {Required, "landingPage", Text(), Z_FIELD(ZBannerInfo, landingPage)},
        {Required, "weight", Integer(), Z_FIELD(ZBannerInfo, weight)},
        {Required, "startDate", TruncatedNumber(), Z_FIELD(ZBannerInfo, startDate)},
        {Required, "endDate", TruncatedNumber(), Z_FIELD(ZBannerInfo, endDate)},
        {Required, "isLive", Integer(), Z_FIELD(ZBannerInfo, isLive)},
        {Required, "isHalf", Integer(), Z_FIELD(ZBannerInfo, isHalf)},
        {Optional, "isCefOpen", Integer(), Z_FIELD(ZBannerInfo, isCefOpen),
         "above 0 the trimmed landingPage joins the pages for the embedded browser, for good"},
        {Optional, "showPosition", Text(), Z_FIELD(ZBannerInfo, showPosition),
         "a row without \"pc_anchor\" in it is left out"},
        {Optional, "name", Text(), Z_FIELD(ZBannerInfo, name)},
        {Optional, "showByFunLevel", Integer(), Z_FIELD(ZBannerInfo, showByFunLevel),
         "-1 without the column"},
        {Optional, "tipsType", Integer(), Z_FIELD(ZBannerInfo, tipsType), "-1 without the column"},
    };
    return declared;
}

TableDescription describeList(bool isNew)
{
    return columns().describe(
        QStringLiteral("id"),
        QStringLiteral("the map, which both tables share, holds the later row, the lists both"),
        [isNew] { return ZBannerMgr::getInstance()->getList(isNew); });
}

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

} // namespace

QSharedPointer<ZBannerMgr> ZBannerMgr::m_instance;

ZBannerMgr* ZBannerMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZBannerMgr>(new ZBannerMgr);
    return m_instance.data();
}

bool ZBannerMgr::loadBannerListTable(const QString& path, bool isNew)
{
    TableRows rows;
    if (!rows.read(path))
        return false;
    const auto table = columns().bind(rows);
    if (!table)
        return false;
    const bool hasPositions = rows.header.contains(QStringLiteral("showPosition"));
    QVector<ZBannerInfo>& list = isNew ? m_newList : m_list;
    list.clear();
    table->forEach([&](const ZBannerInfo& info) {
        if (info.isCefOpen > 0)
            m_tablePages.insert(info.landingPage.trimmed());
        if (hasPositions && !info.showPosition.contains(QLatin1String("pc_anchor")))
            return;
        m_banners.insert(info.id, info);
        list.append(info);
    });
    qDebug().noquote() << QStringLiteral("BannerList.json加载完毕");
    sortListByWeight(isNew);
    Q_EMIT sigUpdate();
    updateLargeBanner();
    return true;
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
    return ResourceServer::images() + found->bannerContent;
}

QString ZBannerMgr::getBannerImagePathById(const int& id)
{
    return CacheNames::imagePath(getBannerImageUrlById(id));
}

void ZBannerMgr::loadBannerImages()
{
    QStringList missing;
    for (const ZBannerInfo& info : qAsConst(m_banners)) {
        const bool hasPicture = info.bannerType == 1 || info.bannerType == 2;
        if (hasPicture && !QFile::exists(getBannerImagePathById(info.id)))
            missing.append(getBannerImageUrlById(info.id));
    }
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
    // A page at the root of a host counts here: its path "/" is part of most addresses.
    static const QRegularExpression pathPattern(QStringLiteral("^https?://[^/]+(/.*)"));
    return EmbeddedPages::pageFor(url, m_tablePages + m_serverPages, pathPattern);
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

TableDescription ZBannerMgr::describeTable()
{
    return describeList(false);
}

TableDescription ZBannerMgr::describeNewTable()
{
    return describeList(true);
}

void ZBannerMgr::updateLargeBanner()
{
    m_serverPages.clear();
    ZHttpComm::getInstance()
        ->get(largeBannerUrl())
        .then([this](const QByteArray& answer) { addServerPages(answer); })
        .fail([] {}); // the tables' pages have to do then
}

void ZBannerMgr::addServerPages(const QByteArray& answer)
{
    const QJsonObject body = QJsonDocument::fromJson(answer).object();
    for (const auto& element : body.value(QLatin1String("data")).toArray()) {
        const QJsonObject banner = element.toObject();
        const QString page = banner.value(QLatin1String("landingPage")).toString();
        if (banner.value(QLatin1String("isCefOpen")).toInt() == 1 && !page.isEmpty())
            m_serverPages.insert(page);
    }
}
