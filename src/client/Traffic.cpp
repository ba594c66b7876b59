#include "client/Traffic.h"

#include "host/ZHttpComm.h"

#include <QTimer>

#include <algorithm>
#include <numeric>

namespace {

// What an answer leads to comes a turn of the event loop later, further requests included.
constexpr int quietLooks = 3;
constexpr int lookInterval = 10; // milliseconds

} // namespace

Traffic::Traffic(QObject* parent)
    : QObject(parent)
{
    const ZHttpComm* http = ZHttpComm::getInstance();
    connect(http, &ZHttpComm::sigRequestStarted, this, [this](int id, const QUrl& url) {
        ++m_started;
        m_open.insert(id);
        m_running.insert(id);
        tell(url);
    });
    connect(http, &ZHttpComm::sigRequestProgress, this,
            [this](int id, const QUrl& url, qint64 received, qint64 total) {
                if (!m_open.contains(id))
                    return;
                m_received.insert(id, received);
                if (total >= 0)
                    m_sizes.insert(id, total);
                tell(url);
            });
    connect(http, &ZHttpComm::sigRequestFinished, this, [this](int id, const QUrl& url) {
        m_running.remove(id);
        if (!m_open.remove(id))
            return;
        m_sizes.insert(id, m_received.value(id));
        tell(url);
    });
}

qint64 Traffic::received() const
{
    return std::accumulate(m_received.cbegin(), m_received.cend(), qint64(0));
}

qint64 Traffic::expected() const
{
    if (m_sizes.isEmpty())
        return -1;
    const qint64 known = std::accumulate(m_sizes.cbegin(), m_sizes.cend(), qint64(0));
    return std::max(received(), known * m_started / m_sizes.size());
}

void Traffic::restart()
{
    m_started = 0;
    m_open.clear();
    m_received.clear();
    m_sizes.clear();
}

QtPromise::QPromise<void> Traffic::quiet()
{
    return QtPromise::QPromise<void>([this](const QtPromise::QPromiseResolve<void>& resolve) {
        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, [this, timer, resolve, looks = 0]() mutable {
            looks = m_running.isEmpty() ? looks + 1 : 0;
            if (looks < quietLooks)
                return;
            timer->stop();
            timer->deleteLater();
            resolve();
        });
        timer->start(lookInterval);
    });
}

void Traffic::tell(const QUrl& url)
{
    Q_EMIT sigProgress(m_started - m_open.size(), m_started, received(), url, expected());
}
