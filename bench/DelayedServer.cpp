#include "DelayedServer.h"

#include "Published.h"

#include <QTcpSocket>
#include <QTimer>

#include <stdexcept>

DelayedServer::DelayedServer(int delay)
    : m_delay(delay)
{
    for (const QString& file : Published::tableFiles()) {
        const QByteArray path = '/' + file.toUtf8();
        m_plain.insert(path, Published::bytesOf(file));
        m_compressed.insert(path, Published::gzip(m_plain.value(path)));
    }
    m_server.moveToThread(&m_thread);
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { onConnection(); });
    m_thread.start();
    bool listens = false;
    QMetaObject::invokeMethod(
        &m_server, [&] { listens = m_server.listen(QHostAddress::LocalHost); },
        Qt::BlockingQueuedConnection);
    if (!listens) {
        m_thread.quit();
        m_thread.wait();
        throw std::runtime_error("no port to listen on");
    }
}

DelayedServer::~DelayedServer()
{
    QMetaObject::invokeMethod(
        &m_server,
        [this] {
            m_server.close();
            qDeleteAll(m_server.findChildren<QTcpSocket*>());
        },
        Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}

QStringList DelayedServer::takeTargets()
{
    const QMutexLocker lock(&m_mutex);
    QStringList targets;
    targets.swap(m_targets);
    targets.sort();
    return targets;
}

void DelayedServer::onConnection()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QObject::connect(socket, &QTcpSocket::readyRead, socket,
                         [this, socket] { onReadyRead(socket); });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void DelayedServer::onReadyRead(QTcpSocket* socket)
{
    if (!socket->peek(socket->bytesAvailable()).endsWith("\r\n\r\n"))
        return;
    const QByteArray answer = answerTo(socket->readAll());
    QTimer::singleShot(m_delay, Qt::PreciseTimer, socket,
                       [socket, answer] { socket->write(answer); });
}

QByteArray DelayedServer::answerTo(const QByteArray& request)
{
    const QByteArray target = request.split(' ').value(1);
    const QByteArray path = target.left((target + '?').indexOf('?'));
    {
        const QMutexLocker lock(&m_mutex);
        m_targets.append(QString::fromUtf8(target));
    }
    const QByteArray fields = request.toLower();
    const int encodings = fields.indexOf("\r\naccept-encoding:");
    const bool isCompressed = encodings >= 0
        && fields.mid(encodings, fields.indexOf("\r\n", encodings + 2) - encodings)
               .contains("gzip");
    const QByteArray body = (isCompressed ? m_compressed : m_plain).value(path);
    const QByteArray status = m_plain.contains(path) ? "200 OK" : "404 Not Found";
    return "HTTP/1.1 " + status + (isCompressed ? "\r\nContent-Encoding: gzip" : "")
        + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}
