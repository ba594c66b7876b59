#include "host/ZHttpComm.h"

#include "host/BufferedConnections.h"
#include "host/HostLimits.h"
#include "host/HttpRequest.h"
#include "host/RequestQueue.h"
#include "host/zErrorInfo.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QThread>

static_assert(ZHttpComm::defaultMaxBodySize == HostLimits::maxTableBytes,
              "a larger body would be no table");

ZHttpComm* ZHttpComm::getInstance()
{
    static ZHttpComm instance;
    return &instance;
}

ZHttpComm::ZHttpComm()
    : m_queue(std::make_unique<RequestQueue>(maxUnderWay, maxInBackground))
{
}

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
    const auto lane = inBackground ? RequestQueue::Background : RequestQueue::Foreground;
    const HttpLimits limits {m_timeout, m_leastRate, m_totalTime, m_maxBodySize};
    QtPromise::QPromise<QByteArray> promise([&](const Resolve& resolve, const Reject& reject) {
        m_queue->add(url, lane, [this, id, url, lane, limits, resolve, reject] {
            connect(start(id, url, limits), &HttpRequest::sigDone, this,
                    [=](const QByteArray& body, const QString& error, int code) {
                        if (error.isEmpty())
                            resolve(body);
                        else
                            reject(zErrorInfo(error, code));
                        m_queue->ended(url, lane);
                    });
        });
    });
    Q_EMIT sigRequestStarted(id, url);
    return promise;
}

HttpRequest* ZHttpComm::start(int id, const QUrl& url, const HttpLimits& limits)
{
    auto* request = new HttpRequest(network(), url, limits);
    m_requests.insert(request);
    connect(request, &HttpRequest::sigProgress, this,
            [this, id, url](qint64 received, qint64 total) {
                Q_EMIT sigRequestProgress(id, url, received, total);
            });
    connect(request, &HttpRequest::sigDone, this,
            [this, request, id, url](const QByteArray&, const QString& error) {
                m_requests.remove(request);
                request->deleteLater();
                Q_EMIT sigRequestFinished(id, url, error.isEmpty());
            });
    return request;
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

void ZHttpComm::setMaxBodySize(qint64 bytes)
{
    m_maxBodySize = bytes;
}

QNetworkAccessManager& ZHttpComm::network()
{
    if (m_network == nullptr) {
        m_network = std::make_unique<QNetworkAccessManager>();
        m_network->setProxyFactory(new BufferedConnections);
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
    m_queue->clear();
    qDeleteAll(m_requests);
    m_requests.clear();
    m_network.reset();
}
