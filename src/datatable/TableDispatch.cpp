#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "chat/ZMessageMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageCarInfoListMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "decoration/ZMedalMgr.h"
#include "decoration/ZUserStampMgr.h"
#include "decoration/zFunStampMgr.h"
#include "effect/ZActivityAwardEffectMgr.h"
#include "effect/ZAwardEffectMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "effect/ZRecreationMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "gift/ZGiftListMgr.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/ZPCSkinMgr.h"
#include "presentation/ZPublicConfigMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "privilege/ZFansConfigMgr.h"
#include "privilege/ZNobilityListMgr.h"
#include "privilege/zFirstRechargeBox.h"
#include "privilege/zNoblePrivilegeMgr.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <iterator>

// The one place that knows both the tables and their managers; the managers know ZDataTableMgr, so
// nothing else here may know them.

namespace {

/** A manager's part in a table: how it loads it and what it says of it. */
struct TableReader
{
    EDataTable::EDataTableType type;
    const char* manager;
    const char* loader;
    bool (*load)(const QString& path);
    TableDescription (*describe)();
};

/** A step of the start-up load. */
struct StartStep
{
    TableReader reader;
    const char* title;              ///< what the log calls the table
    bool essential = false;         ///< its failure ends the start-up load
    void (*before)() = nullptr;     ///< what has to happen before the table is loaded
    void (*afterwards)() = nullptr; ///< what follows whether or not the table was loaded
};

template <class Manager>
Manager& managerAt(Manager* manager)
{
    return *manager;
}
template <class Manager>
Manager& managerAt(Manager& manager)
{
    return manager;
}

/** Loads a table with a manager's operation, whichever form its getInstance() has. */
template <class Manager, bool (Manager::*load)(const QString&)>
bool loadWith(const QString& path)
{
    return (managerAt(Manager::getInstance()).*load)(path);
}

template <bool isNew>
bool loadBanners(const QString& path)
{
    return ZBannerMgr::getInstance()->loadBannerListTable(path, isNew);
}

#define Z_READER(type, manager, loader, describe)                                                  \
    {                                                                                              \
        EDataTable::type, #manager, #loader, &loadWith<manager, &manager::loader>,                 \
            &manager::describe                                                                     \
    }

// clang-format off
const StartStep startSteps[] = {
    {Z_READER(GroupWelComeWord, ZGroupWelcomelMgr, loadGroupWelcomeTable, describeTable), "群组欢迎言数据表", true},
    {Z_READER(CS_GiftList, ZGiftListMgr, loadGiftListTable, describeTable), "礼物数据表", true},
    {{EDataTable::CS_BannerConfig, "ZBannerMgr", "loadBannerListTable", &loadBanners<false>,
      &ZBannerMgr::describeTable},
     "Banner数据表", false, [] { ZBannerMgr::getInstance()->clear(); }},
    {{EDataTable::CS_BannerConfigNew, "ZBannerMgr", "loadBannerListTable", &loadBanners<true>,
      &ZBannerMgr::describeNewTable},
     "Banner 收展数据表", false, nullptr, [] { ZBannerMgr::getInstance()->loadBannerImages(); }},
    {Z_READER(CS_VideoHobbyBanner, ZOtherBannerMgr, loadOtherBannerListTable, describeTable), "视频大厅Banner数据表"},
    {Z_READER(NobleConsume, ZNobilityListMgr, loadNobleConsumeInfoListTable, describeConsumeTable), "NobleConsume贵族费用配置数据表"},
    {Z_READER(NoblePrivilegeConfig, zNoblePrivilegeMgr, loadListTable, describeTable), "贵族特权配置表"},
    {Z_READER(NobleConfig, ZNobilityListMgr, loadNobleConfigInfoListTable, describeConfigTable), "NobleConfig贵族配置数据表"},
    {Z_READER(CS_PlatFunLevel, ZFunLevelMgr, loadFunLevelInfoListTable, describeTable), "CS_PlatFunLevel-主播娱乐等级数据表"},
    {Z_READER(CS_CarList, ZImageCarInfoListMgr, loadImageCarInfoListTable, describeTable), "座驾数据表"},
    {Z_READER(CS_HeadframeList, ZImageFrameInfoListMgr, loadImageFrameInfoListTable, describeTable), "头像边框数据表"},
    {Z_READER(StampName, ZUserStampMgr, loadUserStampTable, describeTable), "盖章数据表"},
    {Z_READER(Message, ZMessageMgr, loadMessageListTable, describeTable), "消息表"},
    {Z_READER(CS_MedalList, ZMedalMgr, loadMedalListTable, describeTable), "勋章数据表"},
    {Z_READER(CS_GiftLabel, ZGiftLabelMgr, loadListTable, describeTable), "礼物标签表"},
    {Z_READER(PublicConfig, ZPublicConfigMgr, loadListTable, describeTable), "公共配置表"},
    {Z_READER(SystemConfig, ZSystemConfigMgr, loadListTable, describeTable), "后台通用配置表"},
    {Z_READER(BubbleConfig, ZBubbleConfigMgr, loadListTable, describeTable), "气泡样式配置表"},
    {Z_READER(RecreationConfigNew, ZRecreationMgr, loadRecreationListTable, describeTable), "魔法表情配置表"},
    {Z_READER(PCSkin, ZPCSkinMgr, loadListTable, describeTable), "皮肤配置表"},
    {Z_READER(Doutu, ZDoutuMgr, loadListTable, describeTable), "表情包配置表"},
    {Z_READER(FlashConfig, ZFlashConfigMgr, loadListTable, describeTable), "Flash配置表"},
    {Z_READER(H5WebConfig, zH5WebConfigMgr, loadListTable, describeTable), "H5页面配置表"},
    {Z_READER(FirstRechargeBoxTask, zFirstRechargeBox, loadListTable, describeTable), "首充信息表"},
    {Z_READER(CS_FunStamp, zFunStampMgr, loadListTable, describeTable), "头像贴活动表"},
    {Z_READER(QuickInputMessage, ZQuickInputMessageMgr, loadListTable, describeTable), "快捷输入表"},
    {Z_READER(FansConfigNew, ZFansConfigMgr, loadListTable, describeTable), "守护团配置表"},
};

/** Tables that the program that embeds the library loads itself. */
const TableReader otherReaders[] = {
    Z_READER(NewChatFilterWordKey, ZSensitiveWordsInfoListMgr, loadNewSensitiveWordsInfoListTable, describeNewTable),
    Z_READER(ChatFilterWordKey, ZSensitiveWordsInfoListMgr, loadSensitiveWordsInfoListTable, describeTable),
    Z_READER(CS_PlatAwardEffect, ZAwardEffectMgr, loadListTable, describeTable),
};
// clang-format on

/** Loads one table and says so in the log; an essential one that fails loses its file. */
bool load(const StartStep& step, const QString& path, const QString& fileName)
{
    const bool loaded = step.reader.load(path);
    if (!loaded && step.essential)
        QFile::remove(path);
    const QString outcome = loaded ? QStringLiteral("加载成功") : QStringLiteral("加载失败");
    qDebug().noquote() << QString::fromUtf8(step.title) + outcome << fileName;
    return loaded;
}

TableReport reportOf(const TableReader& reader)
{
    TableReport report;
    report.kind = reader.type;
    report.table = TableCatalogue::name(reader.type);
    report.manager = QString::fromLatin1(reader.manager);
    report.loader = QString::fromLatin1(reader.loader);
    report.description = reader.describe();
    return report;
}

} // namespace

