#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>

/** The switches and values that the client uses; the values are the ids of their rows. */
enum E_SysConfigDefine : int {
    E_SysGiftComboEnable = 1,
    E_SysChatFilterEnable = 2,
    E_SysChatMinFunLevel = 3,
    E_SysPkEnable = 5,
    E_SysFlyScreenPrice = 8,
    E_SysMaxLinkMic = 12,
    E_SysScreenShareEnable = 13,
    E_SysVideoBitrate = 20,
    E_SysVideoSizes = 21,
    E_SysFirstRechargeEnable = 30,
    E_SysNobleEnterEffect = 31,
    E_SysCacheTidyEnable = 40,
};

/** A switch or value; every field is the cell's text, which the caller interprets. */
struct ZSystemConfigInfo
{
    QString id;
    QString configKey;
    QString configValue;
    QString desc;
    QString params;
};

/** The service's switches and values of table SystemConfig, by id. */
class ZGLOBAL_EXPORT ZSystemConfigMgr : public QObject
{
    Q_OBJECT

public:
    static ZSystemConfigMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    /** A record of empty texts for a value that the table does not have. */
    ZSystemConfigInfo getInfoByDefine(E_SysConfigDefine define);
    /** Ids are compared as texts: "012" is not "12". */
    ZSystemConfigInfo getInfoById(const QString& id);

    /** Whether the table has a row of this id. */
    bool isConfigData(QString id);

Q_SIGNALS:
    /** The table has been loaded: values in use have to be read again. */
    void sigChangeSystemConfigData();

private:
    ZSystemConfigMgr() = default;

    QMap<QString, ZSystemConfigInfo> m_infos;
};
