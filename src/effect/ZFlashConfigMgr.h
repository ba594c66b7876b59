#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>

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
 * Archives are unpacked on Qt's global thread pool.
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

    /** Whether an animation of the table is unpacked in its folder. */
    bool isPresent(const QString& flashName) const;

    /** Why the last try to fetch an animation failed; empty when it did not, or there was none. */
    QString getFailure(const QString& flashName) const;

    /**
     * Downloads the animations that are missing, one second after the last call. A download that
     * fails, or ends when the table has another version already, leaves nothing; the next call
     * tries again. A name that would lead out of "res/" is passed over.
     */
    void loadFlash();

Q_SIGNALS:
    /**
     * Every animation was found present. Not emitted when any had to be downloaded: that takes
     * another loadFlash(), once they are unpacked.
     */
    void sigDownloadFlash();

    /** All downloads of a pass, so many of them, have ended, and what came in is unpacked. */
    void sigPassEnded(int downloads);

private Q_SLOTS:
    void sltDownLoadFlash();

private:
    explicit ZFlashConfigMgr(QObject* parent);

    struct Pass;
    void download(const ZFlashConfigInfo& info, const std::shared_ptr<Pass>& pass);
    void ended(const ZFlashConfigInfo& info, Pass& pass, const QString& failure);

    QMap<QString, ZFlashConfigInfo> m_infos;
    QMap<QString, QString> m_failures; // by name, of those that could not be had
    QTimer m_timer;
};
