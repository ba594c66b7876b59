#include "client/ZGlobalClient.h"
#include "datatable/TableCatalogue.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "support/LogLines.h"
#include "support/Nginx.h"
#include "support/Patience.h"
#include "testing/ZTestFolder.h"
#include "testing/ZTestServer.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QStandardPaths>
#include <QtTest>

#include <memory>

namespace {

const QString examples = QStringLiteral(ZGLOBAL_EXAMPLES);
const QString logging = u"log_format test '$connection $server_protocol $status "
                        "$sent_http_content_encoding $upstream_cache_status $request_uri';"
                        "access_log access.log test"_s;

void shell(const QString& script)
{
    QCOMPARE(QProcess::execute(u"sh"_s, {u"-ec"_s, script}), 0);
}

/** What came, or why nothing did. */
QString outcome(const QtPromise::QPromise<QByteArray>& promise)
{
    QString told;
    promise.then([&](const QByteArray& body) { told = QString::fromUtf8(body); })
        .fail([&](const zErrorInfo& error) { told = error.message().section(u": "_s, 1); })
        .wait();
    return told;
}

/** A client's first update; "whole", or what failed. */
QString update(const QString& server)
{
    const LogLines log;
    QDir(u"res"_s).removeRecursively();
    ZGlobalClient client;
    client.open(u"."_s, ZGlobalClient::configurationFor(server));
    return outcome(client.update().then([](const ZUpdateResult& result) {
        const auto failures = result.failures;
        return failures.isEmpty() ? QByteArray("whole") : failures.first().why.toUtf8();
    }));
}

/** The lines of an access log that hold part. */
QStringList logged(const QString& name, const QString& part)
{
    const QString lines = QString::fromUtf8(ZTestFolder::read(name + u"/access.log"_s));
    return lines.split(u'\n').filter(part);
}

} // namespace

/** The configurations of examples/nginx, on good days and on bad ones. */
class tst_nginx : public QObject
{
    Q_OBJECT

private:
    ZHttpComm* m_http = ZHttpComm::getInstance();
    std::unique_ptr<ZTestFolder> m_folder;
    ZTestServer m_dying;
    QHash<QString, std::shared_ptr<QProcess>> m_running;
    QHash<QString, int> m_ports; // by those of the examples; 9000 is that of m_dying

    QString address(const QString& port) const
    {
        const QString scheme = port == u"8443"_s ? u"https"_s : u"http"_s;
        return u"%1://127.0.0.1:%2"_s.arg(scheme).arg(m_ports[port]);
    }

    /** Starts both examples, with more lines for their servers. */
    void start(const QString& lines = {})
    {
        for (const QString& file : {u"origin/origin"_s, u"edge/edge"_s, u"edge/tls"_s}) {
            const QString example = examples + u"/nginx/%1.conf"_s.arg(file.section(u'/', 1));
            QString text = QString::fromUtf8(ZTestFolder::read(example));
            text.replace(u"server {\n"_s, u"server {\n"_s + lines);
            text.replace(u"access_log access.log"_s, logging);
            for (const QString& port : m_ports.keys())
                text.replace(u"127.0.0.1:"_s + port, address(port).section(u'/', 2));
            ZTestFolder::write(file + u".conf"_s, text.toUtf8());
        }
        m_running[u"origin"_s] = Nginx::started(u"origin"_s, m_ports[u"8080"_s]);
        m_running[u"edge"_s] = Nginx::started(u"edge"_s, m_ports[u"8081"_s]);
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("PATH", qgetenv("PATH") + ":/usr/sbin");
        if (QStandardPaths::findExecutable(u"nginx"_s).isEmpty())
            QSKIP("no nginx");
        m_http->setRetries(ZHttpComm::defaultRetries, 100);
        m_http->setMaxBodySize(1000000);
    }

