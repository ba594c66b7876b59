#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>

/** A public setting; every field is the cell's text. */
struct ZPublicConfigInfo
{
    QString id;
    QString value;
    QString desc;
};

/** The public settings of table PublicConfig, by id. */
class ZGLOBAL_EXPORT ZPublicConfigMgr : public QObject
{
    Q_OBJECT

public:
    /** The settings that the client uses; the values are the ids of their rows. */
    enum EPublicConfitType : int {
        E_PublicServiceHotline = 1,
        E_PublicChatMaxLength = 2, ///< characters
        E_PublicChatInterval = 3,  ///< seconds
        E_PublicGiftsPerPage = 4,
        E_PublicComboCountdown = 5, ///< seconds
        E_PublicMinRecharge = 6,    ///< yuan
        E_PublicDiamondsPerYuan = 7,
        E_PublicOfficialRoom = 8,       ///< room id
        E_PublicDefaultAvatar = 9,      ///< path on the image server
        E_PublicBroadcastMinPrice = 10, ///< the least that a gift of a broadcast costs
        E_PublicHeartbeatInterval = 11, ///< seconds
        E_PublicAnchorNotice = 12,
    };

    static ZPublicConfigMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    /** A record of empty texts for a setting that the table does not have. */
    const ZPublicConfigInfo getInfoByDefine(const EPublicConfitType& type);
    /** Ids are compared as texts: "03" is not "3". */
    ZPublicConfigInfo getInfoById(const QString& id);

private:
    ZPublicConfigMgr() = default;

    QMap<QString, ZPublicConfigInfo> m_infos;
};
