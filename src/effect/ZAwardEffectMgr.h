#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>

/** The effect of an award of the platform. */
struct ZAwardEffectInfo
{
    QString id;   ///< decimal; "0" where the cell is no integral number
    int sort = 0; ///< display order
    QString name;
    QString flash; ///< the animation to play
    QString icon;  ///< file name of the icon
    QString descs;
};

/**
 * The award effects of table CS_PlatAwardEffect, by id.
 *
 * The table is not loaded at start-up: the program that shows awards loads it.
 */
class ZGLOBAL_EXPORT ZAwardEffectMgr : public QObject
{
    Q_OBJECT

public:
    static ZAwardEffectMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    ZAwardEffectInfo getInfoById(const QString& id);

    /** Server, folder and icon name simply joined; empty for an empty or unknown id. */
    QString getIconUrlById(const QString& id);

private:
    ZAwardEffectMgr() = default;

    QMap<QString, ZAwardEffectInfo> m_infos;
};
