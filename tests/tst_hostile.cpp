#include "client/ZGlobalClient.h"
#include "command/DiffText.h"
#include "console/Terminal.h"
#include "diff/ContentDiff.h"
#include "diff/DiffJson.h"
#include "diff/DiffPage.h"
#include "lint/Lint.h"
#include "publish/TableText.h"
#include "support/Literals.h"
#include "support/Tables.h"
#include "why/RawTable.h"
#include "why/Why.h"

#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

/** What cells may hold that nobody wants in one, as JSON. */
QJsonArray hostileCells()
{
    const QByteArray deep = QByteArray(400, '[') + QByteArray(400, ']');
    const QByteArray periods = R"("{\"periodConfigs\": )" + QByteArray(3000, '[') + '"';
    return QJsonDocument::fromJson(
               R"([1e308, -2147483649, 9223372036854775808, 0.5, -0.0, null, true, false, [], {},
                   ["a", ["b"]], {"a": {"b": 1}}, "", " ", "NaN", "-inf", "0x10", "1e999", "\ud800",
                   "\udc00x", "a\u0000b", "\u202e\u2066x", "\u001b[31m\u009b", "\uffff\ufffe", "\\",
                   "</td><script>alert(1)</script>", "\" onerror='x' x=\"", "&lt;&amp;", "]]>",
                   "../../../etc/passwd", "/%00%2e%2e", "http://[::1", "9999-99-99 99:99:99",
                   "0000-00-00 00:00:00", "99999999999999999999", "((((a+)+)+)+)+$", "*", "[", "(?",
                   ")"
               + QByteArray(20000, 'x') + "\", " + periods + ", " + deep + "]")
        .array();
}

QByteArray published(const QString& table)
{
    return ZTestFolder::read(QStringLiteral(ZGLOBAL_CONTENT "/app/resources/") + table);
}

/** The table with one hostile cell or more in each row, and hostile things in place of rows. */
QByteArray hostile(const QString& name, const QJsonArray& cells)
{
    const Table table(name, published(name));
    QVector<QJsonArray> rows;
    int next = 0;
    while (next < 3 * cells.size()) {
        QJsonArray row = table.rows().at(next % table.rows().size()).cells;
        for (int column = rows.size() % 2; column < row.size(); column += 2)
            row.replace(column, cells.at(next++ % cells.size()));
        rows.append(row);
    }
    const QByteArray bytes = TableText::file(TableText::columnsOf(table), rows);
    return QByteArray(bytes).replace("\"rows\": [\n",
                                     "\"rows\": [\n7, {}, \"\\ud800\", null, [],\n");
}

Content contentOf(const QString& table, const QByteArray& bytes)
{
    Content content;
    content.tables.insert(table, bytes);
    return content;
}

/** The page as XML, whose faults are those of its HTML: elements that end by themselves do so. */
QString markup(const QByteArray& html)
{
    static const QRegularExpression empty(u"<(meta|img|br)([^<>]*)>"_s);
    QString text = QString::fromUtf8(html.constData(), html.size()).replace(empty, u"<\\1\\2/>"_s);
    text.remove(QChar(0xFFFE)).remove(QChar(0xFFFF)); // which XML knows no more than controls
    return text.remove(u"<!DOCTYPE html>"_s);
}

} // namespace

/** Cells that nobody wants, in every table: each part of the program has its answer, and ends. */
class tst_hostile : public QObject
{
    Q_OBJECT

    static void tables()
    {
        QTest::addColumn<QString>("table");
        for (const QString& table : Content::tableNames())
            QTest::newRow(qPrintable(table)) << table;
    }

