#include "support/HttpServer.h"

#include <QTimer>

namespace {

QString pathOf(const QString& target)
{
    return target.section(QLatin1Char('?'), 0, 0);
}

const HttpServer::Answer notFound {404};

} // namespace

HttpServer::HttpServer()
{
    connect(&m_server, &QTcpServer::newConnection, this, &HttpServer::onConnection);
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("no port to listen on: %s", qPrintable(m_server.errorString()));
    m_port = m_server.serverPort();
}

QString HttpServer::baseUrl() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

QUrl HttpServer::url(const QString& target) const
{
    return QUrl(baseUrl() + target);
}

void HttpServer::serve(const QString& path, const QByteArray& body)
{
    answer(path, {200, body});
}

void HttpServer::answer(const QString& path, const Answer& answer)
{
    m_answers.insert(path, answer);
}

void HttpServer::fail(const QString& path, int status)
{
    answer(path, {status, "failed"});
}

void HttpServer::redirect(const QString& path, const QString& location)
{
    answer(path, {302, {}, "Location: " + location.toUtf8()});
}

void HttpServer::cutOff(const QString& path, const QByteArray& body, int after)
{
    answer(path, {200, body, {}, body.size(), after});
}

void HttpServer::hold(const QString& path)
{
    m_held.insert(path, {});
}

void HttpServer::release(const QString& path)
{
    const auto sockets = m_held.take(path);
    for (const QPointer<QTcpSocket>& socket : sockets) {
        if (socket != nullptr)
            send(socket, m_answers.value(path, notFound));
    }
}

int HttpServer::held() const
{
    int count = 0;
    for (const auto& sockets : m_held)
        count += sockets.size();
    return count;
}

void HttpServer::close()
{
    m_server.close();
}

int HttpServer::requests(const QString& path) const
{
    int count = 0;
    for (const QString& target : m_targets)
        count += pathOf(target) == path ? 1 : 0;
    return count;
}

void HttpServer::onConnection()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void HttpServer::onReadyRead(QTcpSocket* socket)
{
    const QByteArray head = socket->peek(64 * 1024);
    if (!head.startsWith("GET ")) {
        send(socket, {400});
        return;
    }
    if (!head.contains("\r\n\r\n"))
        return;
    socket->readAll();
    const QString target = QString::fromUtf8(head.split(' ').at(1));
    m_targets.append(target);
    onRequest(socket, pathOf(target));
}

void HttpServer::onRequest(QTcpSocket* socket, const QString& path)
{
    const auto holding = m_held.find(path);
    if (holding != m_held.end()) {
        holding->append(socket);
        return;
    }
    const Answer answer = m_answers.value(path, notFound);
    QTimer::singleShot(answer.delay, socket, [this, socket, answer] { send(socket, answer); });
}

void HttpServer::send(QTcpSocket* socket, const Answer& answer)
{
    const qint64 length = answer.declared >= 0 ? answer.declared : answer.body.size();
    QByteArray head =
        "HTTP/1.1 " + QByteArray::number(answer.status) + " Test\r\n" + "Connection: close\r\n";
    if (answer.declared != noLength)
        head += "Content-Length: " + QByteArray::number(length) + "\r\n";
    if (!answer.header.isEmpty())
        head += answer.header + "\r\n";
    const QByteArray body = answer.body.mid(0, answer.sent);
    if (answer.pause > 0) {
        socket->write(head + "\r\n");
        trickle(socket, body, answer.pause);
        return;
    }
    socket->write(head + "\r\n" + body);
    socket->disconnectFromHost();
}

void HttpServer::trickle(QTcpSocket* socket, const QByteArray& body, int pause)
{
    if (body.isEmpty())
        socket->disconnectFromHost();
    else if (socket->write(body.left(1)) == 1)
        QTimer::singleShot(pause, socket, [=] { trickle(socket, body.mid(1), pause); });
}
