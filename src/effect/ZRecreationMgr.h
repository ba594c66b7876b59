#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

/** A recreation effect; every field is the cell's text, empty where the table lacks the column. */
struct recreationInfo
{
    QString id;
    QString name;
    QString playType;
    QString num;
    QString range;
    QString flashName; ///< the animation's file, possibly with an extension
    QString flashVersion;
};

/** The kind of a recreation effect, which the first letter of its id tells. */
enum recreationType : int {
    E_RecreationGame = 1,  ///< R
    E_RecreationMagic = 2, ///< M
    E_RecreationWish = 3,  ///< W
};

/**
 * The recreation effects of table RecreationConfigNew, by id and by kind.
 *
 * No column is required; a row without an id is left out. Unless said otherwise an empty or unknown
 * id gives an empty text. Paths are relative to the working directory.
 */
class ZGLOBAL_EXPORT ZRecreationMgr : public QObject
{
    Q_OBJECT

public:
    static ZRecreationMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadRecreationListTable(const QString& path);
    void clear();

    /** Lists the id under its kind, again if it is there; one of another letter under none. */
    void addRecreationIdToMap(const QString& id);

    /** The ids of a kind in table order, once for each of their rows. */
    QStringList getRecreationIdByTypeKey(recreationType type);

    recreationInfo getRecreationInfoById(const QString& id);
    QString getRecreationPlayType(const QString& id);

    /** The animation's name without extension. */
    QString getRecreationAnimationNameById(const QString& id);
    /** The animation's folder; the doubled slash after "res/animation/" is meant. */
    QString getRecreationAnimationPathById(const QString& id);
    QString getRecreationAnimationUrlById(const QString& id);

    /** Picture, 138 by 138, under the table's version. */
    QString getRecreationImageUrlById(const QString& id);
    /** The picture's file in "res/images/", named after its address. */
    QString getRecreationImagePathById(const QString& id);

private:
    ZRecreationMgr() = default;

    QMap<QString, recreationInfo> m_infos;
    QMap<recreationType, QStringList> m_idsByType;
};
