#include "privilege/zFirstRechargeBox.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"

#include <QDebug>

namespace {

const TableColumns<zFirstRechargeBoxInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<zFirstRechargeBoxInfo> declared {
        {Required, "id", Text(), Z_FIELD(zFirstRechargeBoxInfo, id)},
        {Required, "name", Text(), Z_FIELD(zFirstRechargeBoxInfo, name)},
        {Required, "amount", Number(), Z_FIELD(zFirstRechargeBoxInfo, amount)},
        {Optional, "rewards", TextList(), Z_FIELD(zFirstRechargeBoxInfo, rewards)},
        {Optional, "picture", Text(), Z_FIELD(zFirstRechargeBoxInfo, picture)},
        {Optional, "startTime", Date(), Z_FIELD(zFirstRechargeBoxInfo, startTime)},
        {Optional, "endTime", Date(), Z_FIELD(zFirstRechargeBoxInfo, endTime)},
    };
    return declared;
}

} // namespace

zFirstRechargeBox& zFirstRechargeBox::getInstance()
{
    static zFirstRechargeBox instance;
    return instance;
}

bool zFirstRechargeBox::loadListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const zFirstRechargeBoxInfo& info) {
        m_infos.insert(info.id, info);
        m_list.append(info);
    });
    qDebug().noquote() << QStringLiteral("FirstRechargeBoxTask加载完毕");
    return true;
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
    return QStringLiteral("%1/app/logo/firstrecharge/%2?%3")
        .arg(ResourceServer::images(), picture, QString::number(version));
}

QString zFirstRechargeBox::getPicturePathById(const QString& id)
{
    return CacheNames::imagePath(getPictureUrlById(id));
}

TableDescription zFirstRechargeBox::describeTable()
{
    return columns().describe(QStringLiteral("id"),
                              QStringLiteral("the map holds the later row, the list both"),
                              [] { return getInstance().m_list; });
}
