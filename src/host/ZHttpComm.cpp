#include "host/ZHttpComm.h"

#include "host/HostLimits.h"
#include "host/HttpFetch.h"
#include "host/HttpNetwork.h"
#include "host/zErrorInfo.h"

#include <QCoreApplication>
#include <QThread>

static_assert(ZHttpComm::defaultMaxBodySize == HostLimits::maxTableBytes,
              "a larger body would be no table");

ZHttpComm* ZHttpComm::getInstance()
{
    static ZHttpComm instance;
    return &instance;
}

ZHttpComm::ZHttpComm() = default;

ZHttpComm::~ZHttpComm()
{
    qRemovePostRoutine(&ZHttpComm::endWithApplication);
}

QtPromise::QPromise<QByteArray> ZHttpComm::get(const QUrl& url)
{
    return add(url, false);
}

QtPromise::QPromise<QByteArray> ZHttpComm::getInBackground(const QUrl& url)
{
    return add(url, true);
}

QtPromise::QPromise<QByteArray> ZHttpComm::add(const QUrl& url, bool inBackground)
{
    using Resolve = QtPromise::QPromiseResolve<QByteArray>;
    using Reject = QtPromise::QPromiseReject<QByteArray>;
    Q_ASSERT(QCoreApplication::instance() != nullptr && QThread::currentThread() == thread());
    const int id = ++m_lastId;
    auto* fetch = new HttpFetch({url,
                                 inBackground ? RequestQueue::Background : RequestQueue::Foreground,
                                 {m_timeout, m_leastRate, m_totalTime, m_maxBodySize},
                                 {m_retries, m_retryTime}},
                                network());
    m_fetches.insert(fetch);
    connect(fetch, &QObject::destroyed, this, [this, fetch] { m_fetches.remove(fetch); });
    connect(fetch, &HttpFetch::sigProgress, this, [this, id, url](qint64 received, qint64 total) {
        Q_EMIT sigRequestProgress(id, url, received, total);
    });
    connect(fetch, &HttpFetch::sigRetried, this,
            [this, id, url](int retry, int pause, const QString& cause) {
                Q_EMIT sigRequestRetried(id, url, retry, pause, cause);
            });
    QtPromise::QPromise<QByteArray> promise([&](const Resolve& resolve, const Reject& reject) {
        connect(fetch, &HttpFetch::sigDone, this, [=](const HttpOutcome& outcome) {
            fetch->deleteLater();
            Q_EMIT sigRequestFinished(id, url, outcome.error.isEmpty());
            if (outcome.error.isEmpty())
                resolve(outcome.body);
            else
                reject(zErrorInfo(outcome.error, outcome.status));
        });
    });
    fetch->start();
    Q_EMIT sigRequestStarted(id, url);
    return promise;
}

void ZHttpComm::cancelAll()
{
    for (HttpFetch* fetch : std::as_const(m_fetches))
        fetch->cancel();
}

void ZHttpComm::setTimeout(int milliseconds)
{
    m_timeout = milliseconds;
}

void ZHttpComm::setLeastRate(int bytesPerSecond)
{
    m_leastRate = bytesPerSecond;
}

void ZHttpComm::setTotalTime(int milliseconds)
{
    m_totalTime = milliseconds;
}

void ZHttpComm::setRetries(int count, int withinMilliseconds)
{
    m_retries = count;
    m_retryTime = withinMilliseconds;
}

void ZHttpComm::setMaxBodySize(qint64 bytes)
{
    m_maxBodySize = bytes;
}

HttpNetwork& ZHttpComm::network()
{
    if (m_network == nullptr) {
        const RequestQueue::Bounds plain {maxUnderWay, maxInBackground};
        const RequestQueue::Bounds multiplexed {maxMultiplexed, maxMultiplexedInBackground};
        m_network = std::make_unique<HttpNetwork>(plain, multiplexed);
        // This object outlives the application, the network's threads must not.
        qAddPostRoutine(&ZHttpComm::endWithApplication);
    }
    return *m_network;
}

void ZHttpComm::endWithApplication()
{
    getInstance()->release();
}

void ZHttpComm::release()
{
    // Those that are done and wait for their deletion hold a connection too.
    const QSet<HttpFetch*> fetches = m_fetches;
    qDeleteAll(fetches);
    m_network.reset();
}
