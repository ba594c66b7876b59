#pragma once

#include "ZNetWorkExport.h"

#include <QByteArray>
#include <QObject>
#include <QSet>
#include <QUrl>
#include <QtPromise>

#include <memory>

class HttpFetch;
class HttpNetwork;

/**
 * HTTP for the client: GET requests whose promises settle on the GUI thread.
 *
 * Everything here belongs to the GUI thread, and needs a running QCoreApplication. Requests that
 * are still under way when the application ends are dropped: their promises never settle.
 *
 * Requests carry no cookies and nothing is cached. Up to ten redirects are followed, but never to a
 * less safe scheme. The application's proxies are used, and where it has none the system's. Bodies
 * may come compressed by gzip and are handed out decompressed, when length and checksum are right
 * and nothing follows. A body that has neither a length nor chunks nor gzip ends where the server
 * closes the connection; of all others an early end is an error.
 *
 * At most maxUnderWay requests go to one server at a time, or maxMultiplexed to one that speaks
 * HTTP/2 (over TLS, where they share one connection); the others wait for their turn, and all
 * limits of time count from there. Requests of get() go before those of getInBackground(), which
 * never take more than maxInBackground or maxMultiplexedInBackground places. Within either, the
 * folders of the addresses take turns and the files of one folder keep their order: a table waits
 * for a place, not for all the animations that were asked for before.
 *
 * A request whose connection is refused, reset or cut off, or that is answered with 502, 503 or
 * 504, is made again after a pause, see setRetries(); so is one that receives nothing for too long
 * over HTTP/2. It waits for its turn anew. All other failures are final.
 *
 * For each request the signals are, in this order: one sigRequestStarted, any number of
 * sigRequestProgress and sigRequestRetried, one sigRequestFinished. The id is the same in all of
 * them and is never used again; the address is the one that was asked for.
 */
class ZNETWORK_EXPORT ZHttpComm : public QObject
{
    Q_OBJECT

public:
    /** Requests under way to one server; as many as Qt makes connections. */
    static constexpr int maxUnderWay = 6;
    static constexpr int maxInBackground = 4;
    static constexpr int maxMultiplexed = 48;
    static constexpr int maxMultiplexedInBackground = 32;

    static constexpr int defaultTimeout = 30 * 1000;
    static constexpr int defaultLeastRate = 1024;
    static constexpr int defaultTotalTime = 30 * 60 * 1000;
    static constexpr int defaultRetries = 2;
    static constexpr int defaultRetryTime = 2000;
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

    /**
     * Calls off every request that waits or is under way: its promise is rejected, after this has
     * returned, with a message that names the address and "cancelled". Requests made afterwards,
     * from a handler of such a promise too, are others.
     */
    void cancelAll();

    /** For how many milliseconds a request under way may receive nothing; the default is
     *  defaultTimeout, 0 means for ever. For requests made from now on. */
    void setTimeout(int milliseconds);

    /** How many bytes a second a body must bring, over each stretch of the timeout since its begin;
     *  the default is defaultLeastRate, 0 or no timeout means any. For requests made from now on.
     */
    void setLeastRate(int bytesPerSecond);

    /** How many milliseconds a request may be under way, all its tries together; the default is
     *  defaultTotalTime, 0 means for ever. For requests made from now on. */
    void setTotalTime(int milliseconds);

    /**
     * How many further tries a request has, and the most milliseconds that the pauses before them
     * take together; the defaults are defaultRetries and defaultRetryTime, no retries means one try
     * only. The pauses double, and each is random between a half and the whole of its share, so
     * that clients which failed together do not come back together. What a server asks for by
     * Retry-After, up to ten seconds, comes on top of a pause; where it asks for more, the failure
     * is final. A promise is thus settled within the total time, these pauses and the turns of its
     * tries. For requests made from now on.
     */
    void setRetries(int count, int withinMilliseconds);

    /** The most bytes that a body may have, decompressed; the default is defaultMaxBodySize. For
     *  requests made from now on. */
    void setMaxBodySize(qint64 bytes);

Q_SIGNALS:
    /** Comes from within get: the request may have to wait for its turn yet. */
    void sigRequestStarted(int id, const QUrl& url);
    /** Bytes as they come over the line, of the present try; total is -1 while it is unknown. */
    void sigRequestProgress(int id, const QUrl& url, qint64 received, qint64 total);
    /** A try has failed with this cause; number retry of the further ones follows after pause
     *  milliseconds and its turn. */
    void sigRequestRetried(int id, const QUrl& url, int retry, int pause, const QString& cause);
    /** Comes before the promise's handlers. */
    void sigRequestFinished(int id, const QUrl& url, bool ok);

private:
    ZHttpComm();
    ~ZHttpComm() override;

    QtPromise::QPromise<QByteArray> add(const QUrl& url, bool inBackground);
    HttpNetwork& network();
    static void endWithApplication();
    void release();

    std::unique_ptr<HttpNetwork> m_network;
    QSet<HttpFetch*> m_fetches;
    int m_lastId = 0;
    int m_timeout = defaultTimeout;
    int m_leastRate = defaultLeastRate;
    int m_totalTime = defaultTotalTime;
    int m_retries = defaultRetries;
    int m_retryTime = defaultRetryTime;
    qint64 m_maxBodySize = defaultMaxBodySize;
};
