#include "decoration/ZUserStampMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZUserStampInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZUserStampInfo> declared {
        {Required, "id", Text(), Z_FIELD(ZUserStampInfo, id)},
        {Required, "name", Text(), Z_FIELD(ZUserStampInfo, name)},
        {Optional, "picture", Text(), Z_FIELD(ZUserStampInfo, picture)},
        {Optional, "duration", Integer(), Z_FIELD(ZUserStampInfo, duration)},
        {Optional, "version", Integer(), Z_FIELD(ZUserStampInfo, version)},
    };
    return declared;
}

} // namespace

QSharedPointer<ZUserStampMgr> ZUserStampMgr::m_instance;

ZUserStampMgr* ZUserStampMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZUserStampMgr>(new ZUserStampMgr);
    return m_instance.data();
}

bool ZUserStampMgr::loadUserStampTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZUserStampInfo& info) { m_stamps.insert(info.id, info); });
    qDebug().noquote() << QStringLiteral("StampName加载完毕");
    return true;
}

void ZUserStampMgr::clear()
{
    m_stamps.clear();
}

const QMap<QString, ZUserStampInfo>& ZUserStampMgr::getUserStampMap()
{
    return m_stamps;
}

ZUserStampInfo ZUserStampMgr::getInfoById(const QString& id)
{
    return m_stamps.value(id);
}

QString ZUserStampMgr::getStampImageUrlById(const QString& id)
{
    const ZUserStampInfo stamp = getInfoById(id);
    if (stamp.picture.isEmpty())
        return {};
    return QStringLiteral("%1/app/logo/stamp/%2?%3")
        .arg(ResourceServer::images(), stamp.picture, QString::number(stamp.version));
}

QString ZUserStampMgr::getStampImagePathById(const QString& id)
{
    return CacheNames::imagePath(getStampImageUrlById(id));
}

TableDescription ZUserStampMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance()->m_stamps; });
}
