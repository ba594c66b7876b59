#include "privilege/zFirstRechargeBox.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"

namespace {

constexpr char pictureFolder[] = "/app/logo/firstrecharge/";

} // namespace

zFirstRechargeBox& zFirstRechargeBox::getInstance()
{
    static zFirstRechargeBox instance;
    return instance;
}

const TableDeclaration& zFirstRechargeBox::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<zFirstRechargeBox, zFirstRechargeBoxInfo> table {
        {
            {Required, Text(), Z_FIELD(zFirstRechargeBoxInfo, id)},
            {Required, Text(), Z_FIELD(zFirstRechargeBoxInfo, name), TextUse::Name},
            {Required, Number(), Z_FIELD(zFirstRechargeBoxInfo, amount), Between {0}},
            {Optional, TextList(), Z_FIELD(zFirstRechargeBoxInfo, rewards)},
            {Optional, Text(), Z_FIELD(zFirstRechargeBoxInfo, picture),
             FileOn {"ImageResServer", pictureFolder}},
            {Optional, Date(), Z_FIELD(zFirstRechargeBoxInfo, startTime)},
            {Optional, Date(), Z_FIELD(zFirstRechargeBoxInfo, endTime), EndOf {"startTime"}},
        },
        KeyedBy {&zFirstRechargeBoxInfo::id, &zFirstRechargeBox::m_infos},
        Listed {&zFirstRechargeBox::m_list},
        Logs {"FirstRechargeBoxTask加载完毕"}};
    return table;
}

bool zFirstRechargeBox::loadListTable(const QString& path)
{
    return declaration().load(path);
}

void zFirstRechargeBox::clear()
{
    m_infos.clear();
    m_list.clear();
}

zFirstRechargeBoxInfo zFirstRechargeBox::getInfoById(const QString& id)
{
    return m_infos.value(id);
}

const QVector<zFirstRechargeBoxInfo>& zFirstRechargeBox::getList()
{
    return m_list;
}

QString zFirstRechargeBox::getPictureUrlById(const QString& id)
{
    const QString picture = getInfoById(id).picture;
    if (picture.isEmpty())
        return {};
    const int version =
        ZDataTableMgr::getInstance()->getTableVersion(EDataTable::FirstRechargeBoxTask);
    return ResourceServer::versionedImage(pictureFolder, picture, version);
}

QString zFirstRechargeBox::getPicturePathById(const QString& id)
{
    return CacheNames::imagePath(getPictureUrlById(id));
}
