#include "host/Proxies.h"

#include "host/ServerOf.h"

#include <QElapsedTimer>
#include <QHash>
#include <QThreadPool>
#include <QUrl>

#include <algorithm>

namespace {

/** For how long an answer of the system is not asked for again. */
constexpr int freshFor = 5 * 60 * 1000; // milliseconds

bool hasProxy(const QList<QNetworkProxy>& proxies)
{
    return std::any_of(proxies.cbegin(), proxies.cend(), [](const QNetworkProxy& proxy) {
        return proxy.type() != QNetworkProxy::NoProxy;
    });
}

using Found = QList<QNetworkProxy>;

QtPromise::QPromise<Found> askSystem(const QUrl& url)
{
    return QtPromise::QPromise<Found>([url](const QtPromise::QPromiseResolve<Found>& resolve) {
        QThreadPool::globalInstance()->start([url, resolve] {
            resolve(QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url)));
        });
    });
}

bool hasApplicationProxy(const QUrl& url)
{
    return hasProxy(QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(url)));
}

} // namespace

struct Proxies::OfSystem
{
    struct Answer
    {
        QList<QNetworkProxy> proxies;
        QElapsedTimer age;
    };

    QHash<QString, Answer> answers;
    QHash<QString, QtPromise::QPromise<void>> lookups;

    void answer(const QString& server, const Found& proxies)
    {
        Answer& answer = answers[server];
        answer.proxies = proxies;
        answer.age.start();
    }
};

Proxies::Proxies()
    : m_system(std::make_shared<OfSystem>())
{
}

Proxies::~Proxies() = default;

void Proxies::prepare(const QUrl& url, const std::function<void()>& ready)
{
    const QString server = serverOf(url);
    const auto known = m_system->answers.constFind(server);
    const bool isKnown = known != m_system->answers.constEnd();
    if (hasApplicationProxy(url)) {
        ready();
        return;
    }
    if ((!isKnown || known->age.hasExpired(freshFor)) && !m_system->lookups.contains(server))
        m_system->lookups.insert(server, lookUp(url));
    if (isKnown)
        ready();
    else
        m_system->lookups.find(server)->then(ready);
}

QtPromise::QPromise<void> Proxies::lookUp(const QUrl& url)
{
    const std::shared_ptr<OfSystem> system = m_system;
    const QString server = serverOf(url);
    return askSystem(url)
        .then([system, server](const Found& proxies) { system->answer(server, proxies); })
        .timeout(maxLookupTime)
        .fail([system, server] { system->answer(server, {}); })
        .finally([system, server] { system->lookups.remove(server); });
}

QList<QNetworkProxy> Proxies::queryProxy(const QNetworkProxyQuery& query)
{
    QList<QNetworkProxy> proxies = proxyForQuery(query);
    if (!hasProxy(proxies))
        proxies = m_system->answers.value(serverOf(query.url())).proxies;
    if (proxies.isEmpty())
        proxies.append(QNetworkProxy(QNetworkProxy::NoProxy));
    for (QNetworkProxy& proxy : proxies) {
        if (proxy.type() == QNetworkProxy::NoProxy)
            proxy.setType(QNetworkProxy::DefaultProxy);
    }
    return proxies;
}
