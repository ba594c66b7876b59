#include "decoration/zFunStampMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"

#include <QDebug>

namespace {

const TableColumns<zFunStampInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<zFunStampInfo> declared {
        {Required, "id", Text(), Z_FIELD(zFunStampInfo, id)},
        {Optional, "activityId", Text(), Z_FIELD(zFunStampInfo, activityId)},
        {Required, "name", Text(), Z_FIELD(zFunStampInfo, name)},
        {Required, "picture", Text(), Z_FIELD(zFunStampInfo, picture)},
        {Optional, "startTime", Date(), Z_FIELD(zFunStampInfo, startTime)},
        {Optional, "endTime", Date(), Z_FIELD(zFunStampInfo, endTime)},
    };
    return declared;
}

} // namespace

zFunStampMgr& zFunStampMgr::getInstance()
{
    static zFunStampMgr instance;
    return instance;
}

bool zFunStampMgr::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const zFunStampInfo& info) { m_stamps.insert(info.id, info); });
    qDebug().noquote() << QStringLiteral("FunStamp加载完毕");
    return true;
}

void zFunStampMgr::clear()
{
    m_stamps.clear();
}

const QMap<QString, zFunStampInfo>& zFunStampMgr::getFunStampMap()
{
    return m_stamps;
}

zFunStampInfo zFunStampMgr::getInfoById(const QString& id)
{
    return m_stamps.value(id);
}

QString zFunStampMgr::getFunStampImageUrlById(const QString& id)
{
    const zFunStampInfo stamp = getInfoById(id);
    if (stamp.picture.isEmpty())
        return {};
    const int version = ZDataTableMgr::getInstance()->getTableVersion(EDataTable::CS_FunStamp);
    return QStringLiteral("%1/app/logo/funstamp/%2?%3")
        .arg(ResourceServer::images(), stamp.picture, QString::number(version));
}

QString zFunStampMgr::getFunStampImagePathById(const QString& id)
{
    return CacheNames::imagePath(getFunStampImageUrlById(id));
}

TableDescription zFunStampMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance().m_stamps; });
}
