#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QObject>
#include <QString>

/** The web pages that the client opens; the values are the ids of their rows. */
enum E_H5WebConfigDefine : int {
    E_H5Recharge = 1,
    E_H5NobleCenter = 2,
    E_H5FansGroup = 3,
    E_H5LevelPrivilege = 4,
    E_H5MedalWall = 5,
    E_H5ActivityCenter = 6,
    E_H5AnchorAcademy = 7,
    E_H5HelpCenter = 8,
    E_H5Feedback = 9,
    E_H5UserAgreement = 10,
    E_H5PkRank = 11,
};

/** A web page as the table declares it; every field is the cell's text. */
struct zH5WebConfigInfo
{
    QString id;
    QString key;
    QString defaultPath;
    QString desc;
    QString pcURL; ///< the path for this client: defaultPath where the table gives none
    QString pc001;
};

/**
 * The web pages of table H5WebConfig, by id.
 *
 * Every address carries the table's version as its last query item "version", so that a new table
 * refreshes the pages.
 */
class ZGLOBAL_EXPORT zH5WebConfigMgr : public QObject
{
    Q_OBJECT

public:
    static zH5WebConfigMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);

    /**
     * The page's address: its pcURL, put directly behind the value of "H5WebServer" unless it has
     * "https" anywhere in it. Empty for an unknown page or an empty path.
     */
    QString getURLByDefine(E_H5WebConfigDefine define);

    /**
     * The same behind the value of the configuration key serverKey, unless the pcURL begins with
     * "http": a page of plain http stands for itself here and is completed above.
     */
    QString getAppURLByDefine(E_H5WebConfigDefine define, QString serverKey);

Q_SIGNALS:
    /** The table has been loaded. */
    void sigUpdate();

private:
    zH5WebConfigMgr() = default;

    void clearInfo();
    QString pathOf(E_H5WebConfigDefine define) const;

    QHash<QString, zH5WebConfigInfo> m_infos;
};
