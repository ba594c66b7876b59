#include "host/HttpRequest.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

constexpr int maxRedirects = 10;

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
    // A compressed body that ends early would be handed over as if it were whole.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

QString tooLarge(qint64 limit)
{
    return QStringLiteral("the body is larger than %1 bytes").arg(limit);
}

} // namespace

HttpRequest::HttpRequest(QNetworkAccessManager& network, const QUrl& url, int timeout,
                         qint64 maxBodySize)
    : m_url(url)
    , m_maxBodySize(maxBodySize)
{
    m_silence.setSingleShot(true);
    const QString error = addressError(url);
    if (!error.isEmpty()) {
        connect(&m_silence, &QTimer::timeout, this, [this, error] { done(error); });
        m_silence.start(0);
        return;
    }
    m_silence.setInterval(timeout);
    connect(&m_silence, &QTimer::timeout, this, [this] {
        stop(QStringLiteral("nothing received for %1 ms").arg(m_silence.interval()));
    });
    start(network);
}

HttpRequest::~HttpRequest()
{
    m_done = true;
    delete m_reply;
}

void HttpRequest::onNeighbourProgress(const QUrl& url)
{
    if (m_body.isEmpty() && m_silence.isActive() && url.authority() == m_url.authority())
        m_silence.start();
}

void HttpRequest::start(QNetworkAccessManager& network)
{
    m_reply = network.get(requestFor(m_url));
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpRequest::onMetaData);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpRequest::onReadyRead);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &HttpRequest::sigProgress);
    // Queued: a reply may fail while it is being made, and nobody listens to us yet.
    connect(m_reply, &QNetworkReply::finished, this, &HttpRequest::onFinished,
            Qt::QueuedConnection);
    if (m_silence.interval() > 0)
        m_silence.start();
}

void HttpRequest::onMetaData()
{
    if (m_silence.isActive())
        m_silence.start();
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_maxBodySize)
        stop(tooLarge(m_maxBodySize));
}

void HttpRequest::onReadyRead()
{
    if (m_done)
        return;
    if (m_silence.isActive())
        m_silence.start();
    m_body += m_reply->read(m_maxBodySize - m_body.size() + 1);
    if (m_body.size() > m_maxBodySize)
        stop(tooLarge(m_maxBodySize));
}

void HttpRequest::onFinished()
{
    if (m_done)
        return;
    onReadyRead();
    if (m_done)
        return;
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 400)
        done(QStringLiteral("HTTP status %1").arg(status), status);
    else if (m_reply->error() != QNetworkReply::NoError)
        done(transportError());
    else if (status >= 300)
        done(QStringLiteral("HTTP status %1").arg(status), status);
    else if (m_reply->hasRawHeader("Content-Encoding"))
        done(QStringLiteral("the body is encoded though that was not asked for"));
    else if (endsEarly())
        done(QStringLiteral("the body ends early"));
    else
        done(QString());
}

void HttpRequest::stop(const QString& cause)
{
    if (!m_done)
        done(cause);
}

void HttpRequest::done(const QString& cause, int code)
{
    m_done = true;
    m_silence.stop();
    if (m_reply != nullptr)
        m_reply->disconnect(this);
    if (!cause.isEmpty())
        m_body.clear();
    const QString address =
        m_url.toString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
    Q_EMIT sigDone(m_body, cause.isEmpty() ? cause : QStringLiteral("%1: %2").arg(address, cause),
                   code);
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
    default:
        break;
    }
    // Texts of the higher layers name the whole address, query and all.
    return m_reply->error() < QNetworkReply::ContentAccessDenied
        ? m_reply->errorString()
        : QStringLiteral("network error %1").arg(m_reply->error());
}

bool HttpRequest::endsEarly() const
{
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    return length.isValid() && m_body.size() < length.toLongLong();
}
