#include "presentation/zH5WebConfigMgr.h"

#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"

#include <QDebug>
#include <QUrl>
#include <QUrlQuery>

namespace {

const TableColumns<zH5WebConfigInfo>& columns()
{
    using Cells::Text;
    static const TableColumns<zH5WebConfigInfo> declared {
        {Required, "id", Text(), Z_FIELD(zH5WebConfigInfo, id)},
        {Required, "key", Text(), Z_FIELD(zH5WebConfigInfo, key)},
        {Required, "defaultPath", Text(), Z_FIELD(zH5WebConfigInfo, defaultPath)},
        {Required, "desc", Text(), Z_FIELD(zH5WebConfigInfo, desc)},
        {Optional, "pcURL", Text(), Z_FIELD(zH5WebConfigInfo, pcURL),
         "defaultPath takes the place of an empty one"},
        {Optional, "PC001", Text(), Z_FIELD(zH5WebConfigInfo, pc001)},
    };
    return declared;
}

QString versioned(const QString& address)
{
    QUrl url(address);
    QUrlQuery query(url);
    const int version = ZDataTableMgr::getInstance()->getTableVersion(EDataTable::H5WebConfig);
    query.addQueryItem(QStringLiteral("version"), QString::number(version));
    url.setQuery(query);
    return url.toString();
}

QString onServer(const QString& serverKey, const QString& path)
{
    return ZGlobalConfig::getInstance().getConfig(serverKey) + path;
}

} // namespace

zH5WebConfigMgr& zH5WebConfigMgr::getInstance()
{
    static zH5WebConfigMgr instance;
    return instance;
}

bool zH5WebConfigMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clearInfo();
    table->forEach([this](zH5WebConfigInfo info) {
        if (info.pcURL.isEmpty())
            info.pcURL = info.defaultPath;
        m_infos.insert(info.id, info);
    });
    qInfo().noquote() << QStringLiteral("H5WebConfig加载完毕");
    Q_EMIT sigUpdate();
    return true;
}

QString zH5WebConfigMgr::getURLByDefine(E_H5WebConfigDefine define)
{
    const QString path = pathOf(define);
    if (path.isEmpty())
        return {};
    const bool isWhole = path.contains(QLatin1String("https"));
    return versioned(isWhole ? path : onServer(QStringLiteral("H5WebServer"), path));
}

QString zH5WebConfigMgr::getAppURLByDefine(E_H5WebConfigDefine define, QString serverKey)
{
    const QString path = pathOf(define);
    if (path.isEmpty())
        return {};
    const bool isWhole = path.startsWith(QLatin1String("http"));
    return versioned(isWhole ? path : onServer(serverKey, path));
}

TableDescription zH5WebConfigMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_infos; });
}

void zH5WebConfigMgr::clearInfo()
{
    m_infos.clear();
}

QString zH5WebConfigMgr::pathOf(E_H5WebConfigDefine define) const
{
    return m_infos.value(QString::number(define)).pcURL;
}
