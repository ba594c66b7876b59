#pragma once

#include <QByteArray>
#include <QHash>
#include <QPointer>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

/**
 * An HTTP server for tests, in the test's own process and thread: 127.0.0.1, a port that the system
 * picks. It answers while the test's event loop runs. Paths are given without the query; what is
 * not served is answered with 404. Every answer closes its connection.
 */
class HttpServer : public QObject
{
    Q_OBJECT

public:
    struct Answer
    {
        int status = 200;
        QByteArray body = {};
        QByteArray header = {}; ///< one header line more, without its line end
        qint64 declared = -1;   ///< the Content-Length told, when not the body's; or noLength
        int sent = -1;          ///< how many bytes of the body go out before the connection ends
        int delay = 0;          ///< milliseconds before the answer
        int pause = 0;          ///< milliseconds after each byte of the body
    };
    static constexpr qint64 noLength = -2;

    HttpServer();

    /** Without a slash at the end. */
    QString baseUrl() const;
    QUrl url(const QString& target) const;

    void serve(const QString& path, const QByteArray& body);
    void answer(const QString& path, const Answer& answer);
    void fail(const QString& path, int status);
    void redirect(const QString& path, const QString& location);
    /** Tells the body's length but ends the connection after the given bytes of it. */
    void cutOff(const QString& path, const QByteArray& body, int after);

    /** Requests for the path are taken, but answered only on release, as served then. */
    void hold(const QString& path);
    void release(const QString& path);
    /** How many requests are being held. */
    int held() const;

    /** From now on connections are refused. */
    void close();

    /** How many requests came for the path, whatever their query. */
    int requests(const QString& path) const;
    /** Path and query of every request so far, in order. */
    QStringList targets() const { return m_targets; }

private:
    void onConnection();
    void onReadyRead(QTcpSocket* socket);
    void onRequest(QTcpSocket* socket, const QString& path);
    void send(QTcpSocket* socket, const Answer& answer);
    void trickle(QTcpSocket* socket, const QByteArray& body, int pause);

    QTcpServer m_server;
    quint16 m_port = 0; // outlives close()
    QHash<QString, Answer> m_answers;
    QHash<QString, QList<QPointer<QTcpSocket>>> m_held;
    QStringList m_targets;
};
