#pragma once

#include "ZGlobalExport.h"
#include "datatable/EDataTable.h"
#include "datatable/TableStatus.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVector>
#include <QtPromise>

struct TableEntry;

/**
 * The tables' versions, names and files, and the one door through which a program loads and
 * updates them all.
 *
 * A table's download address carries its version and its file is named after that address, so a new
 * version means a new file, and a file of the current name that is not empty is current.
 *
 * All names are relative to the working directory: "common.ini" keeps the versions,
 * "res/dataTable/" the table files. The host's configuration must answer "cmsServer" (ending in a
 * slash) and "ServerType" before anything here is asked for a name.
 *
 * Start-up order: getInstance(), loadLocalVersion(), loadAllTables(); then, as versions become
 * known, setTableVersion() and one of the updates. Updates only store files; loading is a call of
 * its own.
 *
 * GUI thread only, the first getInstance() included; every promise settles there.
 */
class ZGLOBAL_EXPORT ZDataTableMgr : public QObject
{
    Q_OBJECT

public:
    static ZDataTableMgr* getInstance();
    ~ZDataTableMgr() override;

    /** The known version of a table, 0 when there is none. */
    int getTableVersion(EDataTable::EDataTableType type) const;

    /**
     * Records a version learnt from the service; false when kind or version is negative.
     *
     * With save, "common.ini" is written one second after the last change. A version that is known
     * already changes nothing, a running save timer included.
     */
    bool setTableVersion(EDataTable::EDataTableType type, int version, bool save);

    /**
     * Adds the versions of "common.ini" to those known. A missing or negative value leaves a table
     * as it is; a value that is no number counts as 0. An unreadable file holds no versions.
     */
    void loadLocalVersion();

    /** Forgets all versions; managers and files stay. */
    void clearTables();

    /**
     * The table's file name in its current version: 32 hexadecimal digits, with the server type and
     * "-" before them unless that type is 1002. A table without a version gets version 0 by this.
     */
    QString getTableFileName(EDataTable::EDataTableType type);

    /** getTableFileName() of every table of the catalogue, in its order. */
    QStringList getAllTableName();

    /**
     * Hands every table file to its manager. False when one of the two essential tables (welcome
     * words, gifts) fails: nothing after it is loaded. Any other failure is logged only.
     */
    bool loadAllTables();

    /**
     * Whether an essential table that fails loses its file, as it does unless told otherwise: a
     * program that only looks at a client's folder leaves it there.
     */
    void setRemovesRefused(bool removes) { m_removesRefused = removes; }

    /**
     * Hands one table's file to its manager, as loadAllTables() does, and remembers the outcome. It
     * stays with the one table: the banner map, which two of them share, is not emptied.
     *
     * False when the load fails, and for a kind that no manager reads. An essential table that
     * fails loses its file, so that the next update fetches it anew.
     */
    bool loadTable(EDataTable::EDataTableType type);

    /**
     * The same for a table outside the catalogue, such as "ActivityAwardEffect", which lies where
     * the program keeps it. False also for a name that is not known.
     */
    bool loadUnversionedTable(const QString& table, const QString& path);

    /**
     * Downloads the table unless the file of its current version is there.
     *
     * The folder "res/dataTable/" has to be there, as after any updateAllDataTable(): in a fresh
     * working folder the program makes it, else the file cannot be written.
     *
     * Rejected with a zErrorInfo of code 0 and one of the fixed texts: download failed, body is not
     * a table, file cannot be written. TableStatus::lastFailure and sigTableFailed() tell the
     * cause.
     */
    QtPromise::QPromise<void> updateDataTable(EDataTable::EDataTableType type);

    /**
     * Makes the folder of the tables and updates them all at once; rejected with a fixed text for
     * the user when any fails, while the others still store their files. PCSkin is updated too, but
     * neither waited for nor missed.
     */
    QtPromise::QPromise<void> updateAllDataTable();

    /**
     * Downloads the gift table whether or not its file is there; rejected as unchanged when its
     * bytes are those of the last gift table that came this way, which is no failure of the table.
     * The folder has to be there as for updateDataTable().
     */
    QtPromise::QPromise<void> updateGiftDataTable();

    /**
     * updateGiftDataTable() and, when the table came in changed, a load of it. The log and the
     * signals tell the outcome.
     */
    void loadGiftTable();

    /**
     * Downloads a table outside the catalogue into path, making its folders. What lacks a column
     * that its manager wants counts as no table, and does not replace a file that is there.
     *
     * Rejected with a zErrorInfo of code 0 that names the cause, also for a name that is not known.
     */
    QtPromise::QPromise<void> updateUnversionedTable(const QString& table, const QString& path);

    /**
     * Fetches url into path, making its folders; fulfilled with path.
     *
     * With reuseExisting a file that is not empty is taken as it is, without a request. An empty
     * body writes nothing and is no error. Rejected with a zErrorInfo of code 0 when the request
     * fails, when the file cannot be written whole, which then is gone, and for a path that begins
     * with "res/" and leads out of it.
     */
    QtPromise::QPromise<QString> downloadFile(const QString& path, const QString& url,
                                              bool reuseExisting);

    /**
     * Every table of the catalogue, in its order, then those outside it: who reads it, its file and
     * what became of its last load and of its last failed update.
     */
    QVector<TableStatus> getTableStatuses() const;
    /** The same for one table; only the kind is set for a value that is no kind. */
    TableStatus getTableStatus(EDataTable::EDataTableType type) const;

Q_SIGNALS:
    /** "common.ini" has been written, or not: the versions that were to be saved. */
    void sigVersionsSaved(bool ok);

    /**
     * What becomes of a table, kind and version as in TableStatus. Each comes after the log line
     * and before the promise's handlers.
     *
     * Updated: a new file is in its place, which may be that of a version no longer wanted. Loaded:
     * its manager holds the records of the file. Failed: the download, the store or the load has.
     */
    void sigTableUpdated(const QString& table, int kind, int version);
    void sigTableLoaded(const QString& table, int kind, int version);
    void sigTableFailed(const TableFailure& failure);

private Q_SLOTS:
    void writeLocalVersion();

private:
    explicit ZDataTableMgr(QObject* parent);

    static QString urlOf(const QString& table);
    static QString urlOf(EDataTable::EDataTableType type, int version);
    static QString fileNameOf(const QString& url);
    QString getDataTableUrl(EDataTable::EDataTableType type);
    QString getTablePath(EDataTable::EDataTableType type);

    bool load(const TableEntry& entry, const QString& path);
    void tellLoad(int kind, const QString& table, const QString& error);
    void addUpdate(TableStatus& status) const;

    struct TableDownload;
    TableDownload startDownload(EDataTable::EDataTableType type);
    QtPromise::QPromise<QByteArray> fetch(const TableDownload& download);
    QtPromise::QPromise<void> store(const TableDownload& download, const QByteArray& body);
    void tellFailure(const TableFailure& failure, const QString& error);

    static QSharedPointer<ZDataTableMgr> m_instance;

    QMap<int, int> m_versions;
    QTimer m_saveTimer;
    QByteArray m_lastGiftTable;
    bool m_removesRefused = true;
    // By the tables' names:
    QMap<QString, QString> m_updateErrors; // of those whose last update failed
    QMap<QString, TableFailure> m_failures;
    QMap<QString, QString> m_loadErrors; // empty for one that loaded
};
