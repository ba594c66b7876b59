#pragma once

#include <QList>
#include <QNetworkProxyFactory>
#include <QtPromise>

#include <functional>
#include <memory>

class QUrl;

/**
 * The proxies of connections: the application's, where it has set any, else the system's. The
 * system is asked on another thread, since some desktops fetch and run a script to answer.
 *
 * Direct connections are buffered. Qt reads a plain connection without a proxy unbuffered, and then
 * may come upon its end in the middle of parsing a chunked body: it takes what came for the whole,
 * or waits for ever. Told to ask the application for the proxy once more, the connection is as
 * direct, and buffered: its end then is told as what it is.
 */
class Proxies : public QNetworkProxyFactory
{
public:
    /** After so many milliseconds the system's silence means no proxy, and what it answers later is
     *  taken for the requests that follow. */
    static constexpr int maxLookupTime = 5000;

    Proxies();
    ~Proxies() override;

    /** Calls ready when the proxies for this address are known: at once, or from the event loop. */
    void prepare(const QUrl& url, const std::function<void()>& ready);

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;

private:
    struct OfSystem;
    QtPromise::QPromise<void> lookUp(const QUrl& url);

    std::shared_ptr<OfSystem> m_system;
};
