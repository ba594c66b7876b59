#include "host/HttpFetch.h"

#include "host/HttpNetwork.h"

#include <QPointer>

HttpFetch::HttpFetch(const HttpOrder& order, HttpNetwork& network)
    : m_order(order)
    , m_network(network)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &HttpFetch::start);
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &HttpFetch::endNow);
}

void HttpFetch::start()
{
    m_network.queue().add(m_order.url, m_order.lane, [this] { onTurn(); });
}

void HttpFetch::cancel()
{
    m_isCancelled = true;
    // Later, so that all are called off before the first to end makes way for the next.
    m_end.start(0);
}

void HttpFetch::endNow()
{
    if (m_request != nullptr) {
        m_request->cancel();
    } else if (m_pause.isActive()) {
        m_pause.stop();
        tellCancelled();
    } else if (m_hasTurn) {
        m_hasTurn = false;
        tellCancelled();
        m_network.queue().ended(m_order.url, m_order.lane);
    }
}

void HttpFetch::onTurn()
{
    m_hasTurn = true;
    if (m_isCancelled) {
        m_end.start(0);
        return;
    }
    m_sinceTurn.start();
    m_network.proxies().prepare(m_order.url, [self = QPointer<HttpFetch>(this)] {
        if (self != nullptr)
            self->request();
    });
}

void HttpFetch::tellCancelled()
{
    HttpOutcome outcome = HttpRequest::cancelled();
    outcome.error = HttpRequest::named(m_order.url, outcome.error);
    Q_EMIT sigDone(outcome);
}

void HttpFetch::request()
{
    if (m_isCancelled) // while the proxies were asked for
        return;
    HttpRequest* request = m_network.begin(m_order.url, m_order.limits);
    m_request = request;
    request->setParent(this);
    connect(request, &HttpRequest::sigProgress, this, &HttpFetch::sigProgress);
    connect(request, &HttpRequest::sigDone, this,
            [this, request](const HttpOutcome& outcome) { onTried(request, outcome); });
}

void HttpFetch::onTried(HttpRequest* request, const HttpOutcome& outcome)
{
    request->deleteLater();
    m_request = nullptr;
    m_hasTurn = false;
    const int pause = outcome.recalled ? -1 : pauseAfter(outcome);
    if (outcome.recalled) {
        start();
    } else if (pause < 0) {
        Q_EMIT sigDone(outcome);
    } else {
        m_pause.start(pause);
        Q_EMIT sigRetried(m_tried, pause, outcome.error);
    }
    m_network.queue().ended(m_order.url, m_order.lane);
}

int HttpFetch::pauseAfter(const HttpOutcome& outcome)
{
    const bool mayPass =
        outcome.mayPass || (outcome.wasSilent && m_network.queue().isKnownMultiplexed(m_order.url));
    if (!mayPass)
        return -1;
    if (m_order.limits.totalTime > 0) {
        m_order.limits.totalTime -= static_cast<int>(m_sinceTurn.elapsed());
        if (m_order.limits.totalTime <= 0)
            return -1;
    }
    return m_order.retries.pauseBefore(++m_tried, outcome.retryAfter);
}
