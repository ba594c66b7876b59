#include "effect/ZRecreationMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"
#include "datatable/ZDataTableMgr.h"

#include <QDebug>

namespace {

const TableColumns<recreationInfo>& columns()
{
    using Cells::Text;
    static const TableColumns<recreationInfo> declared {
        {Optional, "id", Text(), Z_FIELD(recreationInfo, id),
         "a row without it is left out; its first letter tells the kind"},
        {Optional, "name", Text(), Z_FIELD(recreationInfo, name)},
        {Optional, "playType", Text(), Z_FIELD(recreationInfo, playType)},
        {Optional, "num", Text(), Z_FIELD(recreationInfo, num)},
        {Optional, "range", Text(), Z_FIELD(recreationInfo, range)},
        {Optional, "flashName", Text(), Z_FIELD(recreationInfo, flashName)},
        {Optional, "flashVersion", Text(), Z_FIELD(recreationInfo, flashVersion)},
    };
    return declared;
}

const QHash<QChar, recreationType>& typesByLetter()
{
    static const QHash<QChar, recreationType> types {
        {QLatin1Char('R'), E_RecreationGame},
        {QLatin1Char('M'), E_RecreationMagic},
        {QLatin1Char('W'), E_RecreationWish},
    };
    return types;
}

} // namespace

ZRecreationMgr& ZRecreationMgr::getInstance()
{
    static ZRecreationMgr instance;
    return instance;
}

bool ZRecreationMgr::loadRecreationListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach([this](const recreationInfo& info) {
        if (info.id.isEmpty())
            return;
        addRecreationIdToMap(info.id);
        m_infos.insert(info.id, info);
    });
    qDebug().noquote() << QStringLiteral("RecreationConfigNew.json加载完毕");
    return true;
}

void ZRecreationMgr::clear()
{
    m_infos.clear();
    m_idsByType.clear();
}

void ZRecreationMgr::addRecreationIdToMap(const QString& id)
{
    const auto type = typesByLetter().constFind(id.isEmpty() ? QChar() : id.front());
    if (type != typesByLetter().constEnd())
        m_idsByType[*type].append(id);
}

QStringList ZRecreationMgr::getRecreationIdByTypeKey(recreationType type)
{
    return m_idsByType.value(type);
}

recreationInfo ZRecreationMgr::getRecreationInfoById(const QString& id)
{
    return m_infos.value(id);
}

QString ZRecreationMgr::getRecreationPlayType(const QString& id)
{
    return getRecreationInfoById(id).playType;
}

QString ZRecreationMgr::getRecreationAnimationNameById(const QString& id)
{
    return CacheNames::withoutExtension(getRecreationInfoById(id).flashName);
}

QString ZRecreationMgr::getRecreationAnimationPathById(const QString& id)
{
    if (!m_infos.contains(id))
        return {};
    return QStringLiteral("%1/%2_%3")
        .arg(QStringLiteral("res/animation/"), getRecreationAnimationNameById(id),
             getRecreationInfoById(id).flashVersion);
}

QString ZRecreationMgr::getRecreationAnimationUrlById(const QString& id)
{
    if (!m_infos.contains(id))
        return {};
    const recreationInfo info = getRecreationInfoById(id);
    return QStringLiteral("%1/app/logo/magic/%2?%3")
        .arg(ResourceServer::images(), info.flashName, info.flashVersion);
}

QString ZRecreationMgr::getRecreationImageUrlById(const QString& id)
{
    if (!m_infos.contains(id))
        return {};
    const int version =
        ZDataTableMgr::getInstance()->getTableVersion(EDataTable::RecreationConfigNew);
    return QStringLiteral("%1/app/logo/magic/%2.png?imageView2/0/w/138/h/138&%3")
        .arg(ResourceServer::images(), id, QString::number(version));
}

QString ZRecreationMgr::getRecreationImagePathById(const QString& id)
{
    return CacheNames::imagePath(getRecreationImageUrlById(id));
}

TableDescription ZRecreationMgr::describeTable()
{
    return columns().describe(
        QStringLiteral("id"),
        QStringLiteral("the later row replaces the earlier, the list of its kind holds both"),
        [] { return getInstance().m_infos; });
}
