#pragma once

#include "ZGlobalExport.h"

#include <QObject>

/**
 * The catalogue of published tables.
 *
 * The values are persisted and the key names are the tables' names on the content server and their
 * keys in "common.ini"; neither may change, misspelt as some of them look.
 */
class ZGLOBAL_EXPORT EDataTable : public QObject
{
    Q_OBJECT

public:
    enum EDataTableType : int {
        PublicConfig = 0,
        SystemConfig = 1,
        NobleConsume = 2,
        NobleConfig = 3,
        FansConfigNew = 5,
        FlashConfig = 6,
        AnchorLevel = 8,
        StampName = 9,
        NewChatFilterWordKey = 14,
        QuickInputMessage = 15,
        BubbleConfig = 18,
        NoblePrivilegeConfig = 19,
        Doutu = 20,
        H5WebConfig = 21,
        Message = 22,
        CS_GiftList = 24,
        CS_CarList = 25,
        CS_MedalList = 26,
        CS_HeadframeList = 27,
        CS_GiftLabel = 34,
        CS_BannerConfig = 40,
        CS_VideoHobbyBanner = 44,
        ChatFilterWordKey = 46,
        CS_PlatAwardEffect = 48,
        CS_PlatFunLevel = 61,
        GroupWelComeWord = 66,
        CS_GameGiftList = 67,
        PCSkin = 71,
        RecreationConfigNew = 79,
        FirstRechargeBoxTask = 80,
        CS_FunStamp = 81,
        CS_BannerConfigNew = 82,
        CS_PkRankInfo = 83,
    };
    Q_ENUM(EDataTableType)
};
