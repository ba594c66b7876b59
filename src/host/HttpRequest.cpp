#include "host/HttpRequest.h"

#include "host/Distrust.h"
#include "host/RetryPolicy.h"

#include <QHttp2Configuration>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

constexpr int maxRedirects = 10;

/** What Qt may hold of a body that nobody has read yet. */
constexpr qint64 readBufferSize = 256LL * 1024;

/** What an HTTP/2 server may send before it hears from us; the 64 KB of the protocol would make a
 *  far server slow. */
constexpr unsigned streamWindow = 1024 * 1024;
constexpr unsigned connectionWindow = 8 * 1024 * 1024;

QString addressError(const QUrl& url)
{
    if (!url.isValid() || url.isEmpty())
        return QStringLiteral("not an address");
    if (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https"))
        return QStringLiteral("not an http or https address");
    return url.host().isEmpty() ? QStringLiteral("no host in the address") : QString();
}

QNetworkRequest requestFor(const QUrl& url)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(maxRedirects);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    // Asked for by us, a compressed body is left to us: Qt would hand over one that ends early as
    // if it were whole.
    request.setRawHeader("Accept-Encoding", "gzip");
    // Without TLS, Qt would hold all requests back until the first has been answered.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute,
                         url.scheme() == QLatin1String("https"));
    QHttp2Configuration http2;
    http2.setStreamReceiveWindowSize(streamWindow);
    http2.setSessionReceiveWindowSize(connectionWindow);
    request.setHttp2Configuration(http2);
    return request;
}

/** A failure that another try would meet again. */
HttpOutcome failure(const QString& cause)
{
    HttpOutcome outcome;
    outcome.error = cause;
    return outcome;
}

HttpOutcome passingFailure(const QString& cause)
{
    HttpOutcome outcome = failure(cause);
    outcome.mayPass = true;
    return outcome;
}

/** The server has ended the connection before it took up the request. */
HttpOutcome lostConnection(const QString& cause)
{
    HttpOutcome outcome = passingFailure(cause);
    outcome.lostConnection = true;
    return outcome;
}

HttpOutcome tooLarge(qint64 limit)
{
    return failure(QStringLiteral("the body is larger than %1 bytes").arg(limit));
}

QByteArray encodingOf(const QNetworkReply& reply)
{
    const QByteArray encoding = reply.rawHeader("Content-Encoding").trimmed().toLower();
    return encoding == "identity" ? QByteArray() : encoding;
}

} // namespace

HttpRequest::HttpRequest(const std::shared_ptr<QNetworkAccessManager>& manager, const QUrl& url,
                         const HttpLimits& limits)
    : m_manager(manager)
    , m_url(url)
    , m_limits(limits)
{
    const QString error = addressError(url);
    if (error.isEmpty()) {
        start();
        return;
    }
    connect(&m_total, &QTimer::timeout, this, [this, error] { done(failure(error)); });
    m_total.start(0);
}

HttpRequest::~HttpRequest()
{
    m_done = true;
    delete m_reply;
}

void HttpRequest::start()
{
    m_reply = m_manager->get(requestFor(m_url));
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpRequest::onMetaData);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpRequest::onReadyRead);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &HttpRequest::sigProgress);
    connect(m_reply, &QNetworkReply::sslErrors, this,
            [this](const QList<QSslError>& errors) { m_distrust = Distrust::causeOf(errors); });
    // Queued: a reply may fail while it is being made, and nobody listens to us yet.
    connect(m_reply, &QNetworkReply::finished, this, &HttpRequest::onFinished,
            Qt::QueuedConnection);
    startTimers();
}

void HttpRequest::startTimers()
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(m_limits.silence);
    connect(&m_silence, &QTimer::timeout, this, [this] {
        HttpOutcome outcome =
            failure(QStringLiteral("nothing received for %1 ms").arg(m_limits.silence));
        outcome.wasSilent = true;
        done(outcome);
    });
    if (m_limits.silence > 0)
        m_silence.start();
    m_pace.setInterval(m_limits.silence);
    connect(&m_pace, &QTimer::timeout, this, &HttpRequest::checkPace);
    m_total.setSingleShot(true);
    connect(&m_total, &QTimer::timeout, this, [this] {
        done(failure(QStringLiteral("not whole after %1 ms").arg(m_limits.totalTime)));
    });
    if (m_limits.totalTime > 0)
        m_total.start(m_limits.totalTime);
}

void HttpRequest::recall()
{
    if (m_answered)
        return;
    HttpOutcome outcome = failure(QStringLiteral("called back"));
    outcome.recalled = true;
    done(outcome);
}

void HttpRequest::onMetaData()
{
    m_answered = true;
    if (m_silence.isActive())
        m_silence.start();
    // The rate is that of the body: how long a server thinks is a matter of the silence.
    if (m_limits.silence > 0 && m_limits.leastRate > 0 && !m_pace.isActive())
        m_pace.start();
    m_reply->setReadBufferSize(readBufferSize);
    Q_EMIT sigAnswered(m_reply->url(),
                       m_reply->attribute(QNetworkRequest::Http2WasUsedAttribute).toBool());
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_limits.bodySize)
        done(tooLarge(m_limits.bodySize));
}