bool ZDataTableMgr::loadAllTables()
{
    for (const StartStep& step : startSteps) {
        if (step.before != nullptr)
            step.before();
        const EDataTable::EDataTableType type = step.reader.type;
        const bool loaded = load(step, getTablePath(type), getTableFileName(type));
        m_loadResults.insert(type, loaded);
        if (!loaded && step.essential)
            return false;
        if (step.afterwards != nullptr)
            step.afterwards();
    }
    return true;
}

void ZDataTableMgr::loadGiftTable()
{
    updateGiftDataTable()
        .then([this] {
            const EDataTable::EDataTableType type = EDataTable::CS_GiftList;
            const auto* gifts =
                std::find_if(std::begin(startSteps), std::end(startSteps),
                             [](const StartStep& step) { return step.reader.type == type; });
            m_loadResults.insert(type, load(*gifts, getTablePath(type), getTableFileName(type)));
        })
        .fail([] {}); // the update has logged why
}

QVector<TableReport> ZDataTableMgr::getTableReports() const
{
    QVector<TableReport> reports;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        TableReport report;
        report.kind = type;
        report.table = TableCatalogue::name(type);
        for (const StartStep& step : startSteps) {
            if (step.reader.type != type)
                continue;
            report = reportOf(step.reader);
            report.loadedAtStart = true;
        }
        for (const TableReader& reader : otherReaders) {
            if (reader.type == type)
                report = reportOf(reader);
        }
        if (m_loadResults.contains(type))
            report.state = m_loadResults.value(type) ? TableReport::Loaded : TableReport::Failed;
        reports.append(report);
    }
    TableReport activityAwards;
    activityAwards.table = QStringLiteral("ActivityAwardEffect");
    activityAwards.manager = QStringLiteral("ZActivityAwardEffectMgr");
    activityAwards.loader = QStringLiteral("loadListTable");
    activityAwards.description = ZActivityAwardEffectMgr::describeTable();
    reports.append(activityAwards);
    return reports;
}
