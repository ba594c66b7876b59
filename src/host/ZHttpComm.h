#pragma once

#include "ZNetWorkExport.h"

#include <QByteArray>
#include <QObject>
#include <QSet>
#include <QUrl>
#include <QtPromise>

#include <memory>

class HttpRequest;
struct HttpLimits;
class QNetworkAccessManager;
class RequestQueue;

/**
 * HTTP for the client: GET requests whose promises settle on the GUI thread.
 *
 * Everything here belongs to the GUI thread, and needs a running QCoreApplication. Requests that
 * are still under way when the application ends are dropped: their promises never settle.
 *
 * Requests carry no cookies and nothing is cached. Up to ten redirects are followed, but never to a
 * less safe scheme. Bodies may come compressed by gzip and are handed out decompressed, when length
 * and checksum are right and nothing follows. A body that has neither a length nor chunks nor gzip
 * ends where the server closes the connection; of all others an early end is an error.
 *
 * At most maxUnderWay requests go to one server at a time; the others wait for their turn, and all
 * limits of time count from there. Requests of get() go before those of getInBackground(), which
 * never take more than maxInBackground places. Within either, the folders of the addresses take
 * turns and the files of one folder keep their order: a table waits for a place, not for all the
 * animations that were asked for before.
 *
 * For each request the signals are, in this order: one sigRequestStarted, any number of
 * sigRequestProgress, one sigRequestFinished. The id is the same in all of them and is never used
 * again; the address is the one that was asked for.
 */
class ZNETWORK_EXPORT ZHttpComm : public QObject
{
    Q_OBJECT

public:
    /** Requests under way to one server; as many as Qt makes connections. */
    static constexpr int maxUnderWay = 6;
    static constexpr int maxInBackground = 4;

    static constexpr int defaultTimeout = 30 * 1000;
    static constexpr int defaultLeastRate = 1024;
    static constexpr int defaultTotalTime = 30 * 60 * 1000;
    /** No table file is larger; see HostLimits::maxTableBytes. */
    static constexpr qint64 defaultMaxBodySize = 64LL * 1024 * 1024;

    static ZHttpComm* getInstance();

    /**
     * Fulfilled with the body, rejected with a zErrorInfo, never before get has returned.
     *
     * The message names the address, without its query and user information, and the cause: an
     * address that is not http or https, no connection, a server that is not trusted and why, a
     * redirect too many, to a less safe scheme or to nowhere, a status of 400 or more, a body that
     * ends early, is over the limit, damaged or encoded in another way than asked for, nothing
     * received for too long, too slow or too late. The code is the status where that is the cause,
     * else 0.
     */
    QtPromise::QPromise<QByteArray> get(const QUrl& url);

    /** As get(), for what nobody waits for. */
    QtPromise::QPromise<QByteArray> getInBackground(const QUrl& url);

    /** For how many milliseconds a request under way may receive nothing; the default is
     *  defaultTimeout, 0 means for ever. For requests made from now on. */
    void setTimeout(int milliseconds);

    /** How many bytes a second a body must bring, over each stretch of the timeout since its begin;
     *  the default is defaultLeastRate, 0 or no timeout means any. For requests made from now on.
     */
    void setLeastRate(int bytesPerSecond);

    /** Within how many milliseconds a request under way must be done; the default is
     *  defaultTotalTime, 0 means never. For requests made from now on. */
    void setTotalTime(int milliseconds);

    /** The most bytes that a body may have, decompressed; the default is defaultMaxBodySize. For
     *  requests made from now on. */
    void setMaxBodySize(qint64 bytes);

Q_SIGNALS:
    /** Comes from within get: the request may have to wait for its turn yet. */
    void sigRequestStarted(int id, const QUrl& url);
    /** Bytes as they come over the line; total is -1 while it is unknown. */
    void sigRequestProgress(int id, const QUrl& url, qint64 received, qint64 total);
    /** Comes before the promise's handlers. */
    void sigRequestFinished(int id, const QUrl& url, bool ok);

private:
    ZHttpComm();
    ~ZHttpComm() override;

    QtPromise::QPromise<QByteArray> add(const QUrl& url, bool inBackground);
    HttpRequest* start(int id, const QUrl& url, const HttpLimits& limits);
    QNetworkAccessManager& network();
    static void endWithApplication();
    void release();

    std::unique_ptr<QNetworkAccessManager> m_network;
    std::unique_ptr<RequestQueue> m_queue;
    QSet<HttpRequest*> m_requests; // those under way
    int m_lastId = 0;
    int m_timeout = defaultTimeout;
    int m_leastRate = defaultLeastRate;
    int m_totalTime = defaultTotalTime;
    qint64 m_maxBodySize = defaultMaxBodySize;
};
