#include "privilege/ZNobilityListMgr.h"

#include "datatable/TableColumns.h"

#include <QDebug>

#include <algorithm>

namespace {

const TableColumns<ZNobleConsumeInfo>& consumeColumns()
{
    using namespace Cells;
    static const TableColumns<ZNobleConsumeInfo> declared {
        {Required, "nobleId", TextAsInteger(), Z_FIELD(ZNobleConsumeInfo, nobleId)},
        {Required, "nobleName", Text(), Z_FIELD(ZNobleConsumeInfo, nobleName)},
        {Required, "blackBean", Text(), Z_FIELD(ZNobleConsumeInfo, blackBean)},
        {Required, "returnDiamond", Text(), Z_FIELD(ZNobleConsumeInfo, returnDiamond)},
        {Required, "upgradeReturnDiamond", TextList(),
         Z_FIELD(ZNobleConsumeInfo, upgradeReturnDiamond)},
        {Required, "renewBlackBean", Text(), Z_FIELD(ZNobleConsumeInfo, renewBlackBean)},
        {Required, "renewReturnDiamond", Text(), Z_FIELD(ZNobleConsumeInfo, renewReturnDiamond)},
        {Required, "time", TextAsInteger(), Z_FIELD(ZNobleConsumeInfo, time)},
    };
    return declared;
}

const TableColumns<stNobleConfig>& configColumns()
{
    using namespace Cells;
    static const TableColumns<stNobleConfig> declared {
        {Required, "nobleId", Text(), Z_FIELD(stNobleConfig, nobleId)},
        {Required, "chatSkinList", Text(), Z_FIELD(stNobleConfig, chatSkinList)},
        {Required, "headFrameId", Text(), Z_FIELD(stNobleConfig, headFrameId)},
        {Required, "exclusiveCar", Text(), Z_FIELD(stNobleConfig, exclusiveCar)},
        {Required, "customCar", TextAsFlag(), Z_FIELD(stNobleConfig, customCar)},
    };
    return declared;
}

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

bool ZNobilityListMgr::loadNobleConsumeInfoListTable(const QString& path)
{
    const auto table = consumeColumns().read(path);
    if (!table)
        return false;
    m_consumeInfos.clear();
    m_nobleIds.clear();
    table->forEach([this](const ZNobleConsumeInfo& info) {
        m_consumeInfos.insert(info.nobleId, info);
        m_nobleIds.append(info.nobleId);
    });
    qDebug().noquote() << QStringLiteral("loadNobleConsumeInfoListTable.json加载完毕");
    return true;
}

bool ZNobilityListMgr::loadNobleConfigInfoListTable(const QString& path)
{
    const auto table = configColumns().read(path);
    if (!table)
        return false;
    m_configs.clear();
    table->forEach(
        [this](const stNobleConfig& config) { m_configs.insert(config.nobleId, config); });
    qDebug().noquote() << QStringLiteral("loadNobleConfigInfoListTable.json加载完毕");
    return true;
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

TableDescription ZNobilityListMgr::describeConsumeTable()
{
    return consumeColumns().describe(
        QStringLiteral("nobleId"),
        QStringLiteral("the later row replaces the earlier, the list of ranks holds both"),
        [] { return getInstance()->m_consumeInfos; });
}

TableDescription ZNobilityListMgr::describeConfigTable()
{
    return configColumns().describe(QStringLiteral("nobleId"), laterRowWins(),
                                    [] { return getInstance()->m_configs; });
}
