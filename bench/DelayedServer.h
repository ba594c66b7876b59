#pragma once

#include <QByteArray>
#include <QHash>
#include <QMutex>
#include <QStringList>
#include <QTcpServer>
#include <QThread>

class QTcpSocket;

/**
 * Answers each request a time after it came, however many others wait, in a thread of its own.
 *
 * HTTP/1.1 over connections that stay, on 127.0.0.1 and a port that the system picks; compressed by
 * gzip for whom asks for it.
 */
class DelayedServer
{
public:
    /** Serves the published tables; the delay is in milliseconds. Throws std::runtime_error when it
     *  cannot. */
    explicit DelayedServer(int delay);
    ~DelayedServer();
    Q_DISABLE_COPY(DelayedServer)

    int port() const { return m_server.serverPort(); }

    /** Paths and queries that came in since the last call, sorted. */
    QStringList takeTargets();

private:
    void onConnection();
    void onReadyRead(QTcpSocket* socket);
    QByteArray answerTo(const QByteArray& request);

    int m_delay;
    QHash<QByteArray, QByteArray> m_plain; // by path
    QHash<QByteArray, QByteArray> m_compressed;
    QThread m_thread;
    QTcpServer m_server; // lives in m_thread
    QMutex m_mutex;
    QStringList m_targets;
};
