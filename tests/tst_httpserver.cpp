#include "support/HttpServer.h"
#include "support/Literals.h"

#include <QTcpSocket>
#include <QtTest>

/** The server as the bytes of its answers show it, since every other test believes it. */
class tst_httpserver : public QObject
{
    Q_OBJECT

private:
    HttpServer m_server;

    QByteArray fetch(const QString& target)
    {
        QTcpSocket socket;
        socket.connectToHost(u"127.0.0.1"_s, quint16(m_server.url({}).port()));
        socket.write("GET " + target.toUtf8() + " HTTP/1.1\r\nHost: x\r\n\r\n");
        [&] { QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState); }();
        return socket.readAll();
    }

private Q_SLOTS:
    void answers()
    {
        m_server.serve(u"/a"_s, "body");
        m_server.cutOff(u"/cut"_s, "body", 1);
        m_server.fail(u"/broken"_s, 503);
        m_server.redirect(u"/moved"_s, u"/a"_s);
        QCOMPARE(
            fetch(u"/a?57"_s),
            QByteArray("HTTP/1.1 200 Test\r\nConnection: close\r\nContent-Length: 4\r\n\r\nbody"));
        QVERIFY(fetch(u"/cut"_s).endsWith("Content-Length: 4\r\n\r\nb"));
        QVERIFY(fetch(u"/broken"_s).startsWith("HTTP/1.1 503 "));
        QVERIFY(fetch(u"/moved"_s).contains("302 Test"));
        QVERIFY(fetch(u"/moved"_s).contains("\r\nLocation: /a\r\n"));
        QVERIFY(fetch(u"/absent"_s).startsWith("HTTP/1.1 404 "));
        QCOMPARE(m_server.requests(u"/a"_s), 1);
        QCOMPARE(m_server.requests(u"/moved"_s), 2);
        QCOMPARE(m_server.targets().first(), u"/a?57"_s);
    }
};

QTEST_GUILESS_MAIN(tst_httpserver)
#include "tst_httpserver.moc"