    ZTestFolder m_folder;
    ZGlobalClient m_client;
    const QJsonArray m_cells = hostileCells();

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_cells.size() > 40);
        QVERIFY(
            m_client.open(u"client"_s, ZGlobalClient::configurationFor(u"http://127.0.0.1:9"_s)));
    }

    void lint_data() { tables(); }

    /** Each cell that no client can read as it is meant is found, in its row and column. */
    void lint()
    {
        QFETCH(QString, table);
        const QByteArray bytes = hostile(table, m_cells);
        const Table read(table, bytes);
        QCOMPARE(read.error(), QString());
        QMap<QPair<int, QString>, QString> found;
        for (const Finding& finding : Lint().findings(contentOf(table, bytes))) {
            QVERIFY(finding.place.table == table && !finding.message.isEmpty());
            QVERIFY(finding.place.row <= read.elements().size());
            QVERIFY2(finding.message.size() < 1000, qPrintable(finding.message.left(200)));
            found.insert({finding.place.row, finding.place.column}, finding.rule);
        }
        if (read.reader() == nullptr)
            return;
        for (const Row& row : read.rows()) {
            for (const ColumnSchema& column : read.columns()) {
                const QJsonValue cell = read.cell(row, column.name);
                if (column.fits == nullptr || cell.isUndefined() || column.fits(cell)
                    || cell == QJsonValue(QString()) // some periods are open
                    || !row.leftOutFor.isEmpty() || !read.counts(row, column))
                    continue;
                QVERIFY2(
                    found.contains({row.number, column.name}),
                    qPrintable(
                        u"%1 %2 %3"_s.arg(row.number).arg(column.name, textOf(cell).left(99))));
            }
        }
        for (const int row : {1, 2, 3})
            QVERIFY(found.contains({row, QString()}));
    }

    void why_data() { tables(); }

    /** The client loads it, and there is a word about every row and every id. */
    void why()
    {
        QFETCH(QString, table);
        const TableStatus status = Why::statusOf(table);
        ZTestFolder::write(ZGlobalClient::tableFile(status), hostile(table, m_cells));
        if (status.kind >= 0)
            ZDataTableMgr::getInstance()->loadTable(
                static_cast<EDataTable::EDataTableType>(status.kind));
        else
            ZDataTableMgr::getInstance()->loadUnversionedTable(table,
                                                               ZGlobalClient::tableFile(status));
        const Why::RawTable raw(Why::statusOf(table));
        QCOMPARE(raw.fault(), QString());
        QCOMPARE(raw.rows().size(), raw.table().elements().size());
        QCOMPARE(Why::table(table, {}).explanations.size(), 1);
        for (const Why::RawRow& row : raw.rows())
            QVERIFY(!row.words.isEmpty());
    }

    /** Once all of it is loaded. */
    void whyOfAnything()
    {
        const QDateTime moment(QDate(2026, 5, 20), QTime(20, 0));
        for (const QJsonValue& cell : m_cells) {
            const QString text = cell.toString().left(100);
            for (const Why::Reply& reply :
                 {Why::gift(text, moment, {}), Why::banner(text, {}), Why::frame(text, moment, {})})
                QVERIFY(!reply.fault.isEmpty() || !reply.candidates.isEmpty()
                        || !reply.explanations.isEmpty());
            QVERIFY(!Why::masked(text).verdict.isEmpty());
            QVERIFY(!Why::page(text).verdict.isEmpty());
        }
    }

    void page_data() { tables(); }

    /** Nothing of a table becomes a part of the page, and what it says stands there as text. */
    void page()
    {
        QFETCH(QString, table);
        const QString title = u"<b>\"'&"_s;
        const auto changes = ContentDiff::between(contentOf(table, published(table)),
                                                  contentOf(table, hostile(table, m_cells)));
        const auto none = [&title](const QString&) { return title.toUtf8(); };
        QXmlStreamReader xml(markup(DiffPage({title, none}, {title, none}).html(changes)));
        QSet<QString> names;
        QString text;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement()) {
                names.insert(xml.name().toString());
                for (const QXmlStreamAttribute& attribute : xml.attributes())
                    QVERIFY2(!attribute.name().startsWith(QLatin1String("on")),
                             qPrintable(attribute.name().toString()));
            }
            if (xml.isCharacters())
                text += xml.text();
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        for (const char* name : {"script", "b", "iframe", "link"})
            QVERIFY2(!names.contains(QLatin1String(name)), name);
        QVERIFY(text.contains(u"from "_s + title));
        QVERIFY(text.contains(u"</td><script>alert(1)</script>"_s));
        QVERIFY(text.contains(u"\" onerror='x' x=\""_s) && text.contains(u"&lt;&amp;"_s));
    }

    void changes_data() { tables(); }

    /** As JSON and as text the same is said, and no line of it is more than a line. */
    void changes()
    {
        QFETCH(QString, table);
        const QByteArray bytes = hostile(table, m_cells);
        const auto changes =
            ContentDiff::between(contentOf(table, published(table)), contentOf(table, bytes));
        const QJsonDocument written(DiffJson::of(changes));
        const QJsonDocument read = QJsonDocument::fromJson(written.toJson());
        QCOMPARE(read.toJson(), written.toJson());
        const QJsonArray records = read[0][u"records"_s].toArray();
        QVERIFY(records.size() > 0);
        QStringList signs;
        int fields = 0;
        for (const QJsonValue& record : records) {
            const QString change = record[u"change"_s].toString();
            signs.append(change == u"added"_s ? u"+"_s : change == u"removed"_s ? u"-"_s : u"~"_s);
            fields += change == u"changed"_s ? record[u"fields"_s].toArray().size() : 0;
        }
        QStringList told;
        int toldFields = 0;
        const QStringList lines = DiffText::lines(changes);
        for (const QString& line : lines) {
            QCOMPARE(Terminal::legible(line), line);
            if (line.startsWith(u"      "_s))
                toldFields += told.constLast() == u"~"_s ? 1 : 0;
            else if (line.startsWith(u"  "_s))
                told.append(line.mid(2, 1));
        }
        for (int i = told.size() - changes.first().remarks.size(); i < told.size(); ++i)
            signs.append(u"~"_s);
        QCOMPARE(told, signs);
        QCOMPARE(toldFields, fields);
    }

    /** No table, however it is none, and no folder, whatever it holds. */
    void brokenFiles()
    {
        const QVector<QByteArray> all {"",
                                       "{",
                                       "null",
                                       QByteArray(100000, '['),
                                       "{\"columns\": {}, \"rows\": []}",
                                       "{\"columns\": [1], \"rows\": []}",
                                       "{\"columns\": [\"a\"], \"rows\": [1e999]}",
                                       "{\"columns\": [\"a\", \"a\"], \"rows\": 7}",
                                       QByteArray("\0\0\0", 3),
                                       "\xef\xbb\xbf{}",
                                       "{\"columns\": [\"\xff\"], \"rows\": [[\"\xff\"]]}"};
        for (const QByteArray& bytes : all) {
            Content content = contentOf(u"StampName"_s, bytes);
            content.versions = bytes;
            int errors = 0;
            for (const Finding& finding : Lint().findings(content))
                errors +=
                    finding.place.table == u"StampName"_s && finding.severity == Severity::Error
                    ? 1
                    : 0;
            QVERIFY2(errors > 0, bytes.left(100));
            const Content good = contentOf(u"StampName"_s, published(u"StampName"_s));
            for (const auto& changes :
                 {ContentDiff::between(content, good), ContentDiff::between(good, content)})
                QVERIFY2(ContentDiff::summary(changes).contains(u"versions.json not compared"_s),
                         qPrintable(ContentDiff::summary(changes)));
        }
    }
};

QTEST_GUILESS_MAIN(tst_hostile)

#include "tst_hostile.moc"
