#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>

/** A sticker for avatars that belongs to an activity. */
struct zFunStampInfo
{
    QString id;
    QString activityId;
    QString name;
    QString picture;      ///< the picture's file on the image server
    qint64 startTime = 0; ///< worn from here, in seconds since the epoch; 0 when not told
    qint64 endTime = 0;   ///< worn to here, likewise
};

/**
 * The fun stamps of table CS_FunStamp, by id.
 *
 * A stamp needs an id, a name and a picture; activity and period may be missing. An unknown id, and
 * a stamp whose picture is empty, give an empty address and path.
 */
class ZGLOBAL_EXPORT zFunStampMgr : public QObject
{
    Q_OBJECT

public:
    static zFunStampMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    const QMap<QString, zFunStampInfo>& getFunStampMap();

    zFunStampInfo getInfoById(const QString& id);

    /** The picture, under the table's version, and its file in "res/images/", named after the
     *  address. */
    QString getFunStampImageUrlById(const QString& id);
    QString getFunStampImagePathById(const QString& id);

private:
    zFunStampMgr() = default;

    QMap<QString, zFunStampInfo> m_stamps;
};
