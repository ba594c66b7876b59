#include "console/Terminal.h"
#include "console/TextTable.h"
#include "datatable/TableCatalogue.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "support/Patience.h"
#include "testing/ZTestFolder.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QUrl>
#include <QtTest>

namespace {

QString program()
{
    return QStringLiteral(ZGLOBAL_PROGRAM);
}

QString contentFolder()
{
    return QStringLiteral(ZGLOBAL_CONTENT);
}

/** "zglobal serve" while the object lives. */
class Serving
{
public:
    explicit Serving(const QString& folder)
    {
        m_process.start(program(), {u"serve"_s, folder});
        if (m_process.waitForReadyRead(patience))
            m_address = QString::fromUtf8(m_process.readLine()).trimmed();
    }
    ~Serving()
    {
        m_process.kill();
        m_process.waitForFinished(patience);
    }
    Q_DISABLE_COPY(Serving)

    QString address() const { return m_address; }
    QProcess& process() { return m_process; }

    /** The status line and body of the answer to a request as it stands. */
    QByteArray ask(const QByteArray& request) const
    {
        QTcpSocket socket;
        socket.connectToHost(u"127.0.0.1"_s, static_cast<quint16>(QUrl(m_address).port()));
        socket.write(request + " HTTP/1.1\r\nHost: x\r\n\r\n");
        QByteArray answer;
        while (socket.waitForReadyRead(patience))
            answer += socket.readAll();
        return answer;
    }

private:
    QProcess m_process;
    QString m_address;
};

} // namespace

/** The program as its user has it: started with arguments, judged by its streams and status. */
class tst_zglobal : public QObject
{
    Q_OBJECT

    struct Result
    {
        int status = -1;
        QString output;
        QString errors;

        QJsonDocument json() const { return QJsonDocument::fromJson(output.toUtf8()); }
    };

