#include "effect/ZRecreationMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "datatable/ZDataTableMgr.h"

namespace {

constexpr char magicFolder[] = "/app/logo/magic/";

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

const TableDeclaration& ZRecreationMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZRecreationMgr, recreationInfo> table {
        {
            {Optional, Text(), Z_FIELD(recreationInfo, id),
             FileOn {"ImageResServer", magicFolder, "{}.png"}},
            {Optional, Text(), Z_FIELD(recreationInfo, name), TextUse::Name},
            {Optional, Text(), Z_FIELD(recreationInfo, playType)},
            {Optional, Text(), Z_FIELD(recreationInfo, num)},
            {Optional, Text(), Z_FIELD(recreationInfo, range)},
            {Optional, Text(), Z_FIELD(recreationInfo, flashName),
             ArchiveOn {"ImageResServer", magicFolder, "flashVersion"}},
            {Optional, Text(), Z_FIELD(recreationInfo, flashVersion)},
        },
        Emptied {&ZRecreationMgr::m_idsByType},
        EachRow {[](ZRecreationMgr& effects, const recreationInfo& info, const QJsonArray&) {
            effects.addRecreationIdToMap(info.id);
        }},
        LeftOut {&recreationInfo::id,
                 "a row without it is left out; its first letter tells the kind",
                 [](const recreationInfo& info) { return info.id.isEmpty(); }, true},
        KeyedBy {&recreationInfo::id, &ZRecreationMgr::m_infos},
        Duplicates {"the later row replaces the earlier, the list of its kind holds both"},
        Logs {"RecreationConfigNew.json加载完毕"}};
    return table;
}

bool ZRecreationMgr::loadRecreationListTable(const QString& path)
{
    return declaration().load(path);
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
    const QString version = getRecreationInfoById(id).flashVersion;
    return CacheNames::VersionedName {getRecreationAnimationNameById(id), version}.in(
        CacheFolders::animations());
}

QString ZRecreationMgr::getRecreationAnimationUrlById(const QString& id)
{
    if (!m_infos.contains(id))
        return {};
    const recreationInfo info = getRecreationInfoById(id);
    return ResourceServer::versionedImage(magicFolder, info.flashName, info.flashVersion);
}

QString ZRecreationMgr::getRecreationImageUrlById(const QString& id)
{
    if (!m_infos.contains(id))
        return {};
    const int version =
        ZDataTableMgr::getInstance()->getTableVersion(EDataTable::RecreationConfigNew);
    return ResourceServer::versionedImage(magicFolder, id + QStringLiteral(".png"),
                                          QStringLiteral("imageView2/0/w/138/h/138&")
                                              + QString::number(version));
}

QString ZRecreationMgr::getRecreationImagePathById(const QString& id)
{
    return CacheNames::imagePath(getRecreationImageUrlById(id));
}
