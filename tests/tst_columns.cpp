#include "datatable/DeclaredTable.h"
#include "support/Tables.h"

#include <QDateTime>
#include <QtTest>

#include <random>

namespace {

struct Sample
{
    QString text = u"kept"_s;
    int integer = 7;
    bool flag = true;
    double number = 7.5;
    qint64 truncated = 7;
    QString integerText = u"kept"_s;
    int textInteger = 7;
    bool textFlag = true;
    QStringList list {u"kept"_s};
};

/** A manager of samples, reduced to what a declaration needs. */
struct Samples
{
    static Samples& getInstance()
    {
        static Samples instance;
        return instance;
    }

    static const TableDeclaration& declaration()
    {
        using namespace Cells;
        static const DeclaredTable<Samples, Sample> table {
            {
                {Required, Text(), Z_FIELD(Sample, text)},
                {Optional, Integer(), Z_FIELD(Sample, integer), RefersTo {EDataTable::Doutu, "id"}},
                {Optional, Flag(), Z_FIELD(Sample, flag)},
                {Optional, Number(), Z_FIELD(Sample, number)},
                {Optional, TruncatedNumber(), Z_FIELD(Sample, truncated)},
                {Optional, IntegerAsText(), Z_FIELD(Sample, integerText)},
                {Optional, TextAsInteger(), Z_FIELD(Sample, textInteger)},
                {Optional, TextAsFlag(), Z_FIELD(Sample, textFlag)},
                {Optional, "texts", TextList(), Z_FIELD(Sample, list), FileOn {"Server", "/a/"}},
                {Required, "unread", "never read"},
            },
            TableParts::LeftOut {&Sample::flag, "only with it",
                                 [](const Sample& sample) { return sample.text == u"out"_s; }},
            TableParts::Listed {&Samples::list, &Sample::text}};
        return table;
    }

    QVector<Sample> list;
};

const QString dateFormat = u"yyyy-MM-dd HH:mm:ss"_s;

/** The time zone of the process for as long as it lives. */
class Zone
{
public:
    explicit Zone(const QByteArray& name)
        : m_wasSet(qEnvironmentVariableIsSet("TZ"))
        , m_before(qgetenv("TZ"))
    {
        qputenv("TZ", name);
    }
    ~Zone()
    {
        if (m_wasSet)
            qputenv("TZ", m_before);
        else
            qunsetenv("TZ");
    }
    Q_DISABLE_COPY(Zone)

private:
    bool m_wasSet;
    QByteArray m_before;
};

/** A date text, most often damaged in one or two places. */
QString randomDate(std::mt19937& random)
{
    const auto below = [&random](int limit) { return static_cast<int>(random() % limit); };
    const QString damage = u"0123456789-: T+.x\uFF12"_s;
    QString text = QString::asprintf("%04d-%02d-%02d %02d:%02d:%02d",
                                     below(2) ? 1969 + below(90) : below(10000), below(14),
                                     below(33), below(25), below(61), below(61));
    for (int edits = below(3); edits > 0; --edits) {
        const int at = below(text.size());
        const QChar other = damage.at(below(damage.size()));
        if (below(2))
            text[at] = other;
        else if (below(2))
            text.insert(at, other);
        else
            text.remove(at, 1);
    }
    return text;
}

} // namespace

class tst_columns : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

private Q_SLOTS:
    void conversions_data();
    void conversions();
    void missingColumns();
    void schema_data();
    void schema();
    void datesAreThoseOfQt_data();
    void datesAreThoseOfQt();
    void clockChanges();
};

void tst_columns::conversions_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QByteArray>("record");
    const QByteArray otherwise =
        "[{'text': '', 'integer': 0, 'flag': false, 'number': 0, 'truncated': 0, "
        "'integerText': '0', 'textInteger': 0, 'textFlag': false, 'texts': ['']}]";
    QTest::newRow("right")
        << QByteArray("[1, '10,,30', '2', '12', 12, 1000000000000000000.5, 2.25, true, 5, 'a']")
        << QByteArray("[{'text': 'a', 'integer': 5, 'flag': true, 'number': 2.25, "
                      "'truncated': 1000000000000000000, 'integerText': '12', 'textInteger': 12, "
                      "'textFlag': true, 'texts': ['10', '', '30']}]");
    // A cell of another type, or none at all, is not the field's default: it is the conversion's.
    QTest::newRow("other types") << QByteArray("[1, 10, 1, 12, '12', '9', '2', 1, '5', 6]")
                                 << otherwise;
    QTest::newRow("row too short") << QByteArray("[1]") << otherwise;
    QTest::newRow("no row") << QByteArray("'no array'") << otherwise;
    QTest::newRow("fractions and bounds")
        << QByteArray("[1, '', 'x', 'x', 7.5, 1e300, 0, 0, 7.0]")
        << QByteArray("[{'text': '', 'integer': 7, 'flag': false, 'number': 0, "
                      "'truncated': 9223372036854775807, 'integerText': '0', 'textInteger': 0, "
                      "'textFlag': false, 'texts': ['']}]");
}

void tst_columns::conversions()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, record);
    const TableDeclaration& table = Samples::declaration();
    QVERIFY(table.load(tableOf(u"unread texts textFlag textInteger integerText truncated number "
                               "flag integer text"_s,
                               "[" + row + ", null]")));
    QCOMPARE(QJsonDocument(table.records()).toJson(), QJsonDocument(jsonOf(record)).toJson());
}

