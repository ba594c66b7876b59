#include "host/HttpRequest.h"

#include "host/Distrust.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

constexpr int maxRedirects = 10;

/** What Qt may hold of a body that nobody has read yet. */
constexpr qint64 readBufferSize = 256LL * 1024;

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
    return request;
}

QString tooLarge(qint64 limit)
{
    return QStringLiteral("the body is larger than %1 bytes").arg(limit);
}

QByteArray encodingOf(const QNetworkReply& reply)
{
    const QByteArray encoding = reply.rawHeader("Content-Encoding").trimmed().toLower();
    return encoding == "identity" ? QByteArray() : encoding;
}

} // namespace

HttpRequest::HttpRequest(QNetworkAccessManager& network, const QUrl& url, const HttpLimits& limits)
    : m_url(url)
    , m_limits(limits)
{
    const QString error = addressError(url);
    if (error.isEmpty()) {
        start(network);
        return;
    }
    connect(&m_total, &QTimer::timeout, this, [this, error] { done(error); });
    m_total.start(0);
}

HttpRequest::~HttpRequest()
{
    m_done = true;
    delete m_reply;
}

void HttpRequest::start(QNetworkAccessManager& network)
{
    m_reply = network.get(requestFor(m_url));
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
    connect(&m_silence, &QTimer::timeout, this,
            [this] { stop(QStringLiteral("nothing received for %1 ms").arg(m_limits.silence)); });
    if (m_limits.silence > 0)
        m_silence.start();
    m_pace.setInterval(m_limits.silence);
    connect(&m_pace, &QTimer::timeout, this, &HttpRequest::checkPace);
    m_total.setSingleShot(true);
    connect(&m_total, &QTimer::timeout, this,
            [this] { stop(QStringLiteral("not whole after %1 ms").arg(m_limits.totalTime)); });
    if (m_limits.totalTime > 0)
        m_total.start(m_limits.totalTime);
}

void HttpRequest::onMetaData()
{
    if (m_silence.isActive())
        m_silence.start();
    // The rate is that of the body: how long a server thinks is a matter of the silence.
    if (m_limits.silence > 0 && m_limits.leastRate > 0 && !m_pace.isActive())
        m_pace.start();
    m_reply->setReadBufferSize(readBufferSize);
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_limits.bodySize)
        stop(tooLarge(m_limits.bodySize));
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
        stop(tooLarge(m_limits.bodySize));
        return;
    }
    if (status() >= 400)
        return;
    if (m_received == block.size() && encodingOf(*m_reply) == "gzip")
        m_gzip = std::make_unique<GzipBody>();
    if (m_gzip == nullptr)
        m_body += block;
    else if (!m_gzip->take(block, m_body, m_limits.bodySize))
        stop(m_gzip->error());
}

void HttpRequest::checkPace()
{
    const qint64 wanted = qint64(m_limits.leastRate) * m_limits.silence / 1000;
    if (m_received - m_receivedAtPace < wanted)
        stop(QStringLiteral("slower than %1 bytes a second for %2 ms")
                 .arg(m_limits.leastRate)
                 .arg(m_limits.silence));
    m_receivedAtPace = m_received;
}

void HttpRequest::onFinished()
{
    onReadyRead();
    if (m_done)
        return;
    if (status() >= 400)
        done(QStringLiteral("HTTP status %1").arg(status()), status());
    else if (m_reply->error() != QNetworkReply::NoError)
        done(transportError());
    else if (status() >= 300)
        done(QStringLiteral("HTTP status %1").arg(status()), status());
    else
        done(bodyError());
}

void HttpRequest::stop(const QString& cause)
{
    if (!m_done)
        done(cause);
}

void HttpRequest::done(const QString& cause, int code)
{
    m_done = true;
    for (QTimer* timer : {&m_silence, &m_pace, &m_total})
        timer->stop();
    if (m_reply != nullptr)
        m_reply->disconnect(this);
    if (!cause.isEmpty())
        m_body.clear();
    const QString address =
        m_url.toString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
    Q_EMIT sigDone(m_body, cause.isEmpty() ? cause : QStringLiteral("%1: %2").arg(address, cause),
                   code);
}

int HttpRequest::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

QString HttpRequest::transportError() const
{
    switch (m_reply->error()) {
    case QNetworkReply::InsecureRedirectError:
        return QStringLiteral("redirected to a less safe scheme");
    case QNetworkReply::TooManyRedirectsError:
        return QStringLiteral("redirected more than %1 times").arg(maxRedirects);
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
        return QStringLiteral("redirected to no http or https address");
    case QNetworkReply::SslHandshakeFailedError:
        return m_distrust.isEmpty() ? m_reply->errorString() : m_distrust;
    default:
        break;
    }
    // Texts of the higher layers name the whole address, query and all.
    return m_reply->error() < QNetworkReply::ContentAccessDenied
        ? m_reply->errorString()
        : QStringLiteral("network error %1").arg(m_reply->error());
}

QString HttpRequest::bodyError() const
{
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    if (length.isValid() && m_received < length.toLongLong())
        return QStringLiteral("the body ends early");
    const QByteArray encoding = encodingOf(*m_reply);
    if (encoding == "gzip")
        return m_gzip != nullptr && m_gzip->isWhole() ? QString()
                                                      : QStringLiteral("the gzip body ends early");
    return encoding.isEmpty() ? QString()
                              : QStringLiteral("the body is encoded though that was not asked for");
}
