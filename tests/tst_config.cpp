#include "host/ZGlobalConfig.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

const QHash<QString, int> heldHeader {{QStringLiteral("held"), 3}};
const QJsonArray heldRows {7};

/** JSON with its quotes written as apostrophes. */
QByteArray json(QByteArray text)
{
    return text.replace('\'', '"');
}

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsATable_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("rowCount");
        QTest::newRow("plain") << QByteArray(
            json("{'columns': ['id', '名'], 'rows': [['1', '玫瑰']]}"))
                               << 1;
        QTest::newRow("byte order mark")
            << QByteArray("\xEF\xBB\xBF" + json("{'columns': ['id', '名'], 'rows': []}")) << 0;
        QTest::newRow("rows of all sorts") << QByteArray(
            json("{'columns': ['id', '名'], 'rows': [null, [], [1, 2, 3], 'x', {}], 'by': 1}"))
                                           << 5;
    }

    void readsATable()
    {
        QFETCH(QByteArray, bytes);
        QHash<QString, int> header = heldHeader;
        QJsonArray rows = heldRows;
        QString error = QStringLiteral("untouched");
        QVERIFY(ZGlobalConfig::readTableFile(bytes, header, rows, &error));
        QCOMPARE(header,
                 (QHash<QString, int> {{QStringLiteral("id"), 0}, {QStringLiteral("名"), 1}}));
        QTEST(rows.size(), "rowCount");
        QCOMPARE(error, QStringLiteral("untouched"));
    }

    void refusesWhatIsNoTable_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("cause");
        const auto row = [](const char* name, const QByteArray& bytes, const QString& cause) {
            QTest::newRow(name) << bytes << cause;
        };
        const QString noColumns = QStringLiteral("\"columns\" is not a list of column names");
        row("empty", {}, QStringLiteral("not JSON at byte 0: illegal value"));
        row("cut off", json("{'columns': ['id'], 'rows': [['1"), QStringLiteral("not JSON"));
        row("not UTF-8", "{\"columns\": [\"\xB6\xC1\"], \"rows\": []}", QStringLiteral("not JSON"));
        row("two documents", json("{'columns': ['id'], 'rows': []} {}"),
            QStringLiteral("not JSON"));
        row("a list", json("[['id']]"), QStringLiteral("not a JSON object"));
        row("no columns", json("{'rows': []}"), noColumns);
        row("columns no list", json("{'columns': 'id', 'rows': []}"), noColumns);
        row("columns empty", json("{'columns': [], 'rows': []}"), noColumns);
        row("column no text", json("{'columns': ['id', 7], 'rows': []}"),
            QStringLiteral("the name of column 2 is not text"));
        row("column twice", json("{'columns': ['id', '%1', 'id'], 'rows': []}"),
            QStringLiteral("column \"id\" is named twice"));
        row("no rows", json("{'columns': ['id']}"), QStringLiteral("\"rows\" is not a list"));
        row("rows null", json("{'columns': ['id'], 'rows': null}"),
            QStringLiteral("\"rows\" is not a list"));
        row("too large",
            json("{'columns': ['id'], 'rows': []}") + QByteArray(ZGlobalConfig::maxTableBytes, ' '),
            QStringLiteral("larger than 67108864 bytes"));
    }

    void refusesWhatIsNoTable()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, cause);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("table"));
        QVERIFY(write(path, bytes));
        QHash<QString, int> header = heldHeader;
        QJsonArray rows = heldRows;
        QString error;
        QVERIFY(!ZGlobalConfig::readTableFile(bytes, header, rows, &error));
        QVERIFY2(error.startsWith(cause), qPrintable(error));
        QVERIFY(!ZGlobalConfig::readTableFile(path, header, rows, &error));
        QVERIFY2(error.startsWith(path + QStringLiteral(": ") + cause), qPrintable(error));
        QVERIFY(!ZGlobalConfig::readTableFile(folder.path(), header, rows));
        QVERIFY(!ZGlobalConfig::readTableFile(path + QStringLiteral("-absent"), header, rows));
        QCOMPARE(header, heldHeader);
        QCOMPARE(rows, heldRows);
    }

    void loadsValues()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("config.json"));
        ZGlobalConfig& config = ZGlobalConfig::getInstance();
        const auto value = [&config](const char* key) {
            return config.getConfig(QLatin1String(key));
        };
        config.setConfig(QStringLiteral("kept"), QStringLiteral("as it was"));
        const QByteArray values =
            json("{'userId': 90071992547409931, 'ServerType': 1002, 'half': -0.5,"
                 "                                      'big': 1e21, 'cmsServer': 'http://例/'}");
        QVERIFY(write(path, values));
        QVERIFY(config.loadConfig(path));
        QCOMPARE(value("userId"), QStringLiteral("90071992547409931"));
        QCOMPARE(value("ServerType"), QStringLiteral("1002"));
        QCOMPARE(value("half"), QStringLiteral("-0.5"));
        QCOMPARE(value("big"), QStringLiteral("1000000000000000000000"));
        QCOMPARE(value("cmsServer"), QStringLiteral("http://例/"));
        QCOMPARE(value("kept"), QStringLiteral("as it was"));
        QVERIFY(value("unknown").isEmpty());

        const QByteArray wrong = json("{'ServerType': '2', 'flag': true}");
        QVERIFY(write(path, wrong));
        QString error;
        QVERIFY(!config.loadConfig(path, &error));
        QCOMPARE(error,
                 path + QStringLiteral(": the value of \"flag\" is neither text nor a number"));
        QCOMPARE(value("ServerType"), QStringLiteral("1002"));
    }
};

QTEST_GUILESS_MAIN(TestConfig)
#include "tst_config.moc"
