#include "datatable/TableList.h"

#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "chat/ZMessageMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "datatable/DeclaredTable.h"
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

namespace {

/** Loads a table with a manager's operation, whichever form its getInstance() has. */
template <class Manager, bool (Manager::*load)(const QString&)>
bool loadWith(const QString& path)
{
    return (managerAt(Manager::getInstance()).*load)(path);
}

void clearBanners()
{
    ZBannerMgr::getInstance()->clear();
}

void loadBannerPictures()
{
    ZBannerMgr::getInstance()->loadBannerImages();
}

#define Z_READER(type, manager, loader, declared)                                                  \
    {                                                                                              \
        EDataTable::type, #type, #manager, #loader, &loadWith<manager, &manager::loader>,          \
            &manager::declared                                                                     \
    }

// The operation for banners takes the table's kind as a second argument.
#define Z_BANNERS(type, declared)                                                                  \
    {                                                                                              \
        EDataTable::type, #type, "ZBannerMgr", "loadBannerListTable",                              \
            [](const QString& path) { return ZBannerMgr::declared().load(path); },                 \
            &ZBannerMgr::declared                                                                  \
    }

// A table that has neither kind nor version.
#define Z_UNVERSIONED(table, manager, loader)                                                      \
    {                                                                                              \
        -1, #table, #manager, #loader, &loadWith<manager, &manager::loader>, &manager::declaration \
    }

} // namespace

// A contract with the programs that embed the library: the order of the titled tables is that of
// the start-up load, the two that are essential decide whether it succeeds, and the titles are what
// the log says. A new table goes behind the last of its kind.
const QVector<TableEntry>& tableList()
{
    // clang-format off
    static const QVector<TableEntry> list {
        {Z_READER(GroupWelComeWord, ZGroupWelcomelMgr, loadGroupWelcomeTable, declaration), "群组欢迎言数据表", true},
        {Z_READER(CS_GiftList, ZGiftListMgr, loadGiftListTable, declaration), "礼物数据表", true},
        {Z_BANNERS(CS_BannerConfig, declaration), "Banner数据表", false, &clearBanners},
        {Z_BANNERS(CS_BannerConfigNew, newDeclaration), "Banner 收展数据表", false, nullptr, &loadBannerPictures},
        {Z_READER(CS_VideoHobbyBanner, ZOtherBannerMgr, loadOtherBannerListTable, declaration), "视频大厅Banner数据表"},
        {Z_READER(NobleConsume, ZNobilityListMgr, loadNobleConsumeInfoListTable, consumeDeclaration), "NobleConsume贵族费用配置数据表"},
        {Z_READER(NoblePrivilegeConfig, zNoblePrivilegeMgr, loadListTable, declaration), "贵族特权配置表"},
        {Z_READER(NobleConfig, ZNobilityListMgr, loadNobleConfigInfoListTable, configDeclaration), "NobleConfig贵族配置数据表"},
        {Z_READER(CS_PlatFunLevel, ZFunLevelMgr, loadFunLevelInfoListTable, declaration), "CS_PlatFunLevel-主播娱乐等级数据表"},
        {Z_READER(CS_CarList, ZImageCarInfoListMgr, loadImageCarInfoListTable, declaration), "座驾数据表"},
        {Z_READER(CS_HeadframeList, ZImageFrameInfoListMgr, loadImageFrameInfoListTable, declaration), "头像边框数据表"},
        {Z_READER(StampName, ZUserStampMgr, loadUserStampTable, declaration), "盖章数据表"},
        {Z_READER(Message, ZMessageMgr, loadMessageListTable, declaration), "消息表"},
        {Z_READER(CS_MedalList, ZMedalMgr, loadMedalListTable, declaration), "勋章数据表"},
        {Z_READER(CS_GiftLabel, ZGiftLabelMgr, loadListTable, declaration), "礼物标签表"},
        {Z_READER(PublicConfig, ZPublicConfigMgr, loadListTable, declaration), "公共配置表"},
        {Z_READER(SystemConfig, ZSystemConfigMgr, loadListTable, declaration), "后台通用配置表"},
        {Z_READER(BubbleConfig, ZBubbleConfigMgr, loadListTable, declaration), "气泡样式配置表"},
        {Z_READER(RecreationConfigNew, ZRecreationMgr, loadRecreationListTable, declaration), "魔法表情配置表"},
        {Z_READER(PCSkin, ZPCSkinMgr, loadListTable, declaration), "皮肤配置表"},
        {Z_READER(Doutu, ZDoutuMgr, loadListTable, declaration), "表情包配置表"},
        {Z_READER(FlashConfig, ZFlashConfigMgr, loadListTable, declaration), "Flash配置表"},
        {Z_READER(H5WebConfig, zH5WebConfigMgr, loadListTable, declaration), "H5页面配置表"},
        {Z_READER(FirstRechargeBoxTask, zFirstRechargeBox, loadListTable, declaration), "首充信息表"},
        {Z_READER(CS_FunStamp, zFunStampMgr, loadListTable, declaration), "头像贴活动表"},
        {Z_READER(QuickInputMessage, ZQuickInputMessageMgr, loadListTable, declaration), "快捷输入表"},
        {Z_READER(FansConfigNew, ZFansConfigMgr, loadListTable, declaration), "守护团配置表"},

        // Left to the program that embeds the library.
        {Z_READER(ChatFilterWordKey, ZSensitiveWordsInfoListMgr, loadSensitiveWordsInfoListTable, declaration)},
        {Z_READER(NewChatFilterWordKey, ZSensitiveWordsInfoListMgr, loadNewSensitiveWordsInfoListTable, newDeclaration)},
        {Z_READER(CS_PlatAwardEffect, ZAwardEffectMgr, loadListTable, declaration)},
        {Z_UNVERSIONED(ActivityAwardEffect, ZActivityAwardEffectMgr, loadListTable)},
    };
    // clang-format on
    return list;
}
