#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"
#include "support/Literals.h"
#include "support/WorkFolder.h"

#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QStandardPaths>
#include <QTcpServer>
#include <QtTest>

#include <memory>

#ifdef __SANITIZE_ADDRESS__
// What a failed handshake leaves behind there at exit, a client of Qt's alone leaves too.
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions()
{
    return "leak:libcrypto";
}
#endif

/** Answers every request with "body", behind the certificate in name.pem and name.key. */
class TlsServer : public QTcpServer
{
    Q_OBJECT

public:
    explicit TlsServer(const QString& name)
        : m_certificate(WorkFolder::read(name + u".pem"_s))
        , m_key(WorkFolder::read(name + u".key"_s), QSsl::Ec)
    {
        listen(QHostAddress::LocalHost);
    }

    QString address() const { return u"https://127.0.0.1:%1/table"_s.arg(serverPort()); }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* socket = new QSslSocket(this);
        connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QSslSocket::readyRead, socket, [socket] {
            if (!socket->readAll().contains("\r\n\r\n"))
                return;
            socket->write("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody");
            socket->disconnectFromHost();
        });
        socket->setSocketDescriptor(descriptor);
        socket->setLocalCertificate(m_certificate);
        socket->setPrivateKey(m_key);
        socket->startServerEncryption();
    }

private:
    QSslCertificate m_certificate;
    QSslKey m_key;
};

class TestTls : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    static void openssl(const QString& arguments)
    {
        QProcess process;
        process.start(u"openssl"_s, arguments.split(u' '));
        QVERIFY(process.waitForFinished());
        QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
    }

    static void makeSelfSigned(const QString& name)
    {
        openssl(u"req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                "-addext subjectAltName=IP:127.0.0.1 "
                "-keyout %1.key -out %1.pem -subj /CN=%1"_s.arg(name));
    }

    static void makeSigned(const QString& name, const QString& issuer, const QByteArray& host,
                           int days)
    {
        openssl(u"req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes "
                "-keyout %1.key -out %1.csr -subj /CN=%1"_s.arg(name));
        WorkFolder::write(u"hosts"_s, "subjectAltName=" + host);
        openssl(u"x509 -req -in %1.csr -CA %2.pem -CAkey %2.key -CAcreateserial -days %3 "
                "-extfile hosts -out %1.pem"_s.arg(name, issuer, QString::number(days)));
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!QSslSocket::supportsSsl())
            QSKIP("Qt has no TLS here");
        if (QStandardPaths::findExecutable(u"openssl"_s).isEmpty())
            QSKIP("no openssl to make certificates with");
        makeSelfSigned(u"ours"_s);
        makeSelfSigned(u"others"_s);
        makeSelfSigned(u"alone"_s);
        makeSigned(u"good"_s, u"ours"_s, "IP:127.0.0.1", 2);
        makeSigned(u"old"_s, u"ours"_s, "IP:127.0.0.1", -1);
        makeSigned(u"elsewhere"_s, u"ours"_s, "DNS:elsewhere.example", 2);
        makeSigned(u"foreign"_s, u"others"_s, "IP:127.0.0.1", 2);
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.addCaCertificate(QSslCertificate(WorkFolder::read(u"ours.pem"_s)));
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    void trusts_data()
    {
        QTest::addColumn<QString>("error");
        QTest::newRow("good") << QString();
        QTest::newRow("old") << u"the certificate of old expired on 20"_s;
        QTest::newRow("elsewhere") << u"the certificate of elsewhere is for another host name"_s;
        QTest::newRow("alone") << u"the certificate of alone is self-signed"_s;
        QTest::newRow("foreign") << u"the certificate of foreign has the unknown issuer others"_s;
    }

    void trusts()
    {
        QFETCH(QString, error);
        TlsServer server(QString::fromLatin1(QTest::currentDataTag()));
        QString outcome;
        ZHttpComm::getInstance()
            ->get(QUrl(server.address()))
            .then([&](const QByteArray& body) { outcome = QString::fromUtf8(body); },
                  [&](const zErrorInfo& cause) { outcome = cause.message(); });
        QTRY_VERIFY(!outcome.isEmpty());
        const QString expected = server.address() + u": "_s + error;
        QVERIFY2(error.isEmpty() ? outcome == u"body"_s : outcome.startsWith(expected),
                 qPrintable(outcome));
    }
};

QTEST_GUILESS_MAIN(TestTls)
#include "tst_tls.moc"
