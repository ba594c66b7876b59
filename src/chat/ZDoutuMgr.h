#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVector>
#include <QtPromise>

/** A sticker picture. */
struct ZDoutuInfo
{
    QString name;    ///< the picture's file on the image server
    int version = 0; ///< of the picture
    int group = 0;
};

/**
 * The sticker pictures of table Doutu: numbered groups, in each the stickers in table order.
 *
 * A sticker is named by its group and its position in it, counted from 0; where there is none,
 * address and path are empty.
 */
class ZGLOBAL_EXPORT ZDoutuMgr : public QObject
{
    Q_OBJECT

public:
    static ZDoutuMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    /** The stickers by group. */
    const QMap<int, QVector<ZDoutuInfo>> getMessageMap();

    /** The picture, 256 by 256. */
    QString getImageUrlById(int group, int index);
    /** Its file in "res/images/", named after its address. */
    QString getImagePathById(int group, int index);

    /**
     * Fetches the picture unless its file is there; fulfilled with the path. Rejected with a
     * zErrorInfo when the request fails, as it does where there is no sticker, or when the file
     * cannot be written.
     */
    QtPromise::QPromise<QString> getImagePathAndDownloadById(int group, int index);

private:
    ZDoutuMgr() = default;

    QMap<int, QVector<ZDoutuInfo>> m_groups;
};
