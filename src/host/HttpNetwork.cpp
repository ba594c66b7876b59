#include "host/HttpNetwork.h"

#include "host/HttpRequest.h"
#include "host/ServerOf.h"

#include <QNetworkAccessManager>

namespace {

/** Servers end a connection after a hundred or more. */
constexpr int maxPerConnection = 90;

} // namespace

HttpNetwork::HttpNetwork(const RequestQueue::Bounds& plain, const RequestQueue::Bounds& multiplexed)
    : m_queue(plain, multiplexed)
{
}

HttpRequest* HttpNetwork::begin(const QUrl& url, const HttpLimits& limits)
{
    const QString server = serverOf(url);
    auto* request = new HttpRequest(managerFor(url), url, limits);
    m_underWay[server].append(request);
    connect(request, &HttpRequest::sigAnswered, this,
            [this, url](const QUrl& answering, bool isMultiplexed) {
                learn(answering, isMultiplexed);
                if (serverOf(answering) != serverOf(url))
                    learn(url, false); // it redirects, and what it speaks is not told
            });
    connect(
        request, &HttpRequest::sigDone, this,
        [this, server, request](const HttpOutcome& outcome) { onDone(server, request, outcome); });
    return request;
}

HttpNetwork::Manager HttpNetwork::managerFor(const QUrl& url)
{
    if (m_queue.isMultiplexed(url) && ++m_begun > maxPerConnection)
        m_manager.reset();
    if (m_manager == nullptr) {
        m_manager = std::make_shared<QNetworkAccessManager>();
        m_manager->setProxyFactory(new Proxies(m_proxies));
        m_begun = 1;
    }
    return m_manager;
}

void HttpNetwork::learn(const QUrl& url, bool isMultiplexed)
{
    const bool wasTakenFor = m_queue.isMultiplexed(url);
    m_queue.setMultiplexed(url, isMultiplexed);
    if (!wasTakenFor || isMultiplexed)
        return;
    const QVector<HttpRequest*> underWay = m_underWay.value(serverOf(url));
    for (HttpRequest* request : underWay)
        request->recall();
}

void HttpNetwork::onDone(const QString& server, HttpRequest* request, const HttpOutcome& outcome)
{
    const auto underWay = m_underWay.find(server);
    underWay->removeOne(request);
    const QVector<HttpRequest*> others = *underWay;
    if (others.isEmpty())
        m_underWay.erase(underWay);
    const bool wasSilent = outcome.wasSilent && m_queue.isKnownMultiplexed(request->url());
    if ((wasSilent || outcome.lostConnection) && m_manager == request->manager())
        m_manager.reset();
    // Of the silent, each has a limit of its own: called back, they would wait without end.
    if (!outcome.lostConnection)
        return;
    for (HttpRequest* other : others) {
        if (other->manager() == request->manager())
            other->recall();
    }
}
