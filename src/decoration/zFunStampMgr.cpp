#include "decoration/zFunStampMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"

namespace {

constexpr char pictureFolder[] = "/app/logo/funstamp/";

} // namespace

zFunStampMgr& zFunStampMgr::getInstance()
{
    static zFunStampMgr instance;
    return instance;
}

const TableDeclaration& zFunStampMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<zFunStampMgr, zFunStampInfo> table {
        {
            {Required, Text(), Z_FIELD(zFunStampInfo, id)},
            {Optional, Text(), Z_FIELD(zFunStampInfo, activityId)},
            {Required, Text(), Z_FIELD(zFunStampInfo, name), TextUse::Name},
            {Required, Text(), Z_FIELD(zFunStampInfo, picture),
             FileOn {"ImageResServer", pictureFolder}},
            {Optional, Date(), Z_FIELD(zFunStampInfo, startTime)},
            {Optional, Date(), Z_FIELD(zFunStampInfo, endTime), EndOf {"startTime"}},
        },
        KeyedBy {&zFunStampInfo::id, &zFunStampMgr::m_stamps},
        Logs {"FunStamp加载完毕"}};
    return table;
}

bool zFunStampMgr::loadListTable(const QString& path)
{
    return declaration().load(path);
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
    return ResourceServer::versionedImage(pictureFolder, stamp.picture, version);
}

QString zFunStampMgr::getFunStampImagePathById(const QString& id)
{
    return CacheNames::imagePath(getFunStampImageUrlById(id));
}
