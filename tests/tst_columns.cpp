#include "datatable/DeclaredTable.h"
#include "support/Cases.h"
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
    explicit Zone(const QByteArray& name) { qputenv("TZ", name); }
    ~Zone() { m_before.isNull() ? qunsetenv("TZ") : qputenv("TZ", m_before); }
    Q_DISABLE_COPY(Zone)

private:
    const QByteArray m_before = qgetenv("TZ");
};

qint64 secondsOf(const QDateTime& date)
{
    return (date.isValid() ? date : QDateTime()).toSecsSinceEpoch();
}

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
    ZTestFolder m_folder;

private Q_SLOTS:
    void conversions_data() { Cases::rows("columns"); }

    /** A cell of another type, or none at all, is not the field's default: it is the conversion's.
     */
    void conversions()
    {
        QFETCH(QJsonValue, row);
        QFETCH(QJsonValue, record);
        const TableDeclaration& table = Samples::declaration();
        const QString columns =
            u"unread texts textFlag textInteger integerText truncated number flag "
            "integer text"_s;
        QVERIFY(
            table.load(ZTestFolder::write(u"table"_s, tableBytes(columns, {row, QJsonValue()}))));
        QCOMPARE(textOf(table.records()), textOf(QJsonArray {record}));
    }

    /** A column that is not there leaves the field's default, and the rule for its cells unused. */
    void missingColumns()
    {
        const TableDeclaration& table = Samples::declaration();
        QVERIFY(table.load(tableOf(u"unread text"_s, "[[1, 'a'], [1, 'out']]")));
        QCOMPARE(table.recordCount(), 2);
        QCOMPARE(Samples::getInstance().list.first().integer, 7);
        QVERIFY(table.load(tableOf(u"unread text flag"_s, "[[1, 'out'], [1, 'in']]")));
        QCOMPARE(table.recordCount(), 1);
        QCOMPARE(Samples::getInstance().list.first().text, u"in"_s);
    }

    void schema_data() { Cases::rows("columns"); }

    /** What a column says of its cells, for whoever checks a table before clients do. */
    void schema()
    {
        QFETCH(QString, column);
        QFETCH(QJsonValue, fitting);
        QFETCH(QJsonValue, unfitting);
        const TableSchema& schema = Samples::declaration().schema();
        const auto found =
            std::find_if(schema.columns.begin(), schema.columns.end(),
                         [&](const ColumnSchema& one) { return one.name == column; });
        QVERIFY(found != schema.columns.end());
        for (const QJsonValue& cell : fitting.toArray())
            QVERIFY2(found->fits(cell), qPrintable(cell.toVariant().toString()));
        for (const QJsonValue& cell : unfitting.toArray())
            QVERIFY2(!found->fits(cell), qPrintable(cell.toVariant().toString()));
        QCOMPARE(found->referredTable, column == u"integer"_s ? u"Doutu"_s : QString());
        QCOMPARE(found->files.value(0).address, column == u"texts"_s ? u"/a/"_s : QString());
        QCOMPARE(found->remark, column == u"flag"_s ? u"only with it"_s : QString());
        QCOMPARE(schema.key, u"text"_s);
    }

    void datesAreThoseOfQt()
    {
        for (const char* zone : {"UTC", "Asia/Shanghai", "America/Sao_Paulo"}) {
            const Zone guard(zone);
            std::mt19937 random(20261121);
            int parsed = 0;
            QStringList differing {QString::fromLatin1(zone)};
            for (int i = 0; i < 20000; ++i) {
                const QString text = randomDate(random);
                const QDateTime date = QDateTime::fromString(text, dateFormat);
                parsed += date.isValid() ? 1 : 0;
                if (Cells::secondsOfDate(text) != secondsOf(date))
                    differing.append(text);
            }
            QVERIFY2(differing.size() == 1, qPrintable(differing.join(u' ')));
            QVERIFY2(parsed > 2000, qPrintable(QString::number(parsed)));
        }
    }

    void textIntegers()
    {
        for (const QString& text :
             {u""_s, u"007"_s, u"+7"_s, u" 7"_s, u"1 "_s, u"1,000"_s, u"7x"_s, u"\uFF17"_s,
              u"999999999"_s, u"1000000000"_s, u"2147483648"_s, u"-2147483648"_s})
            QCOMPARE(Cells::TextAsInteger::read(text), text.toInt());
    }

    void clockChanges()
    {
        const Zone newYork("America/New_York");
        for (const QString& text : {u"2026-03-08 01:59:59"_s, u"2026-03-08 02:30:00"_s,
                                    u"2026-03-08 03:00:00"_s, u"1883-11-18 12:01:00"_s})
            QCOMPARE(Cells::secondsOfDate(text),
                     secondsOf(QDateTime::fromString(text, dateFormat)));
        const Zone utc("UTC");
        QCOMPARE(Cells::secondsOfDate(u"2026-11-21 00:00:01"_s), Q_INT64_C(1795219201));
        for (const QString& none : {u"2026-02-29 00:00:00"_s, QString()}) {
            QCOMPARE(Cells::secondsOfDate(none), QDateTime().toSecsSinceEpoch());
            QVERIFY(!Cells::isDate(none));
        }
        const Zone shanghai("Asia/Shanghai"); // what no date comes to follows the zone as well
        QCOMPARE(Cells::secondsOfDate(QString()), QDateTime().toSecsSinceEpoch());
    }
};

QTEST_GUILESS_MAIN(tst_columns)

#include "tst_columns.moc"