    static Result run(const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        process.start(program(), arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit)
            return {};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    static void copyContent()
    {
        for (const QString& file : ZTestFolder::files(contentFolder()))
            ZTestFolder::write(u"www/"_s + file,
                               ZTestFolder::read(contentFolder() + u"/"_s + file));
    }

    ZTestFolder m_folder;

private Q_SLOTS:
    /** A client that is up to date and whose server is gone. */
    void initTestCase()
    {
        const Serving server(contentFolder());
        const QStringList client {u"--data"_s, u"client"_s};
        for (const QStringList& command :
             {QStringList {u"update"_s, u"--server"_s, server.address()}, QStringList {u"flash"_s},
              QStringList {u"banners"_s}}) {
            const Result result = run(command + client);
            QVERIFY2(result.status == 0, qPrintable(result.errors));
        }
    }

    void columns_data() { Cases::rows("zglobal"); }

    void columns()
    {
        QFETCH(QString, text);
        QTEST(Terminal::columns(text), "width");
        QTEST(Terminal::cut(text, 5), "cutToFive");
        TextTable table({u"name"_s, u">n"_s, u"rest"_s});
        table.add({text, u"7"_s, u"z"_s});
        table.add({u"12345678"_s, u"100"_s, u""_s});
        QCOMPARE(table.lines().at(1),
                 text + QString(8 - Terminal::columns(text), QLatin1Char(' ')) + u"    7  z"_s);
        QCOMPARE(table.lines().at(2), u"12345678  100"_s);
    }

    void calledWrongly_data() { Cases::rows("zglobal"); }

    void calledWrongly()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, says);
        const Result result = run(arguments.split(u' ', Qt::SkipEmptyParts));
        QTEST(result.status, "status");
        QCOMPARE(result.output, QString());
        QVERIFY2(result.errors.startsWith(u"zglobal: "_s) && result.errors.contains(says),
                 qPrintable(result.errors));
        QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
        QDir(u"zglobal-data"_s).removeRecursively();
    }

    void help_data()
    {
        QTest::addColumn<QString>("command");
        static const QRegularExpression line(u"^  ([a-z]+) "_s,
                                             QRegularExpression::MultilineOption);
        auto lines = line.globalMatch(run({u"--help"_s}).output);
        while (lines.hasNext()) {
            const QString command = lines.next().captured(1);
            QTest::newRow(qPrintable(command)) << command;
        }
    }

    void help()
    {
        QFETCH(QString, command);
        const Result result = run({command, u"--help"_s});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.errors, QString());
        QVERIFY(result.output.startsWith(u"Usage: zglobal "_s + command));
        const bool printsData = command != u"demo"_s && command != u"serve"_s;
        QCOMPARE(result.output.contains(u"  --json "_s), printsData);
    }

    void offline_data() { Cases::rows("zglobal"); }

    void offline()
    {
        QFETCH(QString, command);
        QFETCH(QString, says);
        const Result result =
            run(command.split(QLatin1Char(' ')) + QStringList {u"--data"_s, u"client"_s});
        QTEST(result.status, "status");
        const QString& where = result.status == 0 ? result.output : result.errors;
        QVERIFY2(where.contains(says), qPrintable(where));
    }

    void records()
    {
        const QStringList json {u"--json"_s, u"--data"_s, u"client"_s};
        const QJsonArray tables =
            run(QStringList {u"status"_s} + json).json().object().value(u"tables"_s).toArray();
        QCOMPARE(tables.size(), TableCatalogue::types().size());
        for (const QJsonValue& value : tables) {
            const QJsonObject table = value.toObject();
            QVERIFY(table.value(u"bytes"_s).toInt() > 0);
            const bool hasManager = !table.value(u"manager"_s).toString().isEmpty();
            const QString state = table.value(u"state"_s).toString();
            QCOMPARE(state,
                     !hasManager                                    ? u"no"_s
                         : table.value(u"loadedAtStart"_s).toBool() ? u"loaded"_s
                                                                    : u"by client"_s);
            const QString name = table.value(u"table"_s).toString();
            const QJsonArray rows = run(QStringList {u"show"_s, name} + json).json().array();
            if (hasManager)
                QCOMPARE(rows.size(), table.value(u"records"_s).toInt());
            QVERIFY2(!rows.isEmpty() && rows.first() != QJsonObject(), qPrintable(name));
        }
        // In the order of the table, though the manager keeps them by id.
        const QJsonArray medals = run(QStringList {u"show"_s, u"26"_s} + json).json().array();
        QCOMPARE(medals.at(1).toObject().value(u"medalId"_s).toString(), u"2"_s);
        QCOMPARE(run(QStringList {u"show"_s, u"26"_s, u"14"_s} + json).json().array().size(), 1);
    }

    /** What a client would remove stays there for who only looks. */
    void refused()
    {
        const QJsonArray tables = run({u"status"_s, u"--json"_s, u"--data"_s, u"client"_s})
                                      .json()
                                      .object()
                                      .value(u"tables"_s)
                                      .toArray();
        const auto gifts = std::find_if(tables.begin(), tables.end(), [](const QJsonValue& table) {
            return table[u"table"_s] == u"CS_GiftList"_s;
        });
        const QString file = u"client/"_s + (*gifts)[u"file"_s].toString();
        const QByteArray whole = ZTestFolder::read(file);
        const QByteArray refused = QByteArray(whole).replace("\"descs\"", "\"desc\"");
        ZTestFolder::write(file, refused);
        const Result why = run({u"why"_s, u"gift"_s, u"g1014"_s, u"--data"_s, u"client"_s});
        const Result raw =
            run({u"show"_s, u"24"_s, u"G1014"_s, u"--raw"_s, u"--data"_s, u"client"_s});
        const Result records = run({u"show"_s, u"24"_s, u"--data"_s, u"client"_s});
        const QByteArray left = ZTestFolder::read(file);
        ZTestFolder::write(file, whole);
        QCOMPARE(left, refused);
        QVERIFY2(why.output.contains(u">  no  CS_GiftList is loaded  "_s), qPrintable(why.output));
        QVERIFY2(raw.output.contains(u"refused with the table: no column \"descs\""_s),
                 qPrintable(raw.output));
        QCOMPARE(records.output, QString());
        QVERIFY2(records.errors.contains(u"CS_GiftList is not loaded: "_s),
                 qPrintable(records.errors));
    }

    void mask()
    {
        const QStringList client {u"mask"_s, u"--data"_s, u"client"_s};
        QCOMPARE(run(client + QStringList {u"低 价 金 豆！"_s, u"好"_s}).output, u"*！\n好\n"_s);
        const Result lines = run(client, u"代充金豆\r\n\n代充-金豆"_s.toUtf8());
        QCOMPARE(lines.output, u"*\n\n*\n"_s);
        const QJsonObject told =
            run(client + QStringList {u"--explain"_s, u"--json"_s, u"看加群-换礼物"_s})
                .json()
                .object();
        QCOMPARE(told.value(u"masked"_s).toString(), u"看*"_s);
        const QJsonObject one = told.value(u"masks"_s).toArray().first().toObject();
        QCOMPARE(one,
                 (QJsonObject {{u"word"_s, u"加群换礼物"_s},
                               {u"list"_s, u"newer"_s},
                               {u"start"_s, 1},
                               {u"length"_s, 6},
                               {u"covered"_s, u"加群-换礼物"_s}}));
    }

    void flash()
    {
        const QString folder = u"client/res/flash/box_open_4"_s;
        QVERIFY(QFile::exists(folder + u"/box_open.flajson"_s));
        QVERIFY(QDir().rename(folder, folder + u"_aside"_s));
        const Result failed = run({u"flash"_s, u"--data"_s, u"client"_s});
        QVERIFY(QDir().rename(folder + u"_aside"_s, folder));
        QCOMPARE(failed.status, 1);
        QVERIFY(failed.errors.contains(u"\nbox_open: http://127.0.0.1:"_s));
        QVERIFY(failed.errors.endsWith(u"zglobal: 1 animation missing still\n"_s));
        QVERIFY(failed.output.contains(u"box_open           4  no "_s));
    }

    void tidy()
    {
        QFile stale(u"client/res/dataTable/stale"_s);
        QVERIFY(stale.open(QIODevice::WriteOnly));
        QVERIFY(stale.setFileTime(QDateTime::currentDateTime().addDays(-8),
                                  QFileDevice::FileModificationTime));
        const Result dry = run({u"tidy"_s, u"--dry-run"_s, u"--json"_s, u"--data"_s, u"client"_s});
        const QJsonObject first = dry.json()[0][u"entries"_s][0].toObject();
        QCOMPARE(first[u"path"_s].toString(), u"res/dataTable/stale"_s);
        QCOMPARE(first[u"reason"_s].toString(), u"not-in-use"_s);
        QVERIFY(stale.exists() && dry.errors.startsWith(u"1 of "_s));
        const Result result = run({u"tidy"_s, u"--data"_s, u"client"_s});
        QVERIFY(result.output.contains(u"tidy datatable remove=stale,result=1\n"_s));
        QVERIFY(result.output.endsWith(u"tidy thread run end\n"_s));
        QVERIFY(!stale.exists());
    }

    /** The old content from a folder, the new from a server: the page has the pictures of both. */
    void diff()
    {
        copyContent();
        QByteArray gifts = ZTestFolder::read(u"www/app/resources/CS_GiftList"_s);
        gifts.replace("\"星光皇冠\", 2, 888", "\"<b>&\", 2, \"888\"");
        ZTestFolder::write(u"www/app/resources/CS_GiftList"_s, gifts);
        ZTestFolder::write(u"www/app/logo/gift/G1014"_s, "GIF8 of the server");
        const Serving server(u"www"_s);
        const Result result = run({u"diff"_s, contentFolder(), server.address(), u"--json"_s,
                                   u"--exit-code"_s, u"--html"_s, u"page.html"_s});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.endsWith(u"1 table: 1 record changed\n"_s),
                 qPrintable(result.errors));
        const QJsonArray tables = result.json().array();
        QCOMPARE(tables.size(), 1);
        const QJsonObject table = tables.first().toObject();
        QCOMPARE(table.value(u"table"_s).toString(), u"CS_GiftList"_s);
        const QJsonObject record = table.value(u"records"_s).toArray().first().toObject();
        QCOMPARE(record.value(u"key"_s).toString(), u"G1014"_s);
        QCOMPARE(record.value(u"fields"_s).toArray().last().toObject(),
                 (QJsonObject {{u"column"_s, u"price"_s},
                               {u"old"_s, 888},
                               {u"new"_s, u"888"_s},
                               {u"remark"_s, u"a client reads 0"_s}}));
        const QByteArray page = ZTestFolder::read(u"page.html"_s);
        const QByteArray old = ZTestFolder::read(contentFolder() + u"/app/logo/gift/G1014"_s);
        QVERIFY(page.contains("data:image/png;base64," + old.toBase64()));
        QVERIFY(
            page.contains("data:image/gif;base64," + QByteArray("GIF8 of the server").toBase64()));
        QVERIFY(page.contains("G1014 &lt;b&gt;&amp;</bdi>"));
    }

    void demoTellsFailures()
    {
        copyContent();
        ZTestFolder::write(u"www/app/resources/Doutu"_s, "<html>");
        const Result result = run({u"demo"_s, u"--content"_s, u"www"_s});
        QCOMPARE(result.status, 1);
        QVERIFY(result.output.contains(u"/app/resources/Doutu: 6 bytes that are no table"_s));
        QVERIFY(result.output.endsWith(u"24 of 28 steps as expected\n"_s));
        for (const QString& line : result.output.split(QLatin1Char('\n')))
            QVERIFY2(Terminal::columns(line) <= 100, qPrintable(line));
    }

    void demoIsInterrupted()
    {
#ifndef Q_OS_WIN
        QTemporaryDir temporary;
        QProcess demo;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, temporary.path());
        demo.setProcessEnvironment(environment);
        demo.start(program(), {u"demo"_s});
        QByteArray output;
        while (!output.contains("brings every table up to date") && demo.waitForReadyRead(patience))
            output += demo.readAllStandardOutput();
        QVERIFY(!QDir(temporary.path()).isEmpty());
        demo.terminate();
        QVERIFY(demo.waitForFinished(patience));
        QCOMPARE(demo.exitCode(), 128 + 15);
        QVERIFY(QDir(temporary.path()).isEmpty());
