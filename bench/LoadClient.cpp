#include "LoadClient.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

namespace {

const QByteArray endOfChunks = "\r\n0\r\n\r\n";

/** The bytes of the whole answer by its head, 0 when its chunks tell, or the head is not whole. */
int sizeOf(const QByteArray& received, int head)
{
    static const QByteArray field = "\r\ncontent-length:";
    const QByteArray fields = received.left(head).toLower();
    const int begin = fields.indexOf(field);
    if (begin < 0)
        return 0;
    const int from = begin + field.size();
    return head + fields.mid(from, fields.indexOf("\r\n", from) - from).trimmed().toInt();
}

} // namespace

LoadClient::LoadClient(const LoadPlan& plan, LoadCount& count, const std::function<void()>& onDone)
    : m_plan(plan)
    , m_count(count)
    , m_onDone(onDone)
{
}

void LoadClient::start()
{
    m_missing = 1;
    add({m_plan.targets.first()});
}

void LoadClient::add(const Request& request)
{
    m_waiting.enqueue(request);
    startWaiting();
}

void LoadClient::startWaiting()
{
    for (Connection& connection : m_connections) {
        if (m_waiting.isEmpty())
            return;
        if (connection.isBusy)
            continue;
        connection.isBusy = true;
        connection.request = m_waiting.dequeue();
        send(connection);
    }
}

void LoadClient::send(Connection& connection)
{
    if (connection.socket == nullptr) {
        connection.socket = new QTcpSocket(this);
        connect(connection.socket, &QTcpSocket::readyRead, this,
                [this, &connection] { onReadyRead(connection); });
        connect(connection.socket, &QTcpSocket::disconnected, this,
                [this, &connection] { onLost(connection); });
        connect(connection.socket, &QTcpSocket::errorOccurred, this, [this, &connection] {
            if (connection.socket->state() == QTcpSocket::UnconnectedState)
                onLost(connection);
        });
    }
    if (connection.socket->state() == QTcpSocket::UnconnectedState)
        connection.socket->connectToHost(QHostAddress(QHostAddress::LocalHost),
                                         static_cast<quint16>(m_plan.port));
    connection.received.clear();
    connection.wanted = 0;
    connection.socket->write("GET " + connection.request.target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n"
                             + (m_plan.asksForGzip ? "Accept-Encoding: gzip\r\n" : "") + "\r\n");
}

void LoadClient::onReadyRead(Connection& connection)
{
    connection.received += connection.socket->readAll();
    if (connection.wanted == 0) {
        const int head = connection.received.indexOf("\r\n\r\n") + 4;
        if (head < 4)
            return;
        connection.wanted = sizeOf(connection.received, head);
    }
    if (connection.wanted > 0 ? connection.received.size() >= connection.wanted
                              : connection.received.endsWith(endOfChunks))
        onAnswer(connection);
}

void LoadClient::onLost(Connection& connection)
{
    if (!connection.isBusy)
        return;
    connection.isBusy = false;
    onRefused(connection.request);
    startWaiting();
}

void LoadClient::onAnswer(Connection& connection)
{
    connection.isBusy = false;
    m_count.received += connection.received.size();
    if (connection.received.mid(9, 3) == "200") {
        ++m_count.answered;
        m_count.bodies += connection.received.size() - connection.received.indexOf("\r\n\r\n") - 4;
        onEnded();
    } else {
        onRefused(connection.request);
    }
    startWaiting();
}

void LoadClient::onRefused(Request request)
{
    ++m_count.refused.at(static_cast<size_t>(request.tried));
    const int pause = m_plan.pauseBefore(++request.tried);
    if (pause < 0) {
        m_hasFailed = true;
        onEnded();
    } else {
        QTimer::singleShot(pause, this, [this, request] { add(request); });
    }
}

void LoadClient::onEnded()
{
    if (--m_missing > 0)
        return;
    if (m_hasFirst || m_hasFailed) {
        m_count.failedClients += m_hasFailed ? 1 : 0;
        m_onDone();
        return;
    }
    m_hasFirst = true;
    m_missing = m_plan.targets.size() - 1;
    for (const QByteArray& target : m_plan.targets.mid(1))
        m_waiting.enqueue({target});
    startWaiting();
}
