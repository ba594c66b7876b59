#include "host/ZHttpComm.h"
#include "host/ZImageCacheUtil.h"
#include "host/zErrorInfo.h"
#include "support/CacheName.h"
#include "support/Cases.h"
#include "support/HttpServer.h"
#include "support/Literals.h"
#include "support/WorkFolder.h"

#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#ifdef __SANITIZE_ADDRESS__
// What a failed handshake leaves behind there at exit, a client of Qt's alone leaves too.
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions()
{
    return "leak:libcrypto";
}
#endif

namespace {

/** How a promise ended; settled turns true with it. */
struct Outcome
{
    bool settled = false;
    bool ok = false;
    QByteArray body;
    zErrorInfo error;
};

std::shared_ptr<Outcome> outcomeOf(const QtPromise::QPromise<QByteArray>& promise)
{
    auto outcome = std::make_shared<Outcome>();
    promise.then(
        [outcome](const QByteArray& body) {
            *outcome = {true, true, body, zErrorInfo()};
        },
        [outcome](const zErrorInfo& error) {
            *outcome = {true, false, {}, error};
        });
    return outcome;
}

std::shared_ptr<Outcome> outcomeOf(const QtPromise::QPromise<void>& promise)
{
    return outcomeOf(promise.then([] { return QByteArray(); }));
}

QString cachePath(const QString& url)
{
    return u"res/images/"_s + cacheName(url);
}

/** A server in a thread of its own: it goes on while the test's event loop stands. */
class ServerThread
{
public:
    /** serve is called with each connection whose request has come. */
    explicit ServerThread(const std::function<void(QTcpSocket&)>& serve)
        : m_thread([=] { run(serve); })
    {
        m_listening.acquire();
    }
    ~ServerThread() { stop(); }

    QUrl url() const { return QUrl(u"http://127.0.0.1:%1/"_s.arg(m_port)); }

    /** Returns when serve has. */
    void stop()
    {
        m_stopped = true;
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    void run(const std::function<void(QTcpSocket&)>& serve)
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        m_port = server.serverPort();
        m_listening.release();
        while (!m_stopped) {
            if (!server.hasPendingConnections() && !server.waitForNewConnection(20))
                continue;
            const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
            // A client opens connections in advance, too.
            if (socket->waitForReadyRead(20))
                serve(*socket);
        }
    }

    std::atomic<bool> m_stopped {false};
    QSemaphore m_listening;
    quint16 m_port = 0;
    std::thread m_thread; // the last: it uses the others
};

} // namespace

