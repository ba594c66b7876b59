#pragma once

#include "ZGlobalClientExport.h"
#include "client/ClientResults.h"
#include "tidy/TidyPlan.h"

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QVector>
#include <QtPromise>

#include <memory>

class GoodVersions;
class Traffic;

/**
 * What a program does that embeds the library: a working folder, a configuration, the start-up
 * order, versions, updates, loading, pictures, animations, tidying.
 *
 * It works on the process: the folder becomes the current one and the managers are those of the
 * whole process, so one object is enough. Who wants the managers alone needs none of this.
 *
 * What becomes of each table is told by the signals of ZDataTableMgr.
 *
 * Nothing here blocks or prints. Promises are rejected with a zErrorInfo whose message names the
 * object and the cause. GUI thread only; needs a running QCoreApplication.
 */
class ZGLOBALCLIENT_EXPORT ZGlobalClient : public QObject
{
    Q_OBJECT

public:
    explicit ZGlobalClient(QObject* parent = nullptr);
    ~ZGlobalClient() override;

    /**
     * The configuration for content that lies whole below one address, a slash at its end or not;
     * empty for no address, so that what open() remembers stays.
     */
    static QJsonObject configurationFor(const QString& address);

    /**
     * Makes the folder and enters it; the library keeps all its files there. The values join those
     * of the last time, which are remembered in the folder's "zglobal.json".
     *
     * False, and the cause told, when that cannot be done or no content server is known then.
     */
    bool open(const QString& folder, const QJsonObject& configuration, QString* error = nullptr);

    /**
     * The same for who only looks: the folder has to be there, and nothing of this object is
     * remembered in it, neither the values nor what load() finds out. A table that does not load
     * stays where it is. What is downloaded is stored.
     */
    bool openToLook(const QString& folder, const QJsonObject& configuration,
                    QString* error = nullptr);

    /** A value of the configuration in force. */
    static QString configuration(const QString& key);

    /**
     * Loads the remembered versions and then every table that is read, as far as it is on disk:
     * those of the start-up, the word lists, the award effects. False when one of the essential
     * ones is missing; failures() names every table that did not load.
     *
     * A table that does not load goes back to the version that last did, where that is still on
     * disk. A version that was refused is not fetched again: a newer one is waited for.
     */
    bool load();

    /** The same without the tables of the start-up. */
    bool loadOthers();

    /** The tables whose last load failed, whose newest version was refused before, or that load()
     *  put back to an earlier version, and why. */
    QVector<ZClientFailure> failures() const;

    /**
     * What a bug report needs, as it stands: the library, Qt and the platform, the configuration,
     * every table with its version, file, age, size, load and last failure, and what has failed.
     *
     * Nothing secret is in it: an address stands without query and user information, "userId" and
     * "sessionId" only tell that they are set, and "~" is the person's home folder.
     */
    QJsonObject report() const;

    /** Asks the content server for the versions of the tables ("app/versions.json"). */
    QtPromise::QPromise<ZVersionNews> learnVersions();

    /** Fulfilled when "common.ini" holds the versions learnt; rejected when it could not be saved.
     */
    QtPromise::QPromise<void> versionsSaved();

    /**
     * Brings all table files up to date as the versions known say, the table without a version
     * included. Fulfilled also when tables failed; see ZUpdateResult::failures.
     */
    QtPromise::QPromise<ZUpdateResult> updateTables();

    /**
     * learnVersions(), updateTables() and versionsSaved() in one. Rejected when the versions cannot
     * be learnt; then nothing was asked for. Loads nothing: that is load().
     */
    QtPromise::QPromise<ZUpdateResult> update();

    /** Fetches the banners' pictures that are missing; rejected when one could not be had. */
    QtPromise::QPromise<void> fetchPictures();

    /** Downloads and unpacks the flash animations that are missing; begins a second later. */
    QtPromise::QPromise<ZFlashResult> fetchFlashes();

    /** Where the file of a table lies, in the catalogue or outside. */
    static QString tableFile(const TableStatus& table);

    /** Whether an animation of the flash table is on disk and unpacked. */
    static bool hasFlash(const QString& flashName);

    /** Tidies the cache; fulfilled at the end of the run. The log tells what was removed. */
    QtPromise::QPromise<void> tidy();

    /**
     * What tidy() would do at this moment, and why; nothing is removed. Rejected while a run or
     * another plan is under way.
     */
    QtPromise::QPromise<TidyPlan> planTidying();

    /** Fulfilled when no request is under way and none has followed the last. */
    QtPromise::QPromise<void> quiet();

Q_SIGNALS:
    /**
     * A request began, received something or ended; counted since the beginning of the last update.
     * Received are bytes as they came over the line, expected is an estimate of what they will be:
     * the sizes that servers told, on average for all that have begun; -1 while none is known.
     */
    void sigProgress(int finished, int started, qint64 received, const QUrl& url, qint64 expected);

private:
    bool enter(const QString& folder, const QJsonObject& configuration, QString* error);
    bool returnToGood(const QVector<TableStatus>& before);

    Traffic* m_traffic;
    std::shared_ptr<GoodVersions> m_good;
    QVector<ZClientFailure> m_returned; // tables that the last load put back
    bool m_remembers = true;
    enum class Save { Done, Due, Failed };
    Save m_save = Save::Done;  // of the versions learnt to "common.ini"
    QString m_versionsFailure; // why the last try to learn them failed
};
