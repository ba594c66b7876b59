#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QObject>
#include <QString>
#include <QVector>

/** A phrase that a viewer sends with one click. */
struct ZQuickInputMessageInfo
{
    QString id;
    QString item; ///< the phrase
};

/** The ready-made chat phrases of table QuickInputMessage, in table order. */
class ZGLOBAL_EXPORT ZQuickInputMessageMgr : public QObject
{
    Q_OBJECT

public:
    static ZQuickInputMessageMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    /**
     * The phrases themselves, several of one id included; the caller may reorder or edit them, and
     * the next load undoes that.
     */
    QVector<ZQuickInputMessageInfo>& getQuickInputMessages();

Q_SIGNALS:
    /** The phrases have been loaded anew. */
    void sigUpdateFinished();

private:
    ZQuickInputMessageMgr() = default;

    QVector<ZQuickInputMessageInfo> m_phrases;
};
