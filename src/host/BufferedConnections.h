#pragma once

#include <QNetworkProxyFactory>

/**
 * The application's proxies, and where there is none a direct connection that Qt buffers.
 *
 * Qt reads a plain connection without a proxy unbuffered, and then may come upon its end in the
 * middle of parsing a chunked body: it takes what came for the whole, or waits for ever. Told to
 * ask the application for the proxy once more, the connection is as direct, and buffered: its end
 * then is told as what it is.
 */
class BufferedConnections : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override
    {
        QList<QNetworkProxy> proxies = proxyForQuery(query);
        for (QNetworkProxy& proxy : proxies) {
            if (proxy.type() == QNetworkProxy::NoProxy)
                proxy.setType(QNetworkProxy::DefaultProxy);
        }
        return proxies;
    }
};
