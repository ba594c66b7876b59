#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>

/** The effect of an award of an activity; what ranks and times mean is the players' business. */
struct ZActivityAwardEffectInfo
{
    QString id;
    QString rankType;
    QString effectId;
    QString name;
    QString effectIcon;
    int availableTime = 0;    ///< in the table's unit
    int availableGapTime = 0; ///< in the table's unit
    QString activityId;
    QString remark; ///< always empty: the table's remarks are not for the client
};

/**
 * The award effects of activities, by id, from table ActivityAwardEffect.
 *
 * The table is outside the catalogue: the program that shows awards fetches and loads it.
 */
class ZGLOBAL_EXPORT ZActivityAwardEffectMgr : public QObject
{
    Q_OBJECT

public:
    static ZActivityAwardEffectMgr& getInstance();
    static const TableDeclaration& declaration();

    /**
     * Replaces the effects; false when the table or a column, the never read "remark" included, is
     * missing. Then none are left, unlike with other managers.
     */
    bool loadListTable(const QString& path);
    void clear();

    ZActivityAwardEffectInfo getInfoById(const QString& id);

private:
    ZActivityAwardEffectMgr() = default;

    QMap<QString, ZActivityAwardEffectInfo> m_infos;
};
