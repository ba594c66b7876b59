#include "decoration/ZImageCarInfoListMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"

namespace {

constexpr char pictureFolder[] = "/app/logo/car/";
constexpr char animationFolder[] = "/app/logo/caranimation/";

} // namespace

QSharedPointer<ZImageCarInfoListMgr> ZImageCarInfoListMgr::m_instance;

ZImageCarInfoListMgr* ZImageCarInfoListMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZImageCarInfoListMgr>(new ZImageCarInfoListMgr);
    return m_instance.data();
}

const TableDeclaration& ZImageCarInfoListMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZImageCarInfoListMgr, ZImageCarInfo> table {
        {
            {Required, Text(), Z_FIELD(ZImageCarInfo, id)},
            {Required, Text(), Z_FIELD(ZImageCarInfo, name), TextUse::Name},
            {Optional, Text(), Z_FIELD(ZImageCarInfo, description), TextUse::Words},
            {Optional, Integer(), Z_FIELD(ZImageCarInfo, price), Between {0}},
            {Required, Text(), Z_FIELD(ZImageCarInfo, animation),
             ArchiveOn {"ImageResServer", animationFolder, "version"}},
            {Optional, Text(), Z_FIELD(ZImageCarInfo, picture),
             FileOn {"ImageResServer", pictureFolder}},
            {Required, Integer(), Z_FIELD(ZImageCarInfo, version)},
            {Optional, Date(), Z_FIELD(ZImageCarInfo, startTime)},
            {Optional, Date(), Z_FIELD(ZImageCarInfo, endTime), EndOf {"startTime"}},
        },
        KeyedBy {&ZImageCarInfo::id, &ZImageCarInfoListMgr::m_cars},
        Logs {"CarList加载完毕"}};
    return table;
}

bool ZImageCarInfoListMgr::loadImageCarInfoListTable(const QString& path)
{
    return declaration().load(path);
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
    return ResourceServer::versionedImage(pictureFolder, car.picture, car.version);
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
    return ResourceServer::versionedImage(animationFolder, car.animation, car.version);
}

QString ZImageCarInfoListMgr::getCarAnimationPathById(const QString& id)
{
    const ZImageCarInfo car = getInfoById(id);
    if (car.animation.isEmpty())
        return {};
    const QString name = CacheNames::withoutExtension(car.animation);
    return CacheNames::VersionedName {name, QString::number(car.version)}.in(
        CacheFolders::extendedFlashes());
}