#endif
    }

    void update()
    {
        copyContent();
        const Serving server(u"www"_s);
        const QStringList json {u"update"_s, u"--json"_s, u"--data"_s, u"updated"_s};
        const auto outcomes = [&json](const QStringList& more, int status) {
            const Result result = run(json + more);
            QMap<QString, QStringList> tables;
            const QJsonArray all = result.json().array();
            for (const QJsonValue& table : all)
                tables[table.toObject().value(u"outcome"_s).toString()].append(
                    table.toObject().value(u"table"_s).toString());
            return result.status == status ? tables : QMap<QString, QStringList>();
        };
        const int all = TableCatalogue::types().size();
        QCOMPARE(outcomes({u"--server"_s, server.address() + u"//"_s}, 0).value(u"new"_s).size(),
                 all);
        const QJsonArray second = run(json).json().array();
        for (const QJsonValue& table : second)
            QCOMPARE(table[u"outcome"_s].toString(), u"current"_s);
        // What did load and is damaged since is fetched anew.
        ZTestFolder::write(u"updated/"_s + second.at(all - 2)[u"file"_s].toString(), "{");
        const QString damaged = second.at(all - 2)[u"table"_s].toString();

        QByteArray versions = ZTestFolder::read(u"www/app/versions.json"_s);
        versions.replace("\"Doutu\": 11", "\"Doutu\": 12")
            .replace("\"PCSkin\": 17", "\"PCSkin\": 18");
        ZTestFolder::write(u"www/app/versions.json"_s, versions);
        QFile::remove(u"www/app/resources/PCSkin"_s);
        const auto raised = outcomes({}, 1);
        QCOMPARE(raised.value(u"new"_s), (QStringList {u"Doutu"_s, damaged}));
        QCOMPARE(raised.value(u"failed"_s), QStringList {u"PCSkin"_s});
        QCOMPARE(raised.value(u"current"_s).size(), all - 3);

        // What came in and will not load is told too, and not forgotten while it is published.
        versions.replace("\"Message\": 18", "\"Message\": 19")
            .replace("PCSkin\": 18", "PCSkin\": 17");
        ZTestFolder::write(u"www/app/versions.json"_s, versions);
        QByteArray message = ZTestFolder::read(u"www/app/resources/Message"_s);
        ZTestFolder::write(u"www/app/resources/Message"_s,
                           message.replace("\"tabType\"", "\"tab\""));
        QCOMPARE(outcomes({}, 1).value(u"refused"_s), QStringList {u"Message"_s});
        for (const QString& command : {u"update"_s, u"status"_s}) {
            const Result told = run({command, u"--quiet"_s, u"--data"_s, u"updated"_s});
            QCOMPARE(told.status, 1);
            QVERIFY2(told.errors.startsWith(u"Message: version 19 was refused: "_s)
                         && told.errors.contains(u"no column \"tabType\"; version 18 serves"_s),
                     qPrintable(told.errors));
        }
    }

    void serve_data()
    {
        Cases::rows("zglobal");
    }

    void serve()
    {
        QFETCH(QString, request);
        QFETCH(QString, body);
        ZTestFolder::write(u"site/a/f"_s, QByteArray("a\0b\r\n", 5));
        ZTestFolder::write(u"site2/f"_s, "secret");
        ZTestFolder::write(u"secret"_s, "secret");
        QFile::link(QFileInfo(u"secret"_s).absoluteFilePath(), u"site/link"_s);
        QFile::link(QFileInfo(u"site/a/f"_s).absoluteFilePath(), u"site/inner"_s);
        const QByteArray answer = Serving(u"site"_s).ask(request.toUtf8());
        QTEST(QString::fromUtf8(answer.mid(9, 3)), "status");
        QCOMPARE(answer.mid(answer.indexOf("\r\n\r\n") + 4), body.toUtf8());
    }

    /** The status is for a pipeline, the objects for a program. */
    void lint()
    {
        const QString table = ZTestFolder::write(
            u"Doutu.json"_s,
            R"({"columns": ["name", "version", "group"], "rows": [["a", 3, "1"]]})");
        const Result found = run({u"lint"_s, table, u"--json"_s});
        QCOMPARE(found.status, 1);
        QCOMPARE(found.json().array(),
                 QJsonArray({QJsonObject {
                     {u"rule"_s, u"wrong-type"_s},
                     {u"severity"_s, u"error"_s},
                     {u"table"_s, u"Doutu"_s},
                     {u"row"_s, 1},
                     {u"column"_s, u"version"_s},
                     {u"message"_s, u"3 is no integer in quotes; a client reads 0"_s}}}));
        QCOMPARE(run({u"lint"_s, table, u"--allow"_s, u"wrong-type"_s}).status, 0);
    }

    void servesUntilTerminated()
    {
        ZTestFolder::write(u"site/f"_s, "x");
        Serving first(u"site"_s);
        QVERIFY(!first.address().isEmpty());
        const QString port = QString::number(QUrl(first.address()).port());
        const Result second = run({u"serve"_s, u"site"_s, u"--port"_s, port});
        QCOMPARE(second.status, 1);
        QCOMPARE(second.errors, u"zglobal: port %1 of 127.0.0.1 cannot be had\n"_s.arg(port));
#ifndef Q_OS_WIN
        QVERIFY(first.ask("GET /f").endsWith("x"));
        first.process().terminate();
        QVERIFY(first.process().waitForFinished(patience));
        QCOMPARE(first.process().exitCode(), 0);
        QVERIFY(first.process().readAllStandardError().contains("stopped after 1 requests"));
#endif
    }
};

QTEST_GUILESS_MAIN(tst_zglobal)
#include "tst_zglobal.moc"