    void init()
    {
        m_folder = std::make_unique<ZTestFolder>();
        const ZTestServer free[3]; // all at once, so that they differ
        m_ports = {{u"8080"_s, free[0].url({}).port()},
                   {u"8081"_s, free[1].url({}).port()},
                   {u"8443"_s, free[2].url({}).port()},
                   {u"9000"_s, m_dying.url({}).port()}};
        shell(
            u"mkdir -p edge origin/content/app; cd origin; touch down; cd content/app; "
            "cp -r %1/content/app/resources %1/content/app/versions.json .; "
            "gzip -9kn versions.json resources/*; cd ../../../edge; "
            "openssl req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -x509 -subj /CN=e "
            "-keyout edge.key -addext subjectAltName=IP:127.0.0.1 -out edge.pem 2>error.log"_s.arg(
                examples));
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.setCaCertificates({QSslCertificate(ZTestFolder::read(u"edge/edge.pem"_s))});
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    void cleanup()
    {
        m_http->disconnect(this);
        m_running.clear();
        m_folder.reset();
    }

    void updates_data() { Cases::rows("nginx"); }

    void updates()
    {
        QFETCH(QString, port);
        QFETCH(QString, conf);
        QFETCH(QString, answers);
        QFETCH(bool, oneConnection);
        start(conf);
        connect(m_http, &ZHttpComm::sigRequestRetried, this,
                [] { QFile::remove(u"origin/down"_s); });
        QCOMPARE(update(address(port)), u"whole"_s);
        const QString server = port == u"8080"_s ? u"origin"_s : u"edge"_s;
        const int all = TableCatalogue::types().size() + 2; // the versions, a table without one
        QTRY_VERIFY(logged(server, answers).size() >= all);
        const QStringList lines = logged(server, answers);
        const QRegularExpression first(u'^' + lines.first().section(u' ', 0, 0) + u' ');
        if (oneConnection) // else several may be opened, and a fast one may have had all of it
            QVERIFY(lines.filter(first).size() == all && lines.size() == all);
    }

    void badAnswers_data() { Cases::rows("nginx"); }

    /** Body is the command that writes what is served as compressed. */
    void badAnswers()
    {
        QFETCH(QString, port);
        QFETCH(QString, body);
        QFETCH(QString, conf);
        QFETCH(QString, message);
        QFETCH(int, retries);
        shell(u"cd origin/content; { %1; } >body.gz"_s.arg(body));
        const QByteArray sent = ZTestFolder::read(u"origin/content/body.gz"_s);
        m_dying.answer(u"/body"_s, {200, sent, "Content-Encoding: gzip", -1, int(sent.size() / 2)});
        start(u"location /body { %1 }"_s.arg(conf));
        const QUrl url(address(port) + u"/body"_s);
        const QSignalSpy retried(m_http, &ZHttpComm::sigRequestRetried);
        QCOMPARE(outcome(m_http->get(url)), message);
        QCOMPARE(retried.size(), retries);

        connect(m_http, &ZHttpComm::sigRequestRetried, this, [&] {
            shell(u"rm -f origin/down; printf hello | gzip >origin/content/body.gz"_s);
            m_dying.serve(u"/body"_s, "hello");
        });
        QCOMPARE(outcome(m_http->get(url)), retries > 0 ? u"hello"_s : message);
    }

    void edgeStandsInForTheOrigin()
    {
        start(u"if ($uri ~ /Message) { set $limit_rate 300; }"_s);
        const QString server = address(u"8081"_s);
        // They ask while the origin is slow with the first answer, and not for gzip.
        shell(
            u"for i in 18 18 18 1; do curl -sf %1/app//resources/Message?$i -o got$i & done; wait; "
            "for i in 18 1; do cmp got$i origin/content/app/resources/Message; done"_s.arg(server));
        for (int client = 0; client < 3; ++client)
            QCOMPARE(update(server), u"whole"_s);
        const int tables = TableCatalogue::types().size() + 1;
        QTRY_COMPARE(logged(u"edge"_s, u"200 gzip "_s).filter(u"/res"_s).size(), 3 * tables);
        QCOMPARE(logged(u"origin"_s, u"/resources/"_s).size(), tables + 1);

        m_running.remove(u"origin"_s);
        QTRY_VERIFY_WITH_TIMEOUT(
            update(server) == u"whole"_s
                && !logged(u"edge"_s, u"200 gzip STALE /app/versions.json"_s).isEmpty(),
            20 * 1000);
    }
};

QTEST_GUILESS_MAIN(tst_nginx)

#include "tst_nginx.moc"
