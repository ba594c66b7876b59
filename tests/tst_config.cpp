#include "host/HostLimits.h"
#include "host/ZGlobalConfig.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "testing/ZTestFolder.h"

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
    void readsATable_data() { Cases::rows("config"); }

    void readsATable()
    {
        QFETCH(QString, text);
        const QByteArray bytes = Cases::bytes(text);
        QHash<QString, int> header = heldHeader;
        QJsonArray rows = heldRows;
        QString error = u"untouched"_s;
        QVERIFY(ZGlobalConfig::readTableFile(bytes, header, rows, &error));
        QCOMPARE(header, (QHash<QString, int> {{u"id"_s, 0}, {u"名"_s, 1}}));
        QTEST(static_cast<int>(rows.size()), "rowCount");
        QCOMPARE(error, u"untouched"_s);
    }

    void refusesWhatIsNoTable_data() { Cases::rows("config"); }

    void refusesWhatIsNoTable()
    {
        QFETCH(QString, text);
        QFETCH(QString, cause);
        QByteArray bytes = Cases::bytes(text);
        if (cause.startsWith(u"larger"_s))
            bytes += QByteArray(HostLimits::maxTableBytes, ' ');
        const ZTestFolder folder;
        const QString path = ZTestFolder::write(u"table"_s, bytes);
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
        const ZTestFolder folder;
        const QString path = u"config.json"_s;
        ZGlobalConfig& config = ZGlobalConfig::getInstance();
        const auto value = [&config](const char* key) {
            return config.getConfig(QLatin1String(key));
        };
        config.setConfig(u"kept"_s, u"as it was"_s);
        const QByteArray values =
            json("{'userId': 90071992547409931, 'ServerType': 1002, 'half': -0.5,"
                 "                                      'big': 1e21, 'cmsServer': 'http://例/'}");
        ZTestFolder::write(path, values);
        QVERIFY(config.loadConfig(path));
        QCOMPARE(value("userId"), u"90071992547409931"_s);
        QCOMPARE(value("ServerType"), u"1002"_s);
        QCOMPARE(value("half"), u"-0.5"_s);
        QCOMPARE(value("big"), u"1000000000000000000000"_s);
        QCOMPARE(value("cmsServer"), u"http://例/"_s);
        QCOMPARE(value("kept"), u"as it was"_s);
        QVERIFY(value("unknown").isEmpty());

        const QByteArray wrong = json("{'ServerType': '2', 'flag': true}");
        ZTestFolder::write(path, wrong);
        QString error;
        QVERIFY(!config.loadConfig(path, &error));
        QCOMPARE(error, path + u": the value of \"flag\" is neither text nor a number"_s);
        QCOMPARE(value("ServerType"), u"1002"_s);
    }
};

QTEST_GUILESS_MAIN(tst_config)
#include "tst_config.moc"