/** A column that is not there leaves the field's default, and the rule for its cells unused. */
void tst_columns::missingColumns()
{
    const TableDeclaration& table = Samples::declaration();
    QVERIFY(table.load(tableOf(u"unread text"_s, "[[1, 'a'], [1, 'out']]")));
    QCOMPARE(table.recordCount(), 2);
    QCOMPARE(Samples::getInstance().list.first().integer, 7);
    QVERIFY(table.load(tableOf(u"unread text flag"_s, "[[1, 'out'], [1, 'in']]")));
    QCOMPARE(table.recordCount(), 1);
    QCOMPARE(Samples::getInstance().list.first().text, u"in"_s);
}

/** What a column says of its cells, for whoever checks a table before clients do. */
void tst_columns::schema_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QJsonArray>("fitting");
    QTest::addColumn<QJsonArray>("unfitting");
    const QJsonValue null;
    QTest::newRow("text") << u"text"_s << QJsonArray {u""_s, u"a"_s} << QJsonArray {1, true, null};
    QTest::newRow("integer") << u"integer"_s << QJsonArray {0, -7, 7.0}
                             << QJsonArray {u"7"_s, 7.5, 3e9, null};
    QTest::newRow("flag") << u"flag"_s << QJsonArray {true, false} << QJsonArray {1, u"true"_s};
    QTest::newRow("number") << u"number"_s << QJsonArray {0, 7.5} << QJsonArray {u"7.5"_s, null};
    QTest::newRow("truncated") << u"truncated"_s << QJsonArray {0, 1e15}
                               << QJsonArray {7.5, 1e300, u"7"_s};
    QTest::newRow("integer text") << u"integerText"_s << QJsonArray {12} << QJsonArray {u"12"_s};
    QTest::newRow("text integer") << u"textInteger"_s << QJsonArray {u"12"_s, u"-1"_s}
                                  << QJsonArray {12, u"x"_s, u""_s, u"9999999999"_s};
    QTest::newRow("texts") << u"texts"_s << QJsonArray {u"a,b"_s} << QJsonArray {1};
}

void tst_columns::schema()
{
    QFETCH(QString, column);
    QFETCH(QJsonArray, fitting);
    QFETCH(QJsonArray, unfitting);
    const TableSchema& schema = Samples::declaration().schema();
    const auto found = std::find_if(schema.columns.begin(), schema.columns.end(),
                                    [&](const ColumnSchema& one) { return one.name == column; });
    QVERIFY(found != schema.columns.end());
    for (const QJsonValue& cell : fitting)
        QVERIFY2(found->fits(cell), qPrintable(cell.toVariant().toString()));
    for (const QJsonValue& cell : unfitting)
        QVERIFY2(!found->fits(cell), qPrintable(cell.toVariant().toString()));
    QCOMPARE(found->referredTable, column == u"integer"_s ? u"Doutu"_s : QString());
    QCOMPARE(found->address, column == u"texts"_s ? u"/a/"_s : QString());
    QCOMPARE(found->remark, column == u"flag"_s ? u"only with it"_s : QString());
    QCOMPARE(schema.key, u"text"_s);
}

void tst_columns::datesAreThoseOfQt_data()
{
    QTest::addColumn<QString>("zone");
    for (const char* zone : {"UTC", "Asia/Shanghai", "America/Sao_Paulo"})
        QTest::newRow(zone) << QString::fromLatin1(zone);
}

void tst_columns::datesAreThoseOfQt()
{
    QFETCH(QString, zone);
    const Zone guard(zone.toLatin1());
    std::mt19937 random(20261121);
    int parsed = 0;
    QStringList differing;
    for (int i = 0; i < 20000; ++i) {
        const QString text = randomDate(random);
        const QDateTime date = QDateTime::fromString(text, dateFormat);
        parsed += date.isValid() ? 1 : 0;
        if (Cells::secondsOfDate(text) != date.toSecsSinceEpoch())
            differing.append(text);
    }
    QCOMPARE(differing, QStringList());
    QVERIFY2(parsed > 2000, qPrintable(QString::number(parsed)));
}

void tst_columns::clockChanges()
{
    const Zone newYork("America/New_York");
    for (const QString& text : {u"2026-03-08 01:59:59"_s, u"2026-03-08 02:30:00"_s,
                                u"2026-03-08 03:00:00"_s, u"1883-11-18 12:01:00"_s})
        QCOMPARE(Cells::secondsOfDate(text),
                 QDateTime::fromString(text, dateFormat).toSecsSinceEpoch());
    const Zone utc("UTC");
    QCOMPARE(Cells::secondsOfDate(u"2026-11-21 00:00:01"_s), Q_INT64_C(1795219201));
    for (const QString& none : {u"2026-02-29 00:00:00"_s, QString()}) {
        QCOMPARE(Cells::secondsOfDate(none), QDateTime().toSecsSinceEpoch());
        QVERIFY(!Cells::isDate(none));
    }
    const Zone shanghai("Asia/Shanghai"); // what no date comes to follows the zone as well
    QCOMPARE(Cells::secondsOfDate(QString()), QDateTime().toSecsSinceEpoch());
}

QTEST_GUILESS_MAIN(tst_columns)

#include "tst_columns.moc"
