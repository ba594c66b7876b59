#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVector>

/** A banner in one of the secondary places. */
struct ZOtherBannerInfo
{
    int id = 0;
    QString targetObject; ///< the address it opens
    int isCefOpen = 0;    ///< 1 or more: the address opens in the embedded browser
};

/** The secondary banners of table CS_VideoHobbyBanner, in table order. */
class ZGLOBAL_EXPORT ZOtherBannerMgr : public QObject
{
    Q_OBJECT

public:
    static ZOtherBannerMgr* getInstance();
    static const TableDeclaration& declaration();

    bool loadOtherBannerListTable(const QString& path);
    /** Empties everything, the pages for the embedded browser included. */
    void clear();

    /** Every row, in table order. */
    const QVector<ZOtherBannerInfo>& getList();

    /**
     * Whether url holds the path, query included, of a page for the embedded browser. A page
     * without a path after its server and "/" stands for nothing, unlike with ZBannerMgr.
     */
    bool otherBannerIsByCef(const QString& url);
    /** A page that makes otherBannerIsByCef() true for url; empty when there is none. */
    QString otherBannerCefPage(const QString& url);
    /** The pages for the embedded browser: the path of each that an address has to hold, by page.
     */
    const QHash<QString, QString>& getPages();

private:
    ZOtherBannerMgr() = default;

    void notePage(const ZOtherBannerInfo& info, const QJsonArray& cells);

    static QSharedPointer<ZOtherBannerMgr> m_instance;

    QVector<ZOtherBannerInfo> m_list;
    QHash<QString, QString> m_pages; // the path by the page
};
