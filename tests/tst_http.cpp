#include "host/ZHttpComm.h"
#include "host/ZImageCacheUtil.h"
#include "host/zErrorInfo.h"
#include "support/CacheName.h"
#include "support/Cases.h"
#include "support/FolderTest.h"
#include "support/Literals.h"
#include "support/Patience.h"
#include "testing/ZTestServer.h"

#include <QProcess>
#include <QSemaphore>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <future>
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
    QByteArray body;
    zErrorInfo error;
    bool ok() const { return error.message().isEmpty(); }
};

std::shared_ptr<Outcome> outcomeOf(const QtPromise::QPromise<QByteArray>& promise)
{
    auto outcome = std::make_shared<Outcome>();
    const auto set = [outcome](const QByteArray& body, const zErrorInfo& error) {
        *outcome = {true, body, error};
    };
    promise.then([set](const QByteArray& body) { set(body, zErrorInfo()); },
                 [set](const zErrorInfo& error) { set({}, error); });
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

void openssl(const QString& arguments)
{
    QProcess process;
    process.start(u"openssl"_s, arguments.split(u' '));
    QVERIFY(process.waitForFinished());
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
}

/** openssl's arguments for a key of that name. */
QString keyOf(const QString& name)
{
    return u"req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout %1.key "
           "-subj /CN=%1 "_s.arg(name);
}

void signBySelf(const QString& name, const QString& host)
{
    openssl(keyOf(name) + u"-x509 -addext subjectAltName=%1 -out %2.pem"_s.arg(host, name));
}

void trust(const QString& name)
{
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.addCaCertificate(QSslCertificate(ZTestFolder::read(name + u".pem"_s)));
    QSslConfiguration::setDefaultConfiguration(trusting);
}

/** Answers every request with "body" after so many milliseconds, behind the certificate in name.pem
 *  and name.key. */
class TlsServer : public QTcpServer
{
public:
    explicit TlsServer(const QString& name, int delay = 0)
        : m_name(name)
        , m_delay(delay)
    {
        listen(QHostAddress::LocalHost);
    }

    QString address() const { return u"https://127.0.0.1:%1/table"_s.arg(serverPort()); }
    int requests() const { return m_requests; }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* socket = new QSslSocket(this);
        connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QSslSocket::readyRead, socket, [this, socket] {
            if (!socket->readAll().contains("\r\n\r\n"))
                return;
            ++m_requests;
            QTimer::singleShot(m_delay, socket, [socket] {
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody");
                socket->disconnectFromHost();
            });
        });
        socket->setSocketDescriptor(descriptor);
        socket->setLocalCertificate(m_name + u".pem"_s);
        socket->setPrivateKey(m_name + u".key"_s, QSsl::Ec);
        socket->startServerEncryption();
    }

private:
    QString m_name;
    int m_delay;
    int m_requests = 0;
};

} // namespace

class TestHttp : public FolderTest
{
    Q_OBJECT

private:
    std::unique_ptr<ZTestServer> m_server;
    ZHttpComm* m_http = nullptr;

private Q_SLOTS:
    void init()
    {
        FolderTest::init();
        m_server = std::make_unique<ZTestServer>();
        m_http = ZHttpComm::getInstance();
        m_http->setTimeout(ZHttpComm::defaultTimeout);
        m_http->setLeastRate(ZHttpComm::defaultLeastRate);
        m_http->setTotalTime(ZHttpComm::defaultTotalTime);
        m_http->setMaxBodySize(ZHttpComm::defaultMaxBodySize);
        m_http->setRetries(2, 60);
    }

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
        QFETCH(int, tries);
        m_server->answer(u"/overstated"_s, {200, "few", {}, 999});
        m_server->answer(u"/huge"_s, {200, "few", {}, 1LL << 40});
        const ZTestServer::Answer trickling {200, QByteArray(400, 'x'), {}, -1, -1, 0, 50};
        m_server->answer(u"/slow"_s, trickling);
        m_server->answer(u"/late"_s, trickling);
        m_server->fail(u"/broken"_s, 500);
        m_server->cutOff(u"/cut"_s, "body", 2);
        m_server->hold(u"/held"_s);
        m_server->redirect(u"/ring"_s, u"/ring"_s);
        m_server->redirect(u"/tofile"_s, u"file:///etc/passwd"_s);
        m_http->setLeastRate(1000);
        m_http->setTimeout(address.contains(u"/held"_s) ? 300 : 900);
        if (address.contains(u"/late"_s))
            m_http->setTotalTime(500);
        m_http->setMaxBodySize(1000);
        for (QString* text : {&address, &message}) {
            text->replace(u"BASE"_s, m_server->baseUrl());
            text->replace(u"TLS"_s, m_server->baseUrl().replace(u"http:"_s, u"https:"_s));
        }

