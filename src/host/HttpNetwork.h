#pragma once

#include "host/Proxies.h"
#include "host/RequestQueue.h"

#include <QHash>
#include <QObject>
#include <QVector>

#include <memory>

class HttpRequest;
struct HttpLimits;
struct HttpOutcome;
class QNetworkAccessManager;

/**
 * What the requests of ZHttpComm share while the application runs: their turns, the proxies and the
 * connections.
 *
 * Whether a server speaks HTTP/2 is known with its first answer. Until then one behind TLS is taken
 * to do so, since its first requests then go out in one piece. Of one that does not, Qt alone knows
 * which have gone out and which wait for a connection: those without an answer are called back to
 * take their turn, which repeats a few, once.
 *
 * Qt leaves requests without an answer, or with half of one, once a server has announced the end of
 * an HTTP/2 connection, as many do after some hundreds of requests. So no connection gets as many;
 * after a silence the next requests go out over a new one, and once the server has ended it, all
 * that have no answer are called back.
 */
class HttpNetwork : public QObject
{
    Q_OBJECT

public:
    HttpNetwork(const RequestQueue::Bounds& plain, const RequestQueue::Bounds& multiplexed);

    RequestQueue& queue() { return m_queue; }
    Proxies& proxies() { return m_proxies; }

    /** Starts a request, which is the caller's. */
    HttpRequest* begin(const QUrl& url, const HttpLimits& limits);

private:
    using Manager = std::shared_ptr<QNetworkAccessManager>;
    Manager managerFor(const QUrl& url);
    void learn(const QUrl& url, bool isMultiplexed);
    void onDone(const QString& server, HttpRequest* request, const HttpOutcome& outcome);

    RequestQueue m_queue;
    Proxies m_proxies;
    Manager m_manager;
    int m_begun = 0;                                  // over m_manager, to servers of HTTP/2
    QHash<QString, QVector<HttpRequest*>> m_underWay; // by server
};
