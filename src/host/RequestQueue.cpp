#include "host/RequestQueue.h"

#include "host/ServerOf.h"

namespace {

QString folderOf(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveFilename).path();
}

} // namespace

void RequestQueue::add(const QUrl& url, Lane lane, const Start& start)
{
    const QString name = serverOf(url);
    const QString folder = folderOf(url);
    Server& server = m_servers[name];
    server.most = boundsFor(url);
    Waiting& waiting = server.waiting.at(lane);
    if (!waiting.byFolder.contains(folder))
        waiting.turns.enqueue(folder);
    waiting.byFolder[folder].enqueue(start);
    startNext(name);
}

void RequestQueue::ended(const QUrl& url, Lane lane)
{
    const QString name = serverOf(url);
    const auto server = m_servers.find(name);
    if (server == m_servers.end())
        return;
    --server->underWay.at(lane);
    startNext(name);
}

void RequestQueue::setMultiplexed(const QUrl& url, bool isMultiplexed)
{
    const QString name = serverOf(url);
    m_isMultiplexed.insert(name, isMultiplexed);
    const auto server = m_servers.find(name);
    if (server != m_servers.end())
        server->most = boundsFor(url);
    startNext(name);
}

bool RequestQueue::isMultiplexed(const QUrl& url) const
{
    return m_isMultiplexed.value(serverOf(url), url.scheme() == QLatin1String("https"));
}

bool RequestQueue::isKnownMultiplexed(const QUrl& url) const
{
    return m_isMultiplexed.value(serverOf(url));
}

const RequestQueue::Bounds& RequestQueue::boundsFor(const QUrl& url) const
{
    return isMultiplexed(url) ? m_multiplexed : m_plain;
}

void RequestQueue::startNext(const QString& name)
{
    for (const Lane lane : {Foreground, Background}) {
        // Looked up each time: what is started may add to the queue.
        for (auto server = m_servers.find(name); server != m_servers.end()
             && hasPlace(*server, lane) && !server->waiting.at(lane).turns.isEmpty();
             server = m_servers.find(name)) {
            ++server->underWay.at(lane);
            takeNext(server->waiting.at(lane))();
        }
    }
    const auto server = m_servers.constFind(name);
    if (server != m_servers.constEnd() && server->underWay == Bounds {})
        m_servers.erase(server);
}

bool RequestQueue::hasPlace(const Server& server, Lane lane)
{
    return server.underWay.at(Foreground) + server.underWay.at(Background)
        < server.most.at(Foreground)
        && (lane == Foreground || server.underWay.at(Background) < server.most.at(Background));
}

RequestQueue::Start RequestQueue::takeNext(Waiting& waiting)
{
    const QString folder = waiting.turns.dequeue();
    const auto queue = waiting.byFolder.find(folder);
    Start start = queue->dequeue();
    if (queue->isEmpty())
        waiting.byFolder.erase(queue);
    else
        waiting.turns.enqueue(folder);
    return start;
}
