#include "privilege/ZNobilityListMgr.h"

#include "datatable/DeclaredTable.h"

#include <algorithm>

namespace {

bool ownsCar(const stNobleConfig& config, const QString& carId)
{
    if (config.exclusiveCar.isEmpty())
        return false;
    if (config.customCar)
        return carId.startsWith(config.exclusiveCar, Qt::CaseInsensitive);
    return carId.compare(config.exclusiveCar, Qt::CaseInsensitive) == 0;
}

} // namespace

QSharedPointer<ZNobilityListMgr> ZNobilityListMgr::m_instance;

ZNobilityListMgr* ZNobilityListMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZNobilityListMgr>(new ZNobilityListMgr);
    return m_instance.data();
}

const TableDeclaration& ZNobilityListMgr::configDeclaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZNobilityListMgr, stNobleConfig> table {
        {
            {Required, Text(), Z_FIELD(stNobleConfig, nobleId)},
            {Required, Text(), Z_FIELD(stNobleConfig, chatSkinList)},
            {Required, Text(), Z_FIELD(stNobleConfig, headFrameId),
             RefersTo {EDataTable::CS_HeadframeList, "headFrameId"}},
            {Required, Text(), Z_FIELD(stNobleConfig, exclusiveCar),
             RefersTo {EDataTable::CS_CarList, "id", ReferenceForm::Beginning}},
            {Required, TextAsFlag(), Z_FIELD(stNobleConfig, customCar)},
        },
        KeyedBy {&stNobleConfig::nobleId, &ZNobilityListMgr::m_configs},
        Logs {"loadNobleConfigInfoListTable.json加载完毕"}};
    return table;
}

const TableDeclaration& ZNobilityListMgr::consumeDeclaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZNobilityListMgr, ZNobleConsumeInfo> table {
        {
            {Required, TextAsInteger(), Z_FIELD(ZNobleConsumeInfo, nobleId)},
            {Required, Text(), Z_FIELD(ZNobleConsumeInfo, nobleName), TextUse::Name},
            {Required, Text(), Z_FIELD(ZNobleConsumeInfo, blackBean)},
            {Required, Text(), Z_FIELD(ZNobleConsumeInfo, returnDiamond)},
            {Required, TextList(), Z_FIELD(ZNobleConsumeInfo, upgradeReturnDiamond)},
            {Required, Text(), Z_FIELD(ZNobleConsumeInfo, renewBlackBean)},
            {Required, Text(), Z_FIELD(ZNobleConsumeInfo, renewReturnDiamond)},
            {Required, TextAsInteger(), Z_FIELD(ZNobleConsumeInfo, time)},
        },
        KeyedBy {&ZNobleConsumeInfo::nobleId, &ZNobilityListMgr::m_consumeInfos},
        Emptied {&ZNobilityListMgr::m_nobleIds},
        EachRow {[](ZNobilityListMgr& nobility, const ZNobleConsumeInfo& info, const QJsonArray&) {
            nobility.m_nobleIds.append(info.nobleId);
        }},
        Duplicates {"the later row replaces the earlier, the list of ranks holds both"},
        Logs {"loadNobleConsumeInfoListTable.json加载完毕"}};
    return table;
}

bool ZNobilityListMgr::loadNobleConsumeInfoListTable(const QString& path)
{
    return consumeDeclaration().load(path);
}

bool ZNobilityListMgr::loadNobleConfigInfoListTable(const QString& path)
{
    return configDeclaration().load(path);
}

void ZNobilityListMgr::clear()
{
    m_consumeInfos.clear();
    m_nobleIds.clear();
    m_configs.clear();
}

const QVector<int>& ZNobilityListMgr::getListNobleId()
{
    return m_nobleIds;
}

ZNobleConsumeInfo ZNobilityListMgr::getNobleConsumeInfoById(int id)
{
    return m_consumeInfos.value(id);
}

stNobleConfig ZNobilityListMgr::getNobleConfigInfoById(QString id)
{
    return m_configs.value(id);
}

bool ZNobilityListMgr::isExclusiveCar(QString carId)
{
    return std::any_of(m_configs.cbegin(), m_configs.cend(),
                       [&](const stNobleConfig& config) { return ownsCar(config, carId); });
}

bool ZNobilityListMgr::isLogoHeadFrame(QString headFrameId)
{
    if (headFrameId.isEmpty())
        return false;
    return std::any_of(m_configs.cbegin(), m_configs.cend(), [&](const stNobleConfig& config) {
        return config.headFrameId == headFrameId;
    });
}
