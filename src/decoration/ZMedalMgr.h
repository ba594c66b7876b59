#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QSharedPointer>
#include <QString>

/** A badge beside a user's name. */
struct ZMedalInfo
{
    QString medalId; ///< decimal
    QString groupId; ///< decimal
    int groupSort = 0;
    int type = 0;
    QString name;
    int groupHandleType = 0;
    int timeHandleType = 0;
    QString size;
    QString icon;
    QString description;
    QString isCommon; ///< decimal
    int version = 0;
    QString dynamicUrl; ///< of the moving picture, below the image server, or empty
};

/**
 * The medals of table CS_MedalList, by id, and beside them their whole rows, so that the client
 * gets the columns that the record does not know.
 *
 * A row is read with the header of the last file that was a table at all, a refused one included,
 * and stays when its medal has gone, through clear() and every load: users still wear such medals.
 */
class ZGLOBAL_EXPORT ZMedalMgr : public QObject
{
    Q_OBJECT

public:
    static ZMedalMgr* getInstance();
    static const TableDeclaration& declaration();

    bool loadMedalListTable(const QString& path);
    /** Forgets the medals, not their rows. */
    void clear();

    const QHash<QString, ZMedalInfo>& getMedalMap();

    QString getMedalNameById(const QString& id);

    /**
     * The picture, under the table's version, and its file in "res/images/", named after the
     * address. Any id but the empty one has both, whether or not there is such a medal.
     */
    QString getMedalImageUrlById(const QString& id);
    QString getMedalImagePathById(const QString& id);

    /** The moving picture; empty for an unknown id and for a medal that has none. */
    QString getMedalDynamicUrlById(const QString& id);

    /** The guard level's medal that comes with the client; the doubled slash is meant. */
    QString getShouHuMedalImagePathById(const QString& id);

    /** The medal's row, column by column, as an object or as compact JSON; empty without a row. */
    QJsonObject getMedalJsonInfoById(const QString& id);
    QString getMedalInfoById(const QString& id);

protected:
    ZMedalMgr() = default;

    static QSharedPointer<ZMedalMgr> m_instance;

private:
    QHash<QString, ZMedalInfo> m_medals;
    QHash<QString, QJsonArray> m_rows;
    QHash<QString, int> m_header;
};
