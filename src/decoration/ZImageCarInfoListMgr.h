#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QString>

/** An entrance car: what drives across the room when its owner enters. */
struct ZImageCarInfo
{
    QString id;
    QString name;
    QString description;
    int price = 0;        ///< in diamonds, 0 for one that is not sold
    QString animation;    ///< the animation's file on the image server
    QString picture;      ///< the picture's file on the image server
    int version = 0;      ///< of picture and animation
    qint64 startTime = 0; ///< on sale from here, in seconds since the epoch; 0 when not told
    qint64 endTime = 0;   ///< on sale to here, likewise
};

/**
 * The entrance cars of table CS_CarList, by id.
 *
 * A car needs an id, a name, an animation and the version of its resources; the columns for
 * description, price, picture and period may be missing. Every address and path carries the
 * record's version. An unknown id, and an empty field that names the resource, give an empty text.
 */
class ZGLOBAL_EXPORT ZImageCarInfoListMgr : public QObject
{
    Q_OBJECT

public:
    static ZImageCarInfoListMgr* getInstance();
    static const TableDeclaration& declaration();

    bool loadImageCarInfoListTable(const QString& path);
    void clear();

    const QMap<QString, ZImageCarInfo>& getImageCarMap();

    ZImageCarInfo getInfoById(const QString& id);

    /** The picture, and its file in "res/images/", named after the address. */
    QString getCarImageUrlById(const QString& id);
    QString getCarImagePathById(const QString& id);

    /**
     * The animation's archive, and the folder for it in "res/flashext": the animation's name
     * without extension, "_" and the version. The tidying keeps the highest version of each name
     * there, so a car in use stays and what it looked like before goes.
     */
    QString getCarAnimationUrlById(const QString& id);
    QString getCarAnimationPathById(const QString& id);

protected:
    ZImageCarInfoListMgr() = default;

    static QSharedPointer<ZImageCarInfoListMgr> m_instance;

private:
    QMap<QString, ZImageCarInfo> m_cars;
};
