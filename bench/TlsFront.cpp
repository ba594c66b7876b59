#include "TlsFront.h"

#include <QDir>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <stdexcept>

namespace {

const QString configuration = QStringLiteral(R"(
worker_processes 1;
pid nginx.pid;
events { worker_connections 256; }
http {
    log_format protocol "$server_protocol";
    access_log access.log protocol;
    client_body_temp_path temp_body;
    proxy_temp_path temp_proxy;
    fastcgi_temp_path temp_fastcgi;
    uwsgi_temp_path temp_uwsgi;
    scgi_temp_path temp_scgi;
    upstream server { server 127.0.0.1:%1; keepalive 64; }
    server {
        listen 127.0.0.1:%2 ssl http2;
        ssl_certificate ../front.pem;
        ssl_certificate_key ../front.key;
        location / {
            proxy_pass http://server;
            proxy_http_version 1.1;
            proxy_set_header Connection "";
        }
    }
}
)");

} // namespace

void TlsFront::makeCertificate()
{
    const QString arguments = QStringLiteral(
        "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=front "
        "-addext subjectAltName=IP:127.0.0.1 -keyout front.key -out front.pem");
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"), arguments.split(QLatin1Char(' ')));
    const bool ended = openssl.waitForFinished();
    const QList<QSslCertificate> made = QSslCertificate::fromPath(certificate());
    if (!ended || made.isEmpty())
        throw std::runtime_error("no certificate: " + openssl.readAllStandardError().toStdString()
                                 + openssl.errorString().toStdString());
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.addCaCertificates(made);
    QSslConfiguration::setDefaultConfiguration(trusting);
}

QString TlsFront::certificate()
{
    return QStringLiteral("front.pem");
}

TlsFront::TlsFront(int serverPort)
    : m_port(Nginx::freePort())
{
    const QString folder = QStringLiteral("front");
    QDir(folder).removeRecursively();
    m_nginx = std::make_unique<Nginx>(folder, configuration.arg(serverPort).arg(m_port), m_port);
}

QStringList TlsFront::endAndTellProtocols()
{
    m_nginx->stop();
    return m_nginx->accessLog();
}
