#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVector>

/** A banner as the table declares it; what its kinds and flags mean is the views' business. */
struct ZBannerInfo
{
    int id = 0;
    int bannerType = 0;    ///< 1 and 2 carry a picture
    QString bannerContent; ///< path of the picture on the image server
    int lpType = 0;
    QString landingPage;
    int weight = 0;       ///< smaller comes first
    qint64 startDate = 0; ///< in the table's unit
    qint64 endDate = 0;   ///< in the table's unit
    int isLive = 0;
    int isHalf = 0;
    int isCefOpen = 0; ///< above 0: the landing page opens in the embedded browser
    QString showPosition;
    QString name;
    int showByFunLevel = -1;
    int tipsType = -1;
    int reserved = -1; ///< no column fills it
};

/**
 * The banners of tables CS_BannerConfig and CS_BannerConfigNew, and the pages that open in the
 * embedded browser.
 *
 * Both tables feed one map; each has a list of its own. Pages for the embedded browser come from
 * both tables and, in addition, from the web service, which is asked after every load.
 */
class ZGLOBAL_EXPORT ZBannerMgr : public QObject
{
    Q_OBJECT

public:
    static ZBannerMgr* getInstance();
    static const TableDeclaration& declaration();    ///< CS_BannerConfig
    static const TableDeclaration& newDeclaration(); ///< CS_BannerConfigNew

    /**
     * Replaces the list of one table, CS_BannerConfigNew with isNew, and adds its banners to the
     * map: call clear() before the first of the two.
     *
     * Where the table has a column showPosition, rows without "pc_anchor" in it are for other
     * clients and left out; their pages for the embedded browser still count.
     */
    bool loadBannerListTable(const QString& path, bool isNew);

    /**
     * Empties map and lists. The embedded browser's pages stay: those of the tables for good, those
     * of the service until it is asked again.
     */
    void clear();

    /** CS_BannerConfig by ascending weight, or CS_BannerConfigNew in table order. */
    const QVector<ZBannerInfo>& getList(bool isNew);
    /** One record per id: the one loaded last, from either table. */
    const QHash<int, ZBannerInfo>& getBannerMap();

    QString getBannerImageUrlById(const int& id);
    /** The picture's file in "res/images/", named after its address. */
    QString getBannerImagePathById(const int& id);

    /** Whether a banner is of a kind that carries a picture. */
    static bool hasPicture(const ZBannerInfo& banner);
    /** The addresses of the pictures that have no file yet. */
    QStringList getMissingImageUrls();
    /** Fetches the pictures that have no file yet; sigDownloadImages follows in every case. */
    void loadBannerImages();

    /** Whether url holds the path, query included, of a page for the embedded browser. */
    bool bannerIsByCef(const QString& url);
    /** A page that makes bannerIsByCef() true for url; empty when there is none. */
    QString bannerCefPage(const QString& url);
    /** The pages for the embedded browser, of the tables and of the service: the path of each that
     *  an address has to hold, by page. */
    const QHash<QString, QString>& getTablePages();
    const QHash<QString, QString>& getServerPages();

    /** Puts smaller weights first, equal ones in their order; does nothing with isNew. */
    void sortListByWeight(bool isNew);

Q_SIGNALS:
    /** The pictures are there, but for those that could not be fetched. */
    void sigDownloadImages();
    /** A table has been loaded. */
    void sigUpdate();

protected:
    ZBannerMgr() = default;

    /** Forgets the service's pages and asks for them anew; without an answer there are none. */
    void updateLargeBanner();

    static QSharedPointer<ZBannerMgr> m_instance;

private:
    template <bool isNew>
    static const TableDeclaration& declarationOf();
    void notePage(const ZBannerInfo& info, const QJsonArray& cells);
    void addServerPages(const QByteArray& answer);

    QHash<int, ZBannerInfo> m_banners;
    QVector<ZBannerInfo> m_list;
    QVector<ZBannerInfo> m_newList;
    QHash<QString, QString> m_tablePages; // the path by the page
    QHash<QString, QString> m_serverPages;
};
