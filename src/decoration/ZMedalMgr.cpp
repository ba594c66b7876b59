#include "decoration/ZMedalMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"

#include <QDebug>
#include <QJsonDocument>

namespace {

const TableColumns<ZMedalInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZMedalInfo> declared {
        {Required, "medalId", IntegerAsText(), Z_FIELD(ZMedalInfo, medalId)},
        {Required, "groupId", IntegerAsText(), Z_FIELD(ZMedalInfo, groupId)},
        {Required, "groupSort", Integer(), Z_FIELD(ZMedalInfo, groupSort)},
        {Required, "type", Integer(), Z_FIELD(ZMedalInfo, type)},
        {Required, "name", Text(), Z_FIELD(ZMedalInfo, name)},
        {Required, "groupHandleType", Integer(), Z_FIELD(ZMedalInfo, groupHandleType)},
        {Required, "timeHandleType", Integer(), Z_FIELD(ZMedalInfo, timeHandleType)},
        {Required, "size", Text(), Z_FIELD(ZMedalInfo, size)},
        {Required, "icon", Text(), Z_FIELD(ZMedalInfo, icon)},
        {Required, "description", Text(), Z_FIELD(ZMedalInfo, description)},
        {Required, "isCommon", IntegerAsText(), Z_FIELD(ZMedalInfo, isCommon)},
        {Required, "version", Integer(), Z_FIELD(ZMedalInfo, version)},
        {Required, "dynamicUrl", Text(), Z_FIELD(ZMedalInfo, dynamicUrl)},
    };
    return declared;
}

} // namespace

QSharedPointer<ZMedalMgr> ZMedalMgr::m_instance;

ZMedalMgr* ZMedalMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZMedalMgr>(new ZMedalMgr);
    return m_instance.data();
}

bool ZMedalMgr::loadMedalListTable(const QString& path)
{
    TableRows rows;
    if (!rows.read(path))
        return false;
    m_header = rows.header;
    const auto table = columns().bind(rows);
    if (!table)
        return false;
    clear();
    table->forEach([this](const ZMedalInfo& info, const QJsonArray& row) {
        m_medals.insert(info.medalId, info);
        m_rows.insert(info.medalId, row);
    });
    qDebug().noquote() << QStringLiteral("MedalList.json加载完毕");
    return true;
}

void ZMedalMgr::clear()
{
    m_medals.clear();
}

const QHash<QString, ZMedalInfo>& ZMedalMgr::getMedalMap()
{
    return m_medals;
}

QString ZMedalMgr::getMedalNameById(const QString& id)
{
    return m_medals.value(id).name;
}

QString ZMedalMgr::getMedalImageUrlById(const QString& id)
{
    if (id.isEmpty())
        return {};
    const int version = ZDataTableMgr::getInstance()->getTableVersion(EDataTable::CS_MedalList);
    return ResourceServer::images()
        + QStringLiteral("/app/images/activity/tags/medal_%1.png?%2")
              .arg(id, QString::number(version));
}

QString ZMedalMgr::getMedalImagePathById(const QString& id)
{
    return CacheNames::imagePath(getMedalImageUrlById(id));
}

QString ZMedalMgr::getMedalDynamicUrlById(const QString& id)
{
    const QString address = m_medals.value(id).dynamicUrl;
    return address.isEmpty() ? QString() : ResourceServer::images() + address;
}

QString ZMedalMgr::getShouHuMedalImagePathById(const QString& id)
{
    if (id.isEmpty())
        return {};
    return QStringLiteral("ui/medal/achieveLevel/") + QStringLiteral("/%1.png").arg(id);
}

QJsonObject ZMedalMgr::getMedalJsonInfoById(const QString& id)
{
    const auto row = m_rows.constFind(id);
    if (row == m_rows.constEnd())
        return {};
    QJsonObject object;
    for (auto column = m_header.constBegin(); column != m_header.constEnd(); ++column)
        object.insert(column.key(), row->at(column.value()));
    return object;
}

QString ZMedalMgr::getMedalInfoById(const QString& id)
{
    const QJsonObject object = getMedalJsonInfoById(id);
    if (object.isEmpty())
        return {};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

TableDescription ZMedalMgr::describeTable()
{
    return columns().describe(QStringLiteral("medalId"), laterRowWins(),
                              [] { return getInstance()->m_medals; });
}
