#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

/** A box that a first recharge earns. Times are seconds since the epoch. */
struct zFirstRechargeBoxInfo
{
    QString id;
    QString name;
    double amount = 0;    ///< what has to be paid, in yuan
    QStringList rewards;  ///< ids of gifts, cars, medals and frames
    QString picture;      ///< file name of the picture
    qint64 startTime = 0; ///< offered from here ...
    qint64 endTime = 0;   ///< ... to here
};

/**
 * The boxes of table FirstRechargeBoxTask, by id and in table order.
 *
 * A table needs id, name and amount; the rest may be missing and keeps its default. The picture
 * lies on "ImageResServer" as "/app/logo/firstrecharge/", the record's picture, "?" and the table's
 * version.
 */
class ZGLOBAL_EXPORT zFirstRechargeBox : public QObject
{
    Q_OBJECT

public:
    static zFirstRechargeBox& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    zFirstRechargeBoxInfo getInfoById(const QString& id);

    /**
     * Every row in table order, several of one id included.
     */
    const QVector<zFirstRechargeBoxInfo>& getList();

    /** Empty for an unknown id and for a box without a picture. */
    QString getPictureUrlById(const QString& id);
    /** The picture's file in "res/images/", named after its address. */
    QString getPicturePathById(const QString& id);

private:
    zFirstRechargeBox() = default;

    QMap<QString, zFirstRechargeBoxInfo> m_infos;
    QVector<zFirstRechargeBoxInfo> m_list;
};