void HttpRequest::onReadyRead()
{
    if (!m_done && m_silence.isActive())
        m_silence.start();
    while (!m_done && m_reply->bytesAvailable() > 0) {
        const QByteArray block = m_reply->read(qMin(m_reply->bytesAvailable(), readBufferSize));
        if (block.isEmpty())
            return;
        take(block);
    }
}

void HttpRequest::take(const QByteArray& block)
{
    m_received += block.size();
    if (m_received > m_limits.bodySize) {
        done(tooLarge(m_limits.bodySize));
        return;
    }
    if (status() >= 400)
        return;
    if (m_received == block.size() && encodingOf(*m_reply) == "gzip")
        m_gzip = std::make_unique<GzipBody>();
    if (m_gzip == nullptr)
        m_body += block;
    else if (!m_gzip->take(block, m_body, m_limits.bodySize))
        done(failure(m_gzip->error()));
}

void HttpRequest::checkPace()
{
    const qint64 wanted = qint64(m_limits.leastRate) * m_limits.silence / 1000;
    if (m_received - m_receivedAtPace < wanted)
        done(failure(QStringLiteral("slower than %1 bytes a second for %2 ms")
                         .arg(m_limits.leastRate)
                         .arg(m_limits.silence)));
    m_receivedAtPace = m_received;
}

void HttpRequest::onFinished()
{
    onReadyRead();
    if (m_done)
        return;
    const bool transported = m_reply->error() == QNetworkReply::NoError;
    if (status() >= (transported ? 300 : 400))
        done(statusFailure());
    else if (!transported)
        done(transportFailure());
    else
        done(bodyFailure());
}

void HttpRequest::done(const HttpOutcome& outcome)
{
    if (m_done)
        return;
    m_done = true;
    for (QTimer* timer : {&m_silence, &m_pace, &m_total})
        timer->stop();
    if (m_reply != nullptr)
        m_reply->disconnect(this);
    HttpOutcome told = outcome;
    if (told.error.isEmpty())
        told.body = m_body;
    else
        told.error = named(m_url, told.error);
    Q_EMIT sigDone(told);
}

HttpOutcome HttpRequest::cancelled()
{
    return failure(QStringLiteral("cancelled"));
}

QString HttpRequest::named(const QUrl& url, const QString& cause)
{
    return url.toString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment)
        + QStringLiteral(": ") + cause;
}

int HttpRequest::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

HttpOutcome HttpRequest::statusFailure() const
{
    HttpOutcome outcome = failure(QStringLiteral("HTTP status %1").arg(status()));
    outcome.status = status();
    outcome.mayPass = status() >= 502 && status() <= 504;
    outcome.retryAfter =
        RetryPolicy::retryAfter(m_reply->rawHeader("Retry-After"), QDateTime::currentDateTimeUtc());
    return outcome;
}

HttpOutcome HttpRequest::transportFailure() const
{
    switch (m_reply->error()) {
    case QNetworkReply::InsecureRedirectError:
        return failure(QStringLiteral("redirected to a less safe scheme"));
    case QNetworkReply::TooManyRedirectsError:
        return failure(QStringLiteral("redirected more than %1 times").arg(maxRedirects));
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
        // So Qt also calls what it was asked for over a connection that ends.
        return status() == 0 ? lostConnection(m_reply->errorString())
                             : failure(QStringLiteral("redirected to no http or https address"));
    case QNetworkReply::ContentReSendError:
        return lostConnection(QStringLiteral("the server ended the connection"));
    case QNetworkReply::InternalServerError: // of a stream, the status has been looked at
        return passingFailure(QStringLiteral("the server broke off the answer"));
    case QNetworkReply::SslHandshakeFailedError:
        return failure(m_distrust.isEmpty() ? m_reply->errorString() : m_distrust);
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::TemporaryNetworkFailureError:
        return passingFailure(m_reply->errorString());
    default:
        break;
    }
    // Texts of the higher layers name the whole address, query and all.
    return failure(m_reply->error() < QNetworkReply::ContentAccessDenied
                       ? m_reply->errorString()
                       : QStringLiteral("network error %1").arg(m_reply->error()));
}

HttpOutcome HttpRequest::bodyFailure() const
{
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    if (length.isValid() && m_received < length.toLongLong())
        return passingFailure(QStringLiteral("the body ends early"));
    const QByteArray encoding = encodingOf(*m_reply);
    if (encoding == "gzip")
        return m_gzip != nullptr && m_gzip->isWhole()
            ? HttpOutcome()
            : passingFailure(QStringLiteral("the gzip body ends early"));
    return encoding.isEmpty()
        ? HttpOutcome()
        : failure(QStringLiteral("the body is encoded though that was not asked for"));
}
