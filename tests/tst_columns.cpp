#include "datatable/TableColumns.h"
#include "support/Literals.h"
#include "support/WorkFolder.h"

#include <QDateTime>
#include <QtTest>

#include <cmath>
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

const TableColumns<Sample>& sampleColumns()
{
    using namespace Cells;
    static const TableColumns<Sample> declared {
        {Required, "text", Text(), Z_FIELD(Sample, text)},
        {Optional, "integer", Integer(), Z_FIELD(Sample, integer)},
        {Optional, "flag", Flag(), Z_FIELD(Sample, flag)},
        {Optional, "number", Number(), Z_FIELD(Sample, number)},
        {Optional, "truncated", TruncatedNumber(), Z_FIELD(Sample, truncated)},
        {Optional, "integerText", IntegerAsText(), Z_FIELD(Sample, integerText)},
        {Optional, "textInteger", TextAsInteger(), Z_FIELD(Sample, textInteger)},
        {Optional, "textFlag", TextAsFlag(), Z_FIELD(Sample, textFlag)},
        {Optional, "list", TextList(), Z_FIELD(Sample, list)},
        {Required, "unread", "never read"},
    };
    return declared;
}

QVector<Sample> load(const QString& path)
{
    QVector<Sample> samples;
    const auto table = sampleColumns().read(path);
    if (table)
        table->forEach([&](const Sample& sample) { samples.append(sample); });
    return samples;
}

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

private Q_SLOTS:
    void conversions();
    void refusedAndSkipped();
    void datesAreThoseOfQt_data();
    void datesAreThoseOfQt();
    void clockChanges();
};

void tst_columns::conversions()
{
    WorkFolder folder;
    const QStringList all {u"unread"_s,      u"list"_s,      u"textFlag"_s, u"textInteger"_s,
                           u"integerText"_s, u"truncated"_s, u"number"_s,   u"flag"_s,
                           u"integer"_s,     u"text"_s};
    const QVector<Sample> samples = load(folder.writeTable(
        all,
        {QJsonArray {1, u"10,,30"_s, u"2"_s, u"12"_s, 12, 1e18 + 0.5, 2.25, true, 5, u"a"_s},
         QJsonArray {1, 10, 1, 12, u"12"_s, u"9"_s, u"2"_s, 1, u"5"_s, 6},
         QJsonArray {1, QString(), u"x"_s, u"x"_s, 7.5, 1e300, 0, 0, 7.0}, QJsonArray {1}}));
    QCOMPARE(samples.size(), 4);

    const Sample& right = samples.at(0);
    QCOMPARE(right.text, u"a"_s);
    QCOMPARE(right.integer, 5);
    QVERIFY(right.flag);
    QCOMPARE(right.number, 2.25);
    QCOMPARE(right.truncated, Q_INT64_C(1000000000000000000));
    QCOMPARE(right.integerText, u"12"_s);
    QCOMPARE(right.textInteger, 12);
    QVERIFY(right.textFlag);
    QCOMPARE(right.list, QStringList({u"10"_s, QString(), u"30"_s}));

    // A cell of another type, or none at all, is not the field's default: it is the conversion's.
    for (const Sample& wrong : {samples.at(1), samples.at(3)}) {
        QCOMPARE(wrong.text, QString());
        QCOMPARE(wrong.integer, 0);
        QVERIFY(!wrong.flag);
        QCOMPARE(wrong.number, 0.0);
        QCOMPARE(wrong.truncated, 0);
        QCOMPARE(wrong.integerText, u"0"_s);
        QCOMPARE(wrong.textInteger, 0);
        QVERIFY(!wrong.textFlag);
        QCOMPARE(wrong.list, QStringList {QString()});
    }
    QCOMPARE(samples.at(2).integer, 7);
    QCOMPARE(samples.at(2).integerText, u"0"_s);
    QCOMPARE(samples.at(2).truncated, std::numeric_limits<qint64>::max());
}

void tst_columns::refusedAndSkipped()
{
    WorkFolder folder;
    QVERIFY(!sampleColumns().read(u"missing"_s));
    QVERIFY(!sampleColumns().read(folder.writeTable({u"text"_s}, {})));
    QVERIFY(!sampleColumns().read(folder.writeTable({u"unread"_s, u"integer"_s}, {})));

    const QVector<Sample> samples = load(folder.writeTable(
        {u"unread"_s, u"text"_s},
        {QJsonValue(), QJsonArray {1, u"a"_s}, u"no array"_s, QJsonArray {1, u"b"_s}}));
    QCOMPARE(samples.size(), 3);
    QCOMPARE(samples.at(0).text, u"a"_s);
    QCOMPARE(samples.at(0).integer, 7); // no such column: the default stays
    QCOMPARE(samples.at(1).text, QString());
    QCOMPARE(samples.at(2).text, u"b"_s);
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
    QCOMPARE(Cells::secondsOfDate(u"2026-02-29 00:00:00"_s), QDateTime().toSecsSinceEpoch());
}

QTEST_GUILESS_MAIN(tst_columns)

#include "tst_columns.moc"
