#pragma once

#include "ZNetWorkExport.h"

#include <QByteArray>
#include <QObject>
#include <QSet>
#include <QUrl>
#include <QtPromise>

#include <memory>

class HttpRequest;
class QNetworkAccessManager;

/**
 * HTTP for the client: GET requests whose promises settle on the GUI thread.
 *
 * Everything here belongs to the GUI thread, and needs a running QCoreApplication. Requests that
 * are still under way when the application ends are dropped: their promises never settle.
 *
 * Requests carry no cookies, nothing is cached, and bodies are asked for uncompressed. Up to ten
 * redirects are followed, but never to a less safe scheme.
 *
 * For each request the signals are, in this order: one sigRequestStarted, any number of
 * sigRequestProgress, one sigRequestFinished. The id is the same in all of them and is never used
 * again; the address is the one that was asked for.
 */
class ZNETWORK_EXPORT ZHttpComm : public QObject
{
    Q_OBJECT

public:
    static constexpr int defaultTimeout = 30 * 1000;
    static constexpr qint64 defaultMaxBodySize = 256LL * 1024 * 1024;

    static ZHttpComm* getInstance();

    /**
     * Fulfilled with the body, rejected with a zErrorInfo, never before get has returned.
     *
     * The message names the address, without its query and user information, and the cause: an
     * address that is not http or https, no connection, a failed TLS handshake, a redirect too
     * many, to a less safe scheme or to nowhere, a status of 400 or more, a body that ends early,
     * is over the limit or compressed, nothing received for too long. The code is the status where
     * that is the cause, else 0.
     */
    QtPromise::QPromise<QByteArray> get(const QUrl& url);

    /**
     * For how many milliseconds a request may receive nothing; the default is defaultTimeout, 0
     * means for ever. While a request has not received anything, what others receive from the same
     * server counts for it: it may be waiting its turn. For requests made from now on.
     */
    void setTimeout(int milliseconds);

    /** The most bytes that a body may have; the default is defaultMaxBodySize. For requests made
     *  from now on. */
    void setMaxBodySize(qint64 bytes);

Q_SIGNALS:
    void sigRequestStarted(int id, const QUrl& url);
    /** total is -1 while it is unknown. */
    void sigRequestProgress(int id, const QUrl& url, qint64 received, qint64 total);
    /** Comes before the promise's handlers. */
    void sigRequestFinished(int id, const QUrl& url, bool ok);

private:
    ZHttpComm();
    ~ZHttpComm() override;

    QNetworkAccessManager& network();
    void watch(HttpRequest* request, int id, const QUrl& url);
    static void endWithApplication();
    void release();

    std::unique_ptr<QNetworkAccessManager> m_network;
    QSet<HttpRequest*> m_requests;
    int m_lastId = 0;
    int m_timeout = defaultTimeout;
    qint64 m_maxBodySize = defaultMaxBodySize;
};
