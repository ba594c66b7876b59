#include "host/Proxies.h"

#include "host/ServerOf.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
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
    QHash<QString, QList<std::function<void()>>> waiting;

    void answer(const QString& server, const QList<QNetworkProxy>& proxies)
    {
        Answer& answer = answers[server];
        answer.proxies = proxies;
        answer.age.start();
        for (const std::function<void()>& ready : waiting.take(server))
            ready();
    }

    /** What comes later than this is taken for the requests that follow. */
    void giveUp(const QString& server)
    {
        if (!answers.contains(server))
            answer(server, {});
    }
};

Proxies::Proxies(QObject* context)
    : m_context(context)
    , m_system(std::make_shared<OfSystem>())
{
}

Proxies::~Proxies() = default;

void Proxies::prepare(const QUrl& url, const std::function<void()>& ready)
{
    const QString server = serverOf(url);
    const auto known = m_system->answers.find(server);
    if (hasApplicationProxy(url)) {
        ready();
    } else if (known != m_system->answers.end()) {
        if (known->age.hasExpired(freshFor)) {
            known->age.start();
            lookUp(url);
        }
        ready();
    } else {
        const bool first = !m_system->waiting.contains(server);
        m_system->waiting[server].append(ready);
        if (first)
            lookUp(url);
    }
}

void Proxies::lookUp(const QUrl& url)
{
    const std::weak_ptr<OfSystem> system = m_system;
    const QString server = serverOf(url);
    QThreadPool::globalInstance()->start([context = m_context, system, url, server] {
        const auto proxies = QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
        QMetaObject::invokeMethod(
            context,
            [system, server, proxies] {
                if (const auto alive = system.lock())
                    alive->answer(server, proxies);
            },
            Qt::QueuedConnection);
    });
    QTimer::singleShot(maxLookupTime, m_context, [system, server] {
        if (const auto alive = system.lock())
            alive->giveUp(server);
    });
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
