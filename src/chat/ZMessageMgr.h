#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QVector>

/** A message text that the service defines. */
struct ZMessageInfo
{
    QString id;         ///< decimal
    int tabType = 0;    ///< the tab in which the client shows the message
    int handleType = 0; ///< how the client handles it
    QString randomId;
    QString zh_cn; ///< the text, in simplified Chinese
    QString opt;
    QString jumpUrl; ///< an address to open, or empty
};

/**
 * The message texts of table Message, by id and in table order.
 */
class ZGLOBAL_EXPORT ZMessageMgr : public QObject
{
    Q_OBJECT

public:
    static ZMessageMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadMessageListTable(const QString& path);
    void clear();

    /** One record per id: the last of its rows. */
    const QHash<QString, ZMessageInfo>& getMessageMap();
    /** Every row in table order, several of one id included. */
    const QVector<ZMessageInfo>& getMessagelist() const;

    ZMessageInfo getMessageInfoById(QString id);
    /** 0 for an unknown id. */
    int getMessageTabType(QString id);

private:
    ZMessageMgr() = default;

    QHash<QString, ZMessageInfo> m_messageMap;
    QVector<ZMessageInfo> m_messageList;
};
