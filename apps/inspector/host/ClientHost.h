#pragma once

#include "client/ClientResults.h"
#include "tidy/TidyPlan.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QVector>
#include <QtPromise>

#include <memory>
#include <optional>

class ContentServer;
class ZGlobalClient;

/** What is to be inspected, as the command line says it; all of it may be empty. */
struct Wish
{
    QString server;  ///< base address of a content server
    QString folder;  ///< the working folder
    QString content; ///< what our own server serves; the example content where nothing is said
};

/**
 * The client that is inspected, hosted as a program hosts it: folder, updates, loading, tidying.
 *
 * Without a server it brings one along, and without a folder it takes one that goes with it. A
 * folder alone goes on with the server that it remembers. One task at a time; a failure is told and
 * never stands in the way. GUI thread only, one object in a process.
 */
class ClientHost : public QObject
{
    Q_OBJECT

public:
    explicit ClientHost(QObject* parent = nullptr);
    ~ClientHost() override;

    /** Opens the folder, loads what is there and begins to bring it up to date. */
    void open(const Wish& wish);

    ZGlobalClient& client() { return *m_client; }

    /** The address in force; empty when none is. */
    static QString server();
    /** Our own server; null when it is another's. */
    ContentServer* ownServer() { return m_server.get(); }

    /** Whether the working folder is one that goes with the program. */
    bool hasOwnFolder() const { return m_folder != nullptr; }

    /** What is being done; empty when nothing is. */
    QString task() const { return m_task; }
    /** Whether it can be stopped; a tidying run cannot, it goes on to its end. */
    bool canStop() const { return m_canStop; }

    /** What tidying would remove now, and why; nothing is removed. Rejected while it is done. */
    QtPromise::QPromise<TidyPlan> planTidying();

public Q_SLOTS:
    /** Versions, files, loading, pictures of banners. */
    void update();
    /** The same with the versions that are known, of which one has just been set; behind a task
     *  that is under way, unless that is stopped. */
    void fetchTables();
    /** Hands the files on the disk to their managers once more. */
    void reload();
    void tidy();
    /** Ends an update or a fetch: what is not there yet fails as cancelled, what is there stays. */
    void stop();

Q_SIGNALS:
    /** The folder is entered: from now on managers find their files, and make their folders, there.
     */
    void sigEntered();
    /** All requests of the process are called off, until the task ends. */
    void sigStopping();
    /** A task begins, or ends with an empty one. */
    void sigTask(const QString& task);
    void sigProgress(int finished, int started, qint64 received);
    /** Something could not be done, in the library's words; empty for what went well. */
    void sigFailure(const QString& words);
    /** Files may have changed: pages look at the disk anew. */
    void sigFilesChanged();

private:
    bool openFolder(const Wish& wish);
    bool serveContent(const QString& named);
    enum class Stop { Possible, Impossible };
    bool begin(const QString& task, Stop stop);
    void end();
    void fetchSaved();
    void follow(const QtPromise::QPromise<ZUpdateResult>& update);
    QtPromise::QPromise<void> takeUpdate(const ZUpdateResult& result);
    QtPromise::QPromise<void> planned() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ContentServer> m_server;
    ZGlobalClient* m_client;
    QVector<ZClientFailure> m_failures;                  // of the last task that can fail
    std::optional<QtPromise::QPromise<TidyPlan>> m_plan; // the last
    std::optional<QtPromise::QPromise<bool>> m_saved;    // versions that are to be fetched
    QString m_task;
    bool m_canStop = false;
    bool m_isStopping = false;
    bool m_isTidying = false;
};
