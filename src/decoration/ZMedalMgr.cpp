#include "decoration/ZMedalMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"

#include <QJsonDocument>

QSharedPointer<ZMedalMgr> ZMedalMgr::m_instance;

ZMedalMgr* ZMedalMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZMedalMgr>(new ZMedalMgr);
    return m_instance.data();
}

const TableDeclaration& ZMedalMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZMedalMgr, ZMedalInfo> table {
        {
            {Required, IntegerAsText(), Z_FIELD(ZMedalInfo, medalId),
             FileOn {"ImageResServer", "/app/images/activity/tags/", "medal_{}.png"}},
            {Required, IntegerAsText(), Z_FIELD(ZMedalInfo, groupId)},
            {Required, Integer(), Z_FIELD(ZMedalInfo, groupSort)},
            {Required, Integer(), Z_FIELD(ZMedalInfo, type)},
            {Required, Text(), Z_FIELD(ZMedalInfo, name), TextUse::Name},
            {Required, Integer(), Z_FIELD(ZMedalInfo, groupHandleType)},
            {Required, Integer(), Z_FIELD(ZMedalInfo, timeHandleType)},
            {Required, Text(), Z_FIELD(ZMedalInfo, size)},
            {Required, Text(), Z_FIELD(ZMedalInfo, icon)},
            {Required, Text(), Z_FIELD(ZMedalInfo, description), TextUse::Words},
            {Required, IntegerAsText(), Z_FIELD(ZMedalInfo, isCommon)},
            {Required, Integer(), Z_FIELD(ZMedalInfo, version)},
            {Required, Text(), Z_FIELD(ZMedalInfo, dynamicUrl), FileOn {"ImageResServer", ""}},
        },
        OnceRead {[](ZMedalMgr& medals, const TableRows& rows) { medals.m_header = rows.header; }},
        KeyedBy {&ZMedalInfo::medalId, &ZMedalMgr::m_medals},
        EachRow {[](ZMedalMgr& medals, const ZMedalInfo& info, const QJsonArray& row) {
            medals.m_rows.insert(info.medalId, row);
        }},
        Logs {"MedalList.json加载完毕"}};
    return table;
}

bool ZMedalMgr::loadMedalListTable(const QString& path)
{
    return declaration().load(path);
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
    return ResourceServer::imageRes()
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
    return address.isEmpty() ? QString() : ResourceServer::imageRes() + address;
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
