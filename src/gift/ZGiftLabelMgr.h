#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>

/** A tag with a colour gradient, drawn on gift tiles; every field is the cell's text. */
struct ZGiftLabelInfo
{
    QString id; ///< what a gift's giftLabelId names
    QString alterDateTime;
    QString giftLabelName;
    QString startColor;
    QString endColor;
};

/** The gift labels of table CS_GiftLabel, by id. */
class ZGLOBAL_EXPORT ZGiftLabelMgr : public QObject
{
    Q_OBJECT

public:
    static ZGiftLabelMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    ZGiftLabelInfo getInfoById(QString id);

    const QMap<QString, ZGiftLabelInfo>& getGiftLabelMap();

Q_SIGNALS:
    /** The labels have been loaded anew. */
    void sigUpdate();

private:
    ZGiftLabelMgr() = default;

    QMap<QString, ZGiftLabelInfo> m_labels;
};
