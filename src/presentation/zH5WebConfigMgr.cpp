#include "presentation/zH5WebConfigMgr.h"

#include "datatable/DeclaredTable.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"

#include <QUrl>
#include <QUrlQuery>

namespace {

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

zH5WebConfigInfo withPath(zH5WebConfigInfo info)
{
    if (info.pcURL.isEmpty())
        info.pcURL = info.defaultPath;
    return info;
}

} // namespace

zH5WebConfigMgr& zH5WebConfigMgr::getInstance()
{
    static zH5WebConfigMgr instance;
    return instance;
}

const TableDeclaration& zH5WebConfigMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<zH5WebConfigMgr, zH5WebConfigInfo> table {
        {
            {Required, Text(), Z_FIELD(zH5WebConfigInfo, id)},
            {Required, Text(), Z_FIELD(zH5WebConfigInfo, key)},
            {Required, Text(), Z_FIELD(zH5WebConfigInfo, defaultPath)},
            {Required, Text(), Z_FIELD(zH5WebConfigInfo, desc)},
            {Optional, Text(), Z_FIELD(zH5WebConfigInfo, pcURL),
             "defaultPath takes the place of an empty one"},
            {Optional, "PC001", Text(), Z_FIELD(zH5WebConfigInfo, pc001)},
        },
        MadeBy {&withPath},
        KeyedBy {&zH5WebConfigInfo::id, &zH5WebConfigMgr::m_infos},
        Logs {"H5WebConfig加载完毕", QtInfoMsg},
        Afterwards {&zH5WebConfigMgr::sigUpdate}};
    return table;
}

bool zH5WebConfigMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
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

void zH5WebConfigMgr::clearInfo()
{
    m_infos.clear();
}

QString zH5WebConfigMgr::pathOf(E_H5WebConfigDefine define) const
{
    return m_infos.value(QString::number(define)).pcURL;
}
