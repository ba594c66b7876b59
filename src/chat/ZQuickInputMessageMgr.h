#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableDescription.h"

#include <QObject>
#include <QString>
#include <QVector>

/** A phrase that a viewer sends with one click. */
struct ZQuickInputMessageInfo
{
    QString id;
    QString item; ///< the phrase
};

/** The ready-made chat phrases of table QuickInputMessage, in table order. GUI thread only. */
class ZGLOBAL_EXPORT ZQuickInputMessageMgr : public QObject
{
    Q_OBJECT

public:
    static ZQuickInputMessageMgr& getInstance();

    /** Replaces the phrases; false, with the phrases kept, when the table or a column is missing.
     */
    bool loadListTable(const QString& path);
    void clear();

    /**
     * The phrases themselves, several of one id included; the caller may reorder or edit them, and
     * the next load undoes that.
     */
    QVector<ZQuickInputMessageInfo>& getQuickInputMessages();

    static TableDescription describeTable();

Q_SIGNALS:
    /** The phrases have been loaded anew. */
    void sigUpdateFinished();

private:
    ZQuickInputMessageMgr() = default;

    QVector<ZQuickInputMessageInfo> m_phrases;
};