class TestHttp : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<WorkFolder> m_folder;
    ZHttpComm* m_http = nullptr;

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<HttpServer>();
        m_folder = std::make_unique<WorkFolder>();
        m_http = ZHttpComm::getInstance();
        m_http->setTimeout(ZHttpComm::defaultTimeout);
        m_http->setLeastRate(ZHttpComm::defaultLeastRate);
        m_http->setTotalTime(ZHttpComm::defaultTotalTime);
        m_http->setMaxBodySize(ZHttpComm::defaultMaxBodySize);
    }

    void cleanup() { m_folder.reset(); }

    void fetches()
    {
        m_server->serve(u"/table"_s, QByteArray(300000, 'x'));
        m_server->redirect(u"/moved"_s, m_server->baseUrl() + u"/table"_s);
        QSignalSpy started(m_http, &ZHttpComm::sigRequestStarted);
        QSignalSpy progress(m_http, &ZHttpComm::sigRequestProgress);
        QSignalSpy finished(m_http, &ZHttpComm::sigRequestFinished);
        const QUrl url = m_server->url(u"/moved?57"_s);
        const auto outcome = outcomeOf(m_http->get(url));
        QTRY_VERIFY(outcome->settled);
        QCOMPARE(outcome->body, QByteArray(300000, 'x'));
        QCOMPARE(m_server->targets(), QStringList({u"/moved?57"_s, u"/table"_s}));
        const QVariant id = started.first().first();
        QCOMPARE(started, (QList<QVariantList> {{id, url}}));
        QCOMPARE(progress.last(), (QVariantList {id, url, 300000LL, 300000LL}));
        QCOMPARE(finished, (QList<QVariantList> {{id, url, true}}));
    }

    void rejects_data() { Cases::rows("http"); }

    /** BASE stands for the server's address, in messages too. */
    void rejects()
    {
        QFETCH(QString, address);
        QFETCH(QString, message);
        QFETCH(int, code);
        m_server->answer(u"/overstated"_s, {200, "few", {}, 999});
        m_server->answer(u"/huge"_s, {200, "few", {}, 1LL << 40});
        HttpServer::Answer trickling {200, QByteArray(400, 'x')};
        trickling.pause = 50;
        m_server->answer(u"/slow"_s, trickling);
        m_server->answer(u"/late"_s, trickling);
        m_server->fail(u"/broken"_s, 500);
        m_server->cutOff(u"/cut"_s, "body", 2);
        m_server->hold(u"/held"_s);
        m_server->redirect(u"/ring"_s, u"/ring"_s);
        m_server->redirect(u"/tofile"_s, u"file:///etc/passwd"_s);
        m_http->setLeastRate(1000);
        if (address.contains(u"/held"_s))
            m_http->setTimeout(300);
        if (address.contains(u"/slow"_s))
            m_http->setTimeout(900);
        if (address.contains(u"/late"_s))
            m_http->setTotalTime(500);
        m_http->setMaxBodySize(1000);
        for (QString* text : {&address, &message}) {
            text->replace(u"BASE"_s, m_server->baseUrl());
            text->replace(u"TLS"_s, m_server->baseUrl().replace(u"http:"_s, u"https:"_s));
        }

        QSignalSpy finished(m_http, &ZHttpComm::sigRequestFinished);
        const auto outcome = outcomeOf(m_http->get(QUrl(address)));
        QVERIFY(!outcome->settled);
        QVERIFY(finished.isEmpty());
        QTRY_VERIFY(outcome->settled);
        QVERIFY(!outcome->ok);
        QVERIFY2(outcome->error.message().startsWith(message),
                 qPrintable(outcome->error.message()));
        QVERIFY(!outcome->error.message().contains(u"session"_s));
        QCOMPARE(outcome->error.code(), code);
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first().last(), QVariant(false));
    }

    void rejectsBodies_data() { Cases::rows("http"); }

    void rejectsBodies()
    {
        QFETCH(QString, body);
        QFETCH(QString, header);
        m_server->answer(u"/body"_s, {200, Cases::bytes(body), header.toLatin1()});
        m_http->setMaxBodySize(100);
        const auto outcome = outcomeOf(m_http->get(m_server->url(u"/body"_s)));
        QTRY_VERIFY(outcome->settled);
        QTEST(outcome->error.message().section(u": "_s, 1), "message");
    }

    void takesWhole_data() { Cases::rows("http"); }

    void takesWhole()
    {
        QFETCH(QString, body);
        QFETCH(QString, header);
        QFETCH(bool, tellsLength);
        m_server->answer(
            u"/whole"_s,
            {200, Cases::bytes(body), header.toLatin1(), tellsLength ? -1 : HttpServer::noLength});
        m_http->setMaxBodySize(100);
        const auto outcome = outcomeOf(m_http->get(m_server->url(u"/whole"_s)));
        QTRY_VERIFY(outcome->settled);
        QVERIFY2(outcome->ok, qPrintable(outcome->error.message()));
        QCOMPARE(outcome->body, QByteArray(100, 'x'));
    }

    void anEndThatDidNotComeIsAnError_data() { Cases::rows("http"); }

    void anEndThatDidNotComeIsAnError()
    {
        QFETCH(QString, more);
        const QByteArray body =
            "5\r\nhello\r\n3e8\r\n" + QByteArray(1000, 'x') + "\r\n" + more.toLatin1();
        constexpr int count = 100;
        ServerThread server([&](QTcpSocket& socket) {
            socket.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + body);
            socket.waitForBytesWritten();
        });
        QVector<std::shared_ptr<Outcome>> outcomes;
        for (int i = 0; i < count; ++i)
            outcomes.append(outcomeOf(m_http->get(server.url())));
        for (const auto& outcome : outcomes) {
            QTRY_VERIFY(outcome->settled);
            QVERIFY(!outcome->ok);
        }
    }

    void whatNobodyReadsIsNotBuffered()
    {
        constexpr qint64 most = 64 * 1024 * 1024;
        qint64 sent = 0;
        QSemaphore go;
        ServerThread server([&](QTcpSocket& socket) {
            socket.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
            do {
                socket.write("1\r\nx\r\n");
                socket.waitForBytesWritten();
            } while (!go.tryAcquire(1, 20));
            do {
                socket.write("10000\r\n" + QByteArray(0x10000, 'x') + "\r\n");
                sent += 0x10000;
            } while (sent < most && socket.waitForBytesWritten(1000));
        });
        m_http->setMaxBodySize(1000 * 1000);
        QSignalSpy progress(m_http, &ZHttpComm::sigRequestProgress);
        const auto outcome = outcomeOf(m_http->get(server.url()));
        QTRY_VERIFY(!progress.isEmpty());
        // The event loop stands while the server sends what it is rid of.
        go.release();
        server.stop();
        QVERIFY2(sent < most, "everything was taken");
        QTRY_VERIFY(outcome->settled);
        QVERIFY(outcome->error.message().endsWith(u"the body is larger than 1000000 bytes"_s));
    }

    void waitingForOnesTurnIsNoSilence()
    {
        // More than go out to one server at a time, each answer late, none as late as the limit.
        m_server->answer(u"/late"_s, {200, "late", {}, -1, -1, 300});
        m_http->setTimeout(1000);
        m_http->setTotalTime(1000);
        QVector<QtPromise::QPromise<QByteArray>> requests;
        for (int i = 0; i < 24; ++i)
            requests.append(m_http->get(m_server->url(u"/late"_s)));
        const auto outcome = outcomeOf(QtPromise::all(requests).then([] { return QByteArray(); }));
        QTRY_VERIFY(outcome->settled);
        QVERIFY2(outcome->ok, qPrintable(outcome->error.message()));
        QCOMPARE(m_server->requests(u"/late"_s), 24);
    }

    void takesTurns()
    {
        const auto ask = [this](const QString& path, bool inBackground = false) {
            m_server->hold(path);
            const QUrl url = m_server->url(path);
            outcomeOf(inBackground ? m_http->getInBackground(url) : m_http->get(url));
        };
        for (int i = 0; i < 10; ++i)
            ask(u"/picture/%1"_s.arg(i), true);
        QTRY_COMPARE(m_server->held(), ZHttpComm::maxInBackground);
        for (int i = 0; i < 10; ++i)
            ask(u"/flash/%1"_s.arg(i));
        QTRY_COMPARE(m_server->held(), ZHttpComm::maxUnderWay);
        ask(u"/table/0"_s);
        QStringList order;
        for (int next = 0; next < 21; ++next) {
            QTRY_VERIFY(m_server->targets().size() > qMin(20, next + 3));
            order.append(m_server->targets().at(next));
            m_server->release(order.last());
        }
        QVERIFY2(order.indexOf(u"/flash/3"_s) < order.indexOf(u"/flash/9"_s),
                 qPrintable(order.join(u' ')));
        QVERIFY2(order.indexOf(u"/table/0"_s) < order.indexOf(u"/flash/4"_s),
                 qPrintable(order.join(u' ')));
        QVERIFY2(order.indexOf(u"/flash/9"_s) < order.indexOf(u"/picture/4"_s),
                 qPrintable(order.join(u' ')));
    }

    void webPagesAreNoPictures_data() { Cases::rows("http"); }

    void webPagesAreNoPictures()
    {
        QFETCH(QString, text);
        QFETCH(bool, isPicture);
        const QByteArray body = Cases::bytes(text);
        m_server->serve(u"/a.png"_s, body);
        const QString url = m_server->baseUrl() + u"/a.png"_s;
        const auto outcome = outcomeOf(ZImageCacheUtil::preloadList({url}));
        QTRY_VERIFY(outcome->settled);
        QCOMPARE(outcome->ok, isPicture);
        QCOMPARE(WorkFolder::read(cachePath(url)), isPicture ? body : QByteArray());
        QCOMPARE(outcome->error.message().contains(u"a web page in place of the picture"_s),
                 !isPicture);
    }

    void preloadsPictures()
    {
        QStringList urls;
        for (int i = 0; i < 7; ++i) {
            const QString path = u"/%1.png"_s.arg(i);
            m_server->hold(path);
            m_server->serve(path, "picture " + QByteArray::number(i));
            urls.append(m_server->baseUrl() + path + u"?图"_s);
        }
        WorkFolder::write(cachePath(urls.at(0)), "old");
        WorkFolder::write(cachePath(urls.at(1)), "");
        const auto first =
            outcomeOf(ZImageCacheUtil::preloadList(urls + urls + QStringList(QString())));
        const auto second = outcomeOf(ZImageCacheUtil::preloadList(urls.mid(1, 2)));
        for (int i = 1; i < 7; ++i) {
            const int running = qMin(ZHttpComm::maxInBackground, 7 - i);
            QTRY_COMPARE(m_server->held(), running);
            QCOMPARE(m_server->targets().size(), i - 1 + running);
            QVERIFY(!first->settled);
            m_server->release(u"/%1.png"_s.arg(i));
        }
        QTRY_VERIFY(first->settled && second->settled);
        QVERIFY(first->ok && second->ok);
        QCOMPARE(m_server->targets().size(), 6);
        QCOMPARE(WorkFolder::read(cachePath(urls.at(0))), QByteArray("old"));
        QCOMPARE(WorkFolder::read(cachePath(urls.at(1))), QByteArray("picture 1"));
        QCOMPARE(WorkFolder::read(cachePath(urls.at(6))), QByteArray("picture 6"));
        QCOMPARE(QDir(u"res/images"_s).count(), 7U + 2U);
    }

    void preloadTriesAllAndTellsTheFirst()
    {
        m_server->cutOff(u"/cut.png"_s, "picture", 3);
        m_server->serve(u"/empty.png"_s, {});
        m_server->serve(u"/good.png"_s, "picture");
        const QString base = m_server->baseUrl();
        const QStringList urls {base + u"/empty.png?a"_s, base + u"/cut.png"_s,
                                base + u"/good.png"_s};
        auto outcome = outcomeOf(ZImageCacheUtil::preloadList(urls));
        QTRY_VERIFY(outcome->settled);
        QCOMPARE(
            outcome->error.message(),
            u"2 of 3 pictures failed, the first: %1/empty.png: the picture is empty"_s.arg(base));
        QCOMPARE(QDir(u"res/images"_s).entryList(QDir::Files),
                 QStringList(cachePath(urls.at(2)).section(QLatin1Char('/'), -1)));

        m_server->serve(u"/cut.png"_s, "whole");
        outcome = outcomeOf(ZImageCacheUtil::preloadList(urls.mid(1)));
        QTRY_VERIFY(outcome->settled);
        QVERIFY(outcome->ok);
        QCOMPARE(WorkFolder::read(cachePath(urls.at(1))), QByteArray("whole"));
    }

    void requestsMayOutliveTheApplication()
    {
        m_server->hold(u"/held"_s);
        outcomeOf(m_http->get(m_server->url(u"/held"_s)));
        QTRY_COMPARE(m_server->held(), 1);
    }
};

QTEST_GUILESS_MAIN(TestHttp)
#include "tst_http.moc"
