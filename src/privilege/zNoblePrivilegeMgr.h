#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVector>

/** What holders of a rank of nobility may do. */
struct zNoblePrivilegeInfo
{
    QString id;
    QString nobleId; ///< the lowest rank that has it
    QString name;
    QString description;
    QString icon;        ///< file name of the picture
    int sortValue = 0;   ///< smaller comes first
    bool isOpen = false; ///< whether it is offered at present
};

/**
 * The privileges of table NoblePrivilegeConfig, by id and in their display order.
 *
 * A table needs id, nobleId and name; the rest may be missing and keeps its default. The picture
 * lies on "ImageResServer" as "/app/logo/nobleprivilege/", the record's icon, "?" and the table's
 * version.
 */
class ZGLOBAL_EXPORT zNoblePrivilegeMgr : public QObject
{
    Q_OBJECT

public:
    static zNoblePrivilegeMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    zNoblePrivilegeInfo getInfoById(const QString& id);

    /**
     * Every row by ascending sortValue, equal ones in table order, several of one id included.
     */
    const QVector<zNoblePrivilegeInfo>& getList();

    /** Empty for an unknown id and for a privilege without an icon. */
    QString getIconUrlById(const QString& id);
    /** The picture's file in "res/images/", named after its address. */
    QString getIconPathById(const QString& id);

private:
    zNoblePrivilegeMgr() = default;

    void sortList();

    QMap<QString, zNoblePrivilegeInfo> m_infos;
    QVector<zNoblePrivilegeInfo> m_list;
};
