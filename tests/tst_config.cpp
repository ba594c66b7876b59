#include "host/HostLimits.h"
#include "host/ZGlobalConfig.h"
#include "support/Literals.h"
#include "support/WorkFolder.h"

#include <QtTest>

namespace {

const QHash<QString, int> heldHeader {{u"held"_s, 3}};
const QJsonArray heldRows {7};

/** JSON with its quotes written as apostrophes. */
QByteArray json(QByteArray text)
{
    return text.replace('\'', '"');
}

} // namespace

class tst_config : public QObject
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
        QString error = u"untouched"_s;
        QVERIFY(ZGlobalConfig::readTableFile(bytes, header, rows, &error));
        QCOMPARE(header, (QHash<QString, int> {{u"id"_s, 0}, {u"名"_s, 1}}));
        QTEST(rows.size(), "rowCount");
        QCOMPARE(error, u"untouched"_s);
    }

    void refusesWhatIsNoTable_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("cause");
        const auto row = [](const char* name, const QByteArray& bytes, const QString& cause) {
            QTest::newRow(name) << bytes << cause;
        };
        const QString noColumns = u"\"columns\" is not a list of column names"_s;
        row("empty", {}, u"not JSON at byte 0: illegal value"_s);
        row("cut off", json("{'columns': ['id'], 'rows': [['1"), u"not JSON"_s);
        row("not UTF-8", "{\"columns\": [\"\xB6\xC1\"], \"rows\": []}", u"not JSON"_s);
        row("two documents", json("{'columns': ['id'], 'rows': []} {}"), u"not JSON"_s);
        row("a list", json("[['id']]"), u"not a JSON object"_s);
        row("no columns", json("{'rows': []}"), noColumns);
        row("columns no list", json("{'columns': 'id', 'rows': []}"), noColumns);
        row("column no text", json("{'columns': ['id', 7], 'rows': []}"),
            u"the name of column 2 is not text"_s);
        row("column twice", json("{'columns': ['id', '%1', 'id'], 'rows': []}"),
            u"column \"id\" is named twice"_s);
        row("no rows", json("{'columns': ['id']}"), u"\"rows\" is not a list"_s);
        row("rows null", json("{'columns': ['id'], 'rows': null}"), u"\"rows\" is not a list"_s);
        row("too large",
            json("{'columns': ['id'], 'rows': []}") + QByteArray(HostLimits::maxTableBytes, ' '),
            u"larger than 67108864 bytes"_s);
    }

    void refusesWhatIsNoTable()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, cause);
        const WorkFolder folder;
        const QString path = WorkFolder::write(u"table"_s, bytes);
        QHash<QString, int> header = heldHeader;
        QJsonArray rows = heldRows;
        QString error;
        QVERIFY(!ZGlobalConfig::readTableFile(bytes, header, rows, &error));
        QVERIFY2(error.startsWith(cause), qPrintable(error));
        QVERIFY(!ZGlobalConfig::readTableFile(path, header, rows, &error));
        QVERIFY2(error.startsWith(path + u": "_s + cause), qPrintable(error));
        QVERIFY(!ZGlobalConfig::readTableFile(u"."_s, header, rows));
        QVERIFY(!ZGlobalConfig::readTableFile(path + u"-absent"_s, header, rows));
        QCOMPARE(header, heldHeader);
        QCOMPARE(rows, heldRows);
    }

    void loadsValues()
    {
        const WorkFolder folder;
        const QString path = u"config.json"_s;
        ZGlobalConfig& config = ZGlobalConfig::getInstance();
        const auto value = [&config](const char* key) {
            return config.getConfig(QLatin1String(key));
        };
        config.setConfig(u"kept"_s, u"as it was"_s);
        const QByteArray values =
            json("{'userId': 90071992547409931, 'ServerType': 1002, 'half': -0.5,"
                 "                                      'big': 1e21, 'cmsServer': 'http://例/'}");
        WorkFolder::write(path, values);
        QVERIFY(config.loadConfig(path));
        QCOMPARE(value("userId"), u"90071992547409931"_s);
        QCOMPARE(value("ServerType"), u"1002"_s);
        QCOMPARE(value("half"), u"-0.5"_s);
        QCOMPARE(value("big"), u"1000000000000000000000"_s);
        QCOMPARE(value("cmsServer"), u"http://例/"_s);
        QCOMPARE(value("kept"), u"as it was"_s);
        QVERIFY(value("unknown").isEmpty());

        const QByteArray wrong = json("{'ServerType': '2', 'flag': true}");
        WorkFolder::write(path, wrong);
        QString error;
        QVERIFY(!config.loadConfig(path, &error));
        QCOMPARE(error, path + u": the value of \"flag\" is neither text nor a number"_s);
        QCOMPARE(value("ServerType"), u"1002"_s);
    }
};

QTEST_GUILESS_MAIN(tst_config)
#include "tst_config.moc"
