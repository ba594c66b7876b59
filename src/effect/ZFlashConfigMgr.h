#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

/** A flash animation in its current version. */
struct ZFlashConfigInfo
{
    QString flashName;
    int flashVersion = 0;
    int flashPrevDownload = 0; ///< for programs; every animation is downloaded whatever it says
};

/**
 * The flash animations of table FlashConfig, by name, and their download.
 *
 * Animation "abc" of version 12 lives in the folder "res/flash/abc_12" below the working directory:
 * its archive in the file "abc_12", and what came out of it, of which "abc.flajson" tells that the
 * animation is there. The archive stays until the cache is tidied.
 *
 * GUI thread only; archives are unpacked on Qt's global thread pool.
 */
class ZGLOBAL_EXPORT ZFlashConfigMgr : public QObject
{
    Q_OBJECT

public:
    static ZFlashConfigMgr& getInstance();
    static const TableDeclaration& declaration();

    bool loadListTable(const QString& path);
    void clear();

    QMap<QString, ZFlashConfigInfo> getMessageMap() const;

    /** Every animation as name, "_" and version, in ascending order of the names. */
    QStringList getAllFlashName();

    /**
     * The animation's folder; empty for an empty name. An unknown name gives a folder that ends in
     * "_", one that tidying leaves alone.
     */
    QString getFlashPath(const QString& flashName);

    /** Where the archive is downloaded from; empty for an empty name, no version for an unknown. */
    QString getFlashUrl(const QString& flashName);

    /**
     * Downloads the animations that are missing, one second after the last call. A download that
     * fails, or ends when the table has another version already, leaves nothing; the next call
     * tries again.
     */
    void loadFlash();

Q_SIGNALS:
    /**
     * Every animation was found present. Not emitted when any had to be downloaded: that takes
     * another loadFlash(), once they are unpacked.
     */
    void sigDownloadFlash();

private Q_SLOTS:
    void sltDownLoadFlash();

private:
    explicit ZFlashConfigMgr(QObject* parent);

    void download(const ZFlashConfigInfo& info, int tableVersion);

    QMap<QString, ZFlashConfigInfo> m_infos;
    QTimer m_timer;
    int m_started = 0; // downloads of the current pass
};