        QSignalSpy retried(m_http, &ZHttpComm::sigRequestRetried);
        QSignalSpy finished(m_http, &ZHttpComm::sigRequestFinished);
        const auto outcome = outcomeOf(m_http->get(QUrl(address)));
        QVERIFY(!outcome->settled && finished.isEmpty());
        QTRY_VERIFY(outcome->settled);
        QVERIFY2(!outcome->ok() && outcome->error.message().startsWith(message),
                 qPrintable(outcome->error.message()));
        QVERIFY(!outcome->error.message().contains(u"session"_s));
        QCOMPARE(outcome->error.code(), code);
        QCOMPARE(retried.size(), tries - 1);
        QCOMPARE(finished.size(), 1);
        QVERIFY(!finished.first().last().toBool());
    }

    void triesAgain_data() { Cases::rows("http"); }

    void triesAgain()
    {
        QFETCH(int, status);
        QFETCH(QString, header);
        QFETCH(int, tries);
        QFETCH(int, asked);
        m_server->answer(u"/table"_s, {status, "failed", header.toLatin1()});
        QSignalSpy retried(m_http, &ZHttpComm::sigRequestRetried);
        auto outcome = outcomeOf(m_http->get(m_server->url(u"/table"_s)));
        QTRY_VERIFY(outcome->settled);
        QVERIFY(!outcome->ok());
        QCOMPARE(m_server->requests(u"/table"_s), tries);
        for (int retry = 1; retry < tries; ++retry) {
            const QVariantList told = retried.at(retry - 1);
            QCOMPARE(told.at(2).toInt(), retry);
            const int share = told.at(3).toInt() - asked; // of 60 ms: 20, then 40
            QVERIFY2(share >= 10 * retry && share <= 20 * retry, qPrintable(u"%1 ms"_s.arg(share)));
            QCOMPARE(told.at(4).toString(), outcome->error.message());
        }

        const QObject here;
        connect(m_http, &ZHttpComm::sigRequestRetried, &here,
                [this] { m_server->serve(u"/table"_s, "body"); });
        outcome = outcomeOf(m_http->get(m_server->url(u"/table"_s)));
        QTRY_VERIFY(outcome->settled);
        QCOMPARE(outcome->ok(), tries > 1);
    }

    void usesTheSystemsProxy()
    {
        if (QSysInfo::kernelType() != u"linux"_s)
            QSKIP("the system's proxies do not stand in the environment");
        const QByteArray direct = qgetenv("no_proxy");
        qputenv("http_proxy", m_server->baseUrl().toUtf8());
        qunsetenv("no_proxy");
        m_server->serve(u"http://content.invalid/table"_s, "body");
        const auto outcome = outcomeOf(m_http->get(QUrl(u"http://content.invalid/table?1"_s)));
        QTRY_VERIFY(outcome->settled);
        qunsetenv("http_proxy");
        qputenv("no_proxy", direct);
        QCOMPARE(outcome->body, QByteArray("body"));
    }

    void trusts_data() { Cases::rows("http"); }

    void trusts()
    {
        QFETCH(QString, issuer);
        QFETCH(QString, host);
        QFETCH(QString, days);
        QFETCH(QString, error);
        if (!QSslSocket::supportsSsl() || QStandardPaths::findExecutable(u"openssl"_s).isEmpty())
            QSKIP("no TLS in Qt, or no openssl to make certificates with");
        for (const QString& name : {u"ours"_s, issuer})
            signBySelf(name, host);
        trust(u"ours"_s);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        if (name != issuer) {
            openssl(keyOf(name) + u"-out csr"_s);
            ZTestFolder::write(u"hosts"_s, "subjectAltName=" + host.toUtf8());
            openssl(u"x509 -req -in csr -CA %2.pem -CAkey %2.key -CAcreateserial -days %3 "
                    "-extfile hosts -out %1.pem"_s.arg(name, issuer, days));
        }
        TlsServer server(name);
        const auto outcome = outcomeOf(m_http->get(QUrl(server.address())));
        QTRY_VERIFY(outcome->settled);
        QCOMPARE(outcome->body, QByteArray(error.isEmpty() ? "body" : ""));
        const QString expected = error.isEmpty() ? QString() : server.address() + u": "_s + error;
        QVERIFY2(outcome->error.message().startsWith(expected),
                 qPrintable(outcome->error.message()));
    }

    void bodies_data() { Cases::rows("http"); }

    /** Often, since the end of a connection may come with the body or after it. */
    void bodies()
    {
        QFETCH(QString, body);
        QFETCH(QString, header);
        QFETCH(QString, message);
        QFETCH(bool, tellsLength);
        m_server->answer(
            u"/body"_s,
            {200, Cases::bytes(body), header.toLatin1(), tellsLength ? -1 : ZTestServer::noLength});
        m_http->setMaxBodySize(100);
        QVector<std::shared_ptr<Outcome>> outcomes;
        for (int i = 0; i < 100; ++i)
            outcomes.append(outcomeOf(m_http->get(m_server->url(u"/body"_s))));
        for (const auto& outcome : outcomes) {
            QTRY_VERIFY(outcome->settled);
            QCOMPARE(outcome->error.message().section(u": "_s, 1), message);
            QCOMPARE(outcome->body, QByteArray(message.isEmpty() ? 100 : 0, 'x'));
        }
    }

    void whatNobodyReadsIsNotBuffered()
    {
        constexpr qint64 most = 64 * 1024 * 1024;
        qint64 sent = 0;
        QSemaphore go;
        std::promise<quint16> port;
        std::thread thread([&] { // goes on while the event loop below stands
            QTcpServer server;
            server.listen(QHostAddress::LocalHost);
            port.set_value(server.serverPort());
            server.waitForNewConnection(30000);
            const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
            socket->waitForReadyRead(30000);
            socket->write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
            do {
                socket->write("1\r\nx\r\n");
                socket->waitForBytesWritten();
            } while (!go.tryAcquire(1, 20));
            do {
                socket->write("10000\r\n" + QByteArray(0x10000, 'x') + "\r\n");
                sent += 0x10000;
            } while (sent < most && socket->waitForBytesWritten(1000));
        });
        m_http->setMaxBodySize(1000 * 1000);
        QSignalSpy progress(m_http, &ZHttpComm::sigRequestProgress);
        const QUrl url(u"http://127.0.0.1:%1/"_s.arg(port.get_future().get()));
        const auto outcome = outcomeOf(m_http->get(url));
        [&] { QTRY_VERIFY(!progress.isEmpty()); }();
        go.release();
        thread.join();
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
        QVERIFY2(outcome->ok(), qPrintable(outcome->error.message()));
        QCOMPARE(m_server->requests(u"/late"_s), 24);
    }

    void waitingBehindTlsIsNoSilence()
    {
        // A server that turns out to speak no HTTP/2 has been asked for more than six at a time.
        if (!QSslSocket::supportsSsl() || QStandardPaths::findExecutable(u"openssl"_s).isEmpty())
            QSKIP("no TLS in Qt, or no openssl to make certificates with");
        signBySelf(u"late"_s, u"IP:127.0.0.1"_s);
        trust(u"late"_s);
        const TlsServer server(u"late"_s, 600);
        m_http->setTimeout(2000);
        QVector<QtPromise::QPromise<QByteArray>> requests;
        for (int i = 0; i < 24; ++i)
            requests.append(m_http->get(QUrl(server.address())));
        const auto outcome = outcomeOf(QtPromise::all(requests).then([] { return QByteArray(); }));
        QTRY_VERIFY(outcome->settled);
        QVERIFY2(outcome->ok(), qPrintable(outcome->error.message()));
        QVERIFY(server.requests() < 24 + ZHttpComm::maxUnderWay); // those of the first six again

        // One that never answers is not known to speak HTTP/2, and is asked once.
        const TlsServer silent(u"late"_s, 60 * 1000);
        QSignalSpy finished(m_http, &ZHttpComm::sigRequestFinished);
        QSignalSpy retried(m_http, &ZHttpComm::sigRequestRetried);
        m_http->setTimeout(1000);
        for (int i = 0; i < 9; ++i)
            outcomeOf(m_http->get(QUrl(silent.address())));
        QTRY_COMPARE(finished.size(), 9);
        QVERIFY(retried.isEmpty() && silent.requests() <= 9);
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
        const auto at = [&order](const char* path) { return order.indexOf(QLatin1String(path)); };
        QVERIFY2(at("/flash/3") < at("/flash/9") && at("/table/0") < at("/flash/4")
                     && at("/flash/9") < at("/picture/4"),
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
        QCOMPARE(outcome->ok(), isPicture);
        QCOMPARE(ZTestFolder::read(cachePath(url)), isPicture ? body : QByteArray());
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
        ZTestFolder::write(cachePath(urls.at(0)), "old");
        ZTestFolder::write(cachePath(urls.at(1)), "");
        const auto first =
            outcomeOf(ZImageCacheUtil::preloadList(urls + urls + QStringList(QString())));
        const auto second = outcomeOf(ZImageCacheUtil::preloadList(urls.mid(1, 2)));
        QTRY_COMPARE(m_server->held(), ZHttpComm::maxInBackground);
        for (int i = 1; i < 7; ++i) {
            QTRY_VERIFY(m_server->targets().size() >= i);
            QVERIFY(!first->settled);
            m_server->release(u"/%1.png"_s.arg(i));
        }
        QTRY_VERIFY(first->settled && second->settled);
        QVERIFY(first->ok() && second->ok());
        QCOMPARE(m_server->targets().size(), 6);
        QCOMPARE(ZTestFolder::read(cachePath(urls.at(0))), QByteArray("old"));
        QCOMPARE(ZTestFolder::read(cachePath(urls.at(1))), QByteArray("picture 1"));
        QCOMPARE(ZTestFolder::read(cachePath(urls.at(6))), QByteArray("picture 6"));
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
        QVERIFY(outcome->ok());
        QCOMPARE(ZTestFolder::read(cachePath(urls.at(1))), QByteArray("whole"));
    }

    void cancelsAll()
    {
        m_server->hold(u"/held"_s);
        m_server->fail(u"/resting"_s, 503);
        m_http->setRetries(2, 600 * 1000);
        QSignalSpy retried(m_http, &ZHttpComm::sigRequestRetried);
        std::vector<std::shared_ptr<Outcome>> outcomes {
            outcomeOf(m_http->get(m_server->url(u"/resting"_s)))};
        QTRY_COMPARE(retried.size(), 1);
        for (int i = 0; i < ZHttpComm::maxUnderWay + 3; ++i)
            outcomes.push_back(outcomeOf(m_http->get(m_server->url(u"/held"_s))));
        QTRY_COMPARE(m_server->held(), ZHttpComm::maxUnderWay);
        m_http->cancelAll();
        for (const auto& outcome : outcomes) {
            QTRY_VERIFY(outcome->settled);
            QVERIFY2(outcome->error.message().endsWith(u": cancelled"_s)
                         && outcome->error.message().startsWith(m_server->baseUrl()),
                     qPrintable(outcome->error.message()));
        }
        QCOMPARE(m_server->requests(u"/held"_s), ZHttpComm::maxUnderWay);
        // Their places are free again.
        m_server->release(u"/held"_s);
        m_server->serve(u"/other"_s, "body");
        const auto other = outcomeOf(m_http->get(m_server->url(u"/other"_s)));
        QTRY_VERIFY(other->settled);
        QCOMPARE(other->body, QByteArray("body"));
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
