#include "testing/ZTestServer.h"

#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace {

QString pathOf(const QString& target)
{
    return target.section(QLatin1Char('?'), 0, 0);
}

} // namespace

class ZTestServer::Listener : public QTcpServer
{
public:
    Listener();
    Q_DISABLE_COPY(Listener)
    ~Listener() override = default;

    void send(QTcpSocket* socket, const Answer& answer);
    Answer answerFor(const QString& path) const { return answers.value(path, {404}); }

    quint16 port = 0; // outlives close()
    QHash<QString, Answer> answers;
    QHash<QString, QList<QPointer<QTcpSocket>>> held;
    QStringList targets;
    QJsonObject versions;

private:
    void onConnection();
    void onReadyRead(QTcpSocket* socket);
    void onRequest(QTcpSocket* socket, const QString& path);
    void trickle(QTcpSocket* socket, const QByteArray& body, int pause);
};

ZTestServer::Listener::Listener()
{
    connect(this, &QTcpServer::newConnection, this, &Listener::onConnection);
    if (!listen(QHostAddress::LocalHost))
        qFatal("no port to listen on: %s", qPrintable(errorString()));
    port = serverPort();
}

void ZTestServer::Listener::onConnection()
{
    while (QTcpSocket* socket = nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void ZTestServer::Listener::onReadyRead(QTcpSocket* socket)
{
    const QByteArray head = socket->peek(qint64(64) * 1024);
    if (!head.startsWith("GET ")) {
        send(socket, {400});
        return;
    }
    if (!head.contains("\r\n\r\n"))
        return;
    socket->readAll();
    const QString target = QString::fromUtf8(head.split(' ').at(1));
    targets.append(target);
    onRequest(socket, pathOf(target));
}

void ZTestServer::Listener::onRequest(QTcpSocket* socket, const QString& path)
{
    const auto holding = held.find(path);
    if (holding != held.end()) {
        holding->append(socket);
        return;
    }
    const Answer answer = answerFor(path);
    QTimer::singleShot(answer.delay, socket, [this, socket, answer] { send(socket, answer); });
}

void ZTestServer::Listener::send(QTcpSocket* socket, const Answer& answer)
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

void ZTestServer::Listener::trickle(QTcpSocket* socket, const QByteArray& body, int pause)
{
    auto* timer = new QTimer(socket);
    connect(timer, &QTimer::timeout, socket, [socket, body, sent = 0]() mutable {
        if (sent < body.size())
            socket->write(body.mid(sent++, 1));
        else
            socket->disconnectFromHost();
    });
    timer->start(pause);
}

ZTestServer::ZTestServer()
    : m_listener(new Listener)
{
}

ZTestServer::~ZTestServer() = default;

QString ZTestServer::baseUrl() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_listener->port);
}

QUrl ZTestServer::url(const QString& target) const
{
    return QUrl(baseUrl() + target);
}

void ZTestServer::publish(const QString& table, int version, const QByteArray& bytes)
{
    serve(QStringLiteral("/app/resources/") + table, bytes);
    m_listener->versions.insert(table, version);
    const QJsonObject told {{QStringLiteral("versions"), m_listener->versions}};
    serve(QStringLiteral("/app/versions.json"), QJsonDocument(told).toJson());
}

void ZTestServer::serve(const QString& path, const QByteArray& body)
{
    answer(path, {200, body});
}

void ZTestServer::answer(const QString& path, const Answer& answer)
{
    m_listener->answers.insert(path, answer);
}

void ZTestServer::fail(const QString& path, int status)
{
    answer(path, {status, "failed"});
}

void ZTestServer::redirect(const QString& path, const QString& location)
{
    answer(path, {302, {}, "Location: " + location.toUtf8()});
}

void ZTestServer::cutOff(const QString& path, const QByteArray& body, int after)
{
    answer(path, {200, body, {}, body.size(), after});
}

void ZTestServer::hold(const QString& path)
{
    m_listener->held.insert(path, {});
}

void ZTestServer::release(const QString& path)
{
    const auto sockets = m_listener->held.take(path);
    for (const QPointer<QTcpSocket>& socket : sockets) {
        if (socket != nullptr)
            m_listener->send(socket, m_listener->answerFor(path));
    }
}

int ZTestServer::held() const
{
    int count = 0;
    for (const auto& sockets : m_listener->held)
        count += sockets.size();
    return count;
}

void ZTestServer::close()
{
    m_listener->close();
}

int ZTestServer::requests(const QString& path) const
{
    int count = 0;
    for (const QString& target : m_listener->targets)
        count += pathOf(target) == path ? 1 : 0;
    return count;
}

QStringList ZTestServer::targets() const
{
    return m_listener->targets;
}
