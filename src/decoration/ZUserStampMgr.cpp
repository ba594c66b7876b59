#include "decoration/ZUserStampMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"

namespace {

constexpr char pictureFolder[] = "/app/logo/stamp/";

} // namespace

QSharedPointer<ZUserStampMgr> ZUserStampMgr::m_instance;

ZUserStampMgr* ZUserStampMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZUserStampMgr>(new ZUserStampMgr);
    return m_instance.data();
}

const TableDeclaration& ZUserStampMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZUserStampMgr, ZUserStampInfo> table {
        {
            {Required, Text(), Z_FIELD(ZUserStampInfo, id)},
            {Required, Text(), Z_FIELD(ZUserStampInfo, name), TextUse::Name},
            {Optional, Text(), Z_FIELD(ZUserStampInfo, picture),
             FileOn {"ImageResServer", pictureFolder}},
            {Optional, Integer(), Z_FIELD(ZUserStampInfo, duration)},
            {Optional, Integer(), Z_FIELD(ZUserStampInfo, version)},
        },
        KeyedBy {&ZUserStampInfo::id, &ZUserStampMgr::m_stamps},
        Logs {"StampName加载完毕"}};
    return table;
}

bool ZUserStampMgr::loadUserStampTable(const QString& path)
{
    return declaration().load(path);
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
    return ResourceServer::versionedImage(pictureFolder, stamp.picture, stamp.version);
}

QString ZUserStampMgr::getStampImagePathById(const QString& id)
{
    return CacheNames::imagePath(getStampImageUrlById(id));
}
