#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

/** A skin of the client; every field is the cell's text, empty where the table lacks the column. */
struct ZPCSkinInfo
{
    QString id;
    QString version; ///< of the pictures
    QString desc;
};

/**
 * The client's skins of table PCSkin, of which the last is the current one, and the pictures of
 * that one, kept in "res/skin/" below the working directory.
 */
class ZGLOBAL_EXPORT ZPCSkinMgr : public QObject
{
    Q_OBJECT

public:
    /** The places that a skin paints; the numbers are part of the pictures' addresses. */
    enum E_SkinLocate : int {
        E_SkinAll = 0, ///< the whole window
        E_SkinTop = 1, ///< the top area
    };
    Q_ENUM(E_SkinLocate)

    static ZPCSkinMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    /**
     * Fetches the pictures of the current skin anew, one second after the last of several calls.
     * sigDownloadImages follows, unless a request fails.
     */
    void loadPCSkinImages();

    /** Address of a picture of the current skin; empty when there is none or it has no version. */
    QString getSkinUrl(E_SkinLocate locate);

    /**
     * The picture's file, named after its address, also while there is no picture. The doubled
     * slash after "res/skin/" is meant: caches written before are found by it.
     */
    QString getSkinPath(E_SkinLocate locate);

Q_SIGNALS:
    /** The pictures have been fetched, or there is no skin to fetch any for. */
    void sigDownloadImages();

private:
    ZPCSkinMgr();

    void downloadSkinImages();
    void announceImages();

    QTimer m_timer;
    int m_downloads = 0; // requests of the current run without an answer
    QVector<ZPCSkinInfo> m_skins;
};
