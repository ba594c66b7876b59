#include "server/ContentServer.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "support/Patience.h"
#include "testing/ZTestFolder.h"

#include <QRegularExpression>
#include <QTcpSocket>
#include <QUrl>
#include <QtTest>

namespace {

constexpr int largeSize = 3'000'000; // more than any socket takes in one go

QByteArray large()
{
    QByteArray bytes;
    for (int i = 0; bytes.size() < largeSize; ++i)
        bytes += QByteArray::number(i) + '\n';
    return bytes;
}

} // namespace

/** What a content server answers to what comes in over a wire, well-meant or not. */
class tst_server : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTcpSocket> connected() const
    {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(u"127.0.0.1"_s,
                              static_cast<quint16>(QUrl(m_server.baseUrl()).port()));
        if (!socket->waitForConnected(patience))
            qFatal("no connection");
        return socket;
    }

    /** All that comes until the server closes the connection. */
    static QByteArray rest(QTcpSocket& socket)
    {
        while (socket.state() == QTcpSocket::ConnectedState && socket.waitForReadyRead(patience)) {
        }
        return socket.readAll();
    }

    QByteArray ask(const QByteArray& request) const
    {
        const auto socket = connected();
        socket->write(request);
        return rest(*socket);
    }

    static QByteArray bodyOf(const QByteArray& answer)
    {
        return answer.mid(answer.indexOf("\r\n\r\n") + 4);
    }

    bool isWell() const
    {
        return bodyOf(ask("GET /a/f HTTP/1.1\r\nHost: x\r\n\r\n")) == "0123456789";
    }

    ZTestFolder m_folder;
    ContentServer m_server;

private Q_SLOTS:
    void initTestCase()
    {
        ZTestFolder::write(u"site/a/f"_s, "0123456789");
        ZTestFolder::write(u"site/a/+ 玫"_s, "plus");
        ZTestFolder::write(u"site/empty"_s, "");
        ZTestFolder::write(u"site/large"_s, large());
        ZTestFolder::write(u"site/app/versions.json"_s, "{}");
        ZTestFolder::write(u"site.mine/f"_s, "secret");
        ZTestFolder::write(u"secret"_s, "secret");
        QDir().mkdir(u"outside"_s);
        ZTestFolder::write(u"outside/f"_s, "secret");
        QFile::link(QFileInfo(u"outside"_s).absoluteFilePath(), u"site/folder"_s);
        QFile::link(u"../../secret"_s, u"site/a/relative"_s);
        QFile::link(u"loop"_s, u"site/loop"_s);
        QString error;
        QVERIFY2(m_server.start(u"site"_s, 0, &error), qPrintable(error));
    }
    void cleanup() { QVERIFY(isWell()); } // whatever was asked

    void requests_data() { Cases::rows("server"); }

    void requests()
    {
        QFETCH(QString, request);
        QFETCH(QString, body);
        const QByteArray answer = ask(Cases::bytes(request));
        QTEST(QString::fromLatin1(answer.left(12)), "status");
        QCOMPARE(bodyOf(answer), Cases::bytes(body));
        static const QRegularExpression length(u"\r\nContent-Length: ([0-9]+)\r\n"_s);
        const bool isHead = request.startsWith(u"HEAD"_s);
        if (!isHead)
            QCOMPARE(length.match(QString::fromLatin1(answer)).captured(1).toInt(), body.size());
        QCOMPARE(answer.contains("\r\nCache-Control: no-cache\r\n"),
                 request.contains(u"versions.json"_s));
    }

    /** Nothing of a head that is too long is taken for a request. */
    void longHeads()
    {
        const QByteArray much(100'000, 'x');
        QVERIFY(ask("GET /" + much + " HTTP/1.1\r\nHost: x\r\n\r\n").startsWith("HTTP/1.1 4"));
        QVERIFY(ask("GET /a/f HTTP/1.1\r\nX: " + much + "\r\n\r\n").startsWith("HTTP/1.1 4"));
    }

    /** A second request on the same wire has no answer, and the wire is closed to say so. */
    void pipelining()
    {
        const QByteArray request = "GET /a/f HTTP/1.1\r\nHost: x\r\n\r\n";
        const QByteArray answer = ask(request + request);
        QCOMPARE(answer.count("0123456789"), 1);
        QVERIFY(answer.contains("\r\nConnection: close\r\n"));
    }

    void byteForByte()
    {
        const auto socket = connected();
        for (const char byte : QByteArray("GET /a/f HTTP/1.1\r\nHost: x\r\n\r\n")) {
            socket->write(&byte, 1);
            QVERIFY(socket->waitForBytesWritten(patience));
        }
        QCOMPARE(bodyOf(rest(*socket)), QByteArray("0123456789"));
    }

    /** Whoever asks and does not read is not waited for by others, nor is who says nothing. */
    void slowClients()
    {
        std::vector<std::unique_ptr<QTcpSocket>> slow;
        for (int i = 0; i < 3; ++i) {
            slow.push_back(connected());
            slow.back()->setReadBufferSize(1);
            slow.back()->write("GET /large HTTP/1.1\r\nHost: x\r\n\r\n");
            QVERIFY(slow.back()->waitForReadyRead(patience));
            slow.push_back(connected());
            slow.back()->write("GET /a/f HT");
            QVERIFY(slow.back()->waitForBytesWritten(patience));
        }
        QVERIFY(isWell());
        for (const auto& socket : slow) // the others go in the middle
            socket->abort();
    }

    void aLargeFileInSmallBites()
    {
        const auto socket = connected();
        socket->setReadBufferSize(1000);
        socket->write("GET /large HTTP/1.1\r\nHost: x\r\n\r\n");
        QByteArray answer;
        while (socket->waitForReadyRead(patience))
            answer += socket->read(1000);
        QVERIFY(bodyOf(answer + socket->readAll()) == large());
    }

    /** A file that changes is served as it then is, and one that goes is gone. */
    void changes()
    {
        for (const QByteArray& bytes : {QByteArray("one"), QByteArray("another"), QByteArray()}) {
            ZTestFolder::write(u"site/changing"_s, bytes);
            QCOMPARE(bodyOf(ask("GET /changing HTTP/1.1\r\nHost: x\r\n\r\n")), bytes);
        }
        QFile::remove(u"site/changing"_s);
        QVERIFY(ask("GET /changing HTTP/1.1\r\nHost: x\r\n\r\n").startsWith("HTTP/1.1 404"));
    }

    void ends()
    {
        ContentServer server;
        QString error;
        QVERIFY(!server.start(u"gone"_s, 0, &error));
        QCOMPARE(error, u"gone is not a folder"_s);
        QVERIFY(!ContentServer().start(u"site/a/f"_s, 0, &error));
        ContentServer other;
        const int port = QUrl(m_server.baseUrl()).port();
        QVERIFY(!other.start(u"site"_s, port, &error));
        QCOMPARE(error, u"port %1 of 127.0.0.1 cannot be had"_s.arg(port));
        QVERIFY(server.start(u"site"_s, 0, &error));
        QTcpSocket socket;
        const auto own = static_cast<quint16>(QUrl(server.baseUrl()).port());
        server.stop();
        server.stop();
        socket.connectToHost(u"127.0.0.1"_s, own);
        QVERIFY(!socket.waitForConnected(patience));
        QCOMPARE(server.requests(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_server)

#include "tst_server.moc"
