#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVector>
#include <QtPromise>

/** A style in which a chat line's bubble is drawn from nine-patch pictures. */
struct ZBubbleConfigInfo
{
    QString bubbleId;   ///< decimal
    QString bubbleType; ///< decimal
    QString name;
    QString descs;
    QString extraText;                           ///< not of the table: left empty for the client
    bool firstFlag = false;                      ///< not of the table: left false for the client
    bool secondFlag = false;                     ///< not of the table: left false for the client
    QString borderWidths = QStringLiteral("17"); ///< of the nine-patch
    QString paddings = QStringLiteral("-10");    ///< of the text inside the bubble
};

/**
 * The chat bubble styles of table BubbleConfig, by id and in table order.
 *
 * Every address carries the table's version, so a new table fetches new pictures. Addresses and
 * paths are made for any id, known or not; unless said otherwise an empty id gives an empty text.
 * Paths are in "res/images/".
 */
class ZGLOBAL_EXPORT ZBubbleConfigMgr : public QObject
{
    Q_OBJECT

public:
    static ZBubbleConfigMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    const ZBubbleConfigInfo getInfoById(const QString& id) const;

    /** Every row in table order, several of one id included; getInfoById() knows the last. */
    const QVector<ZBubbleConfigInfo> getMessageList() const;

    /** The background and the chat form; the version stands behind the rendition as a last step. */
    QString getImageUrlById(const QString& id);
    QString getChatUrlById(const QString& id);
    /** The thumbnail of a style that may be chosen. */
    QString getThumbEnableUrlById(const QString& id);

    /** Named after the picture's address. */
    QString getImagePathById(const QString& id);
    QString getChatPathById(const QString& id);
    /**
     * Named after the background's address, not the thumbnail's, with "_thumb_enable" behind it;
     * that ending alone for an empty id.
     */
    QString getThumbEnableImagePathById(const QString& id);

    /**
     * Fetches the background, or the thumbnail, unless its file is there; fulfilled with the path,
     * rejected with a zErrorInfo when the request fails or the file cannot be written.
     */
    QtPromise::QPromise<QString> getImagePathAndDownloadById(const QString& id);
    QtPromise::QPromise<QString> getThumbEnableImagePathAndDownloadById(const QString& id);

Q_SIGNALS:
    /** The styles have been loaded anew. */
    void sigBubbleLoadFinish();

private:
    ZBubbleConfigMgr() = default;

    QMap<QString, ZBubbleConfigInfo> m_bubbleMap;
    QVector<ZBubbleConfigInfo> m_bubbleList;
};
