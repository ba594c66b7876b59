#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QString>

/** A stamp that one user puts on another for a while. */
struct ZUserStampInfo
{
    QString id;
    QString name;
    QString picture;  ///< the picture's file on the image server
    int duration = 0; ///< how long the stamp stays, in seconds
    int version = 0;  ///< of the picture
};

/**
 * The user stamps of table StampName, by id.
 *
 * A stamp needs an id and a name; the other columns may be missing. An unknown id, and a stamp
 * without a picture, give an empty address and path.
 */
class ZGLOBAL_EXPORT ZUserStampMgr : public QObject
{
    Q_OBJECT

public:
    static ZUserStampMgr* getInstance();
    static const TableDeclaration& declaration();

    bool loadUserStampTable(const QString& path);
    void clear();

    const QMap<QString, ZUserStampInfo>& getUserStampMap();

    ZUserStampInfo getInfoById(const QString& id);

    /** The picture, under the record's version, and its file in "res/images/", named after the
     *  address. */
    QString getStampImageUrlById(const QString& id);
    QString getStampImagePathById(const QString& id);

protected:
    ZUserStampMgr() = default;

    static QSharedPointer<ZUserStampMgr> m_instance;

private:
    QMap<QString, ZUserStampInfo> m_stamps;
};
