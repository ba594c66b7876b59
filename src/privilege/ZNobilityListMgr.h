#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QVector>

/** What a rank of nobility costs and returns; prices and returns are the cells' texts. */
struct ZNobleConsumeInfo
{
    int nobleId = 0;
    QString nobleName;
    QString blackBean;                ///< price of buying
    QString returnDiamond;            ///< diamonds returned on buying
    QStringList upgradeReturnDiamond; ///< diamonds returned on upgrading, empty parts kept
    QString renewBlackBean;           ///< price of renewing
    QString renewReturnDiamond;       ///< diamonds returned on renewing
    int time = 0;                     ///< how long the rank lasts, in the table's unit
};

/** What a rank of nobility comes with. */
struct stNobleConfig
{
    QString nobleId;
    QString chatSkinList;
    QString headFrameId;
    QString exclusiveCar; ///< a car id, or with customCar the beginning of several
    bool customCar = false;
};

/**
 * The ranks of nobility: their prices from table NobleConsume, what they come with from
 * NobleConfig.
 *
 * Each table is loaded by itself and replaces only what came from it.
 */
class ZGLOBAL_EXPORT ZNobilityListMgr : public QObject
{
    Q_OBJECT

public:
    static ZNobilityListMgr* getInstance();
    static const TableDeclaration& consumeDeclaration();
    static const TableDeclaration& configDeclaration();

    bool loadNobleConsumeInfoListTable(const QString& path);
    bool loadNobleConfigInfoListTable(const QString& path);
    /** Empties what came from either table. */
    void clear();

    /**
     * The rank of every row of NobleConsume in table order, a repeated one again.
     */
    const QVector<int>& getListNobleId();

    ZNobleConsumeInfo getNobleConsumeInfoById(int id);
    stNobleConfig getNobleConfigInfoById(QString id);

    /** Whether the car is some rank's own; letter case does not count, an empty id is none. */
    bool isExclusiveCar(QString carId);
    /** Whether the head frame is some rank's own; an empty id is none. */
    bool isLogoHeadFrame(QString headFrameId);

private:
    ZNobilityListMgr() = default;

    static QSharedPointer<ZNobilityListMgr> m_instance;

    QHash<int, ZNobleConsumeInfo> m_consumeInfos;
    QVector<int> m_nobleIds;
    QMap<QString, stNobleConfig> m_configs;
};
