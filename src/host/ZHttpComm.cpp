#include "host/ZHttpComm.h"

#include "host/HttpRequest.h"
#include "host/zErrorInfo.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QThread>

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
    using Resolve = QtPromise::QPromiseResolve<QByteArray>;
    using Reject = QtPromise::QPromiseReject<QByteArray>;
    Q_ASSERT(QCoreApplication::instance() != nullptr && QThread::currentThread() == thread());
    const int id = ++m_lastId;
    auto* request = new HttpRequest(network(), url, m_timeout, m_maxBodySize);
    watch(request, id, url);
    QtPromise::QPromise<QByteArray> promise([&](const Resolve& resolve, const Reject& reject) {
        connect(request, &HttpRequest::sigDone, this,
                [resolve, reject](const QByteArray& body, const QString& error, int code) {
                    if (error.isEmpty())
                        resolve(body);
                    else
                        reject(zErrorInfo(error, code));
                });
    });
    Q_EMIT sigRequestStarted(id, url);
    return promise;
}

void ZHttpComm::setTimeout(int milliseconds)
{
    m_timeout = milliseconds;
}

void ZHttpComm::setMaxBodySize(qint64 bytes)
{
    m_maxBodySize = bytes;
}

QNetworkAccessManager& ZHttpComm::network()
{
    if (m_network == nullptr) {
        m_network = std::make_unique<QNetworkAccessManager>();
        // This object outlives the application, the network's threads must not.
        qAddPostRoutine(&ZHttpComm::endWithApplication);
    }
    return *m_network;
}

void ZHttpComm::watch(HttpRequest* request, int id, const QUrl& url)
{
    m_requests.insert(request);
    connect(request, &HttpRequest::sigProgress, this,
            [this, request, id, url](qint64 received, qint64 total) {
                for (HttpRequest* other : qAsConst(m_requests)) {
                    if (other != request)
                        other->onNeighbourProgress(url);
                }
                Q_EMIT sigRequestProgress(id, url, received, total);
            });
    connect(request, &HttpRequest::sigDone, this,
            [this, request, id, url](const QByteArray&, const QString& error) {
                m_requests.remove(request);
                request->deleteLater();
                Q_EMIT sigRequestFinished(id, url, error.isEmpty());
            });
}

void ZHttpComm::endWithApplication()
{
    getInstance()->release();
}

void ZHttpComm::release()
{
    qDeleteAll(m_requests);
    m_requests.clear();
    m_network.reset();
}
