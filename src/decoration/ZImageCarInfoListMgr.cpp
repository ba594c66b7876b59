#include "decoration/ZImageCarInfoListMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

const TableColumns<ZImageCarInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZImageCarInfo> declared {
        {Required, "id", Text(), Z_FIELD(ZImageCarInfo, id)},
        {Required, "name", Text(), Z_FIELD(ZImageCarInfo, name)},
        {Optional, "description", Text(), Z_FIELD(ZImageCarInfo, description)},
        {Optional, "price", Integer(), Z_FIELD(ZImageCarInfo, price)},
        {Required, "animation", Text(), Z_FIELD(ZImageCarInfo, animation)},
        {Optional, "picture", Text(), Z_FIELD(ZImageCarInfo, picture)},
        {Required, "version", Integer(), Z_FIELD(ZImageCarInfo, version)},
        {Optional, "startTime", Date(), Z_FIELD(ZImageCarInfo, startTime)},
        {Optional, "endTime", Date(), Z_FIELD(ZImageCarInfo, endTime)},
    };
    return declared;
}

} // namespace

QSharedPointer<ZImageCarInfoListMgr> ZImageCarInfoListMgr::m_instance;

ZImageCarInfoListMgr* ZImageCarInfoListMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZImageCarInfoListMgr>(new ZImageCarInfoListMgr);
    return m_instance.data();
}

bool ZImageCarInfoListMgr::loadImageCarInfoListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZImageCarInfo& info) { m_cars.insert(info.id, info); });
    qDebug().noquote() << QStringLiteral("CarList加载完毕");
    return true;
}

void ZImageCarInfoListMgr::clear()
{
    m_cars.clear();
}

const QMap<QString, ZImageCarInfo>& ZImageCarInfoListMgr::getImageCarMap()
{
    return m_cars;
}

ZImageCarInfo ZImageCarInfoListMgr::getInfoById(const QString& id)
{
    return m_cars.value(id);
}

QString ZImageCarInfoListMgr::getCarImageUrlById(const QString& id)
{
    const ZImageCarInfo car = getInfoById(id);
    if (car.picture.isEmpty())
        return {};
    return QStringLiteral("%1/app/logo/car/%2?%3")
        .arg(ResourceServer::images(), car.picture, QString::number(car.version));
}

QString ZImageCarInfoListMgr::getCarImagePathById(const QString& id)
{
    return CacheNames::imagePath(getCarImageUrlById(id));
}

QString ZImageCarInfoListMgr::getCarAnimationUrlById(const QString& id)
{
    const ZImageCarInfo car = getInfoById(id);
    if (car.animation.isEmpty())
        return {};
    return QStringLiteral("%1/app/logo/caranimation/%2?%3")
        .arg(ResourceServer::images(), car.animation, QString::number(car.version));
}

QString ZImageCarInfoListMgr::getCarAnimationPathById(const QString& id)
{
    const ZImageCarInfo car = getInfoById(id);
    if (car.animation.isEmpty())
        return {};
    return QStringLiteral("%1/%2_%3")
        .arg(QStringLiteral("res/flashext"), CacheNames::withoutExtension(car.animation),
             QString::number(car.version));
}

TableDescription ZImageCarInfoListMgr::describeTable()
{
    return columns().describe(QStringLiteral("id"), laterRowWins(),
                              [] { return getInstance()->m_cars; });
}
