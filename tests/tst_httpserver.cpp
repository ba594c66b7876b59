#include "support/HttpServer.h"

#include <QTcpSocket>
#include <QtTest>

/** The server as the bytes of its answers show it, since every other test believes it. */
class TestHttpServer : public QObject
{
    Q_OBJECT

private:
    HttpServer m_server;

    QByteArray fetch(const QString& target)
    {
        QTcpSocket socket;
        ask(socket, target);
        [&] { QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState); }();
        return socket.readAll();
    }

    void ask(QTcpSocket& socket, const QString& target)
    {
        socket.connectToHost(QStringLiteral("127.0.0.1"), quint16(m_server.url({}).port()));
        socket.write("GET " + target.toUtf8() + " HTTP/1.1\r\nHost: x\r\n\r\n");
    }

private Q_SLOTS:
    void answers()
    {
        m_server.serve(QStringLiteral("/a"), "body");
        m_server.cutOff(QStringLiteral("/cut"), "body", 1);
        m_server.fail(QStringLiteral("/broken"), 503);
        m_server.redirect(QStringLiteral("/moved"), QStringLiteral("/a"));
        QCOMPARE(
            fetch(QStringLiteral("/a?57")),
            QByteArray("HTTP/1.1 200 Test\r\nConnection: close\r\nContent-Length: 4\r\n\r\nbody"));
        QVERIFY(fetch(QStringLiteral("/cut")).endsWith("Content-Length: 4\r\n\r\nb"));
        QVERIFY(fetch(QStringLiteral("/broken")).startsWith("HTTP/1.1 503 "));
        QVERIFY(fetch(QStringLiteral("/moved")).contains("302 Test"));
        QVERIFY(fetch(QStringLiteral("/moved")).contains("\r\nLocation: /a\r\n"));
        QVERIFY(fetch(QStringLiteral("/absent")).startsWith("HTTP/1.1 404 "));
        QCOMPARE(m_server.requests(QStringLiteral("/a")), 1);
        QCOMPARE(m_server.requests(QStringLiteral("/moved")), 2);
        QCOMPARE(m_server.targets().first(), QStringLiteral("/a?57"));
    }

    void holdsUntilReleased()
    {
        m_server.hold(QStringLiteral("/held"));
        QTcpSocket socket;
        ask(socket, QStringLiteral("/held"));
        QTRY_COMPARE(m_server.held(), 1);
        QCOMPARE(socket.bytesAvailable(), 0);
        m_server.serve(QStringLiteral("/held"), "late");
        m_server.release(QStringLiteral("/held"));
        QTRY_VERIFY(socket.peek(1000).endsWith("late"));
        QCOMPARE(m_server.held(), 0);
    }

    void refusesWhenClosed()
    {
        m_server.close();
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), quint16(m_server.url({}).port()));
        QTRY_COMPARE(socket.error(), QAbstractSocket::ConnectionRefusedError);
    }
};

QTEST_GUILESS_MAIN(TestHttpServer)
#include "tst_httpserver.moc"
