#include "content/Table.h"
#include "diff/ContentDiff.h"
#include "publish/Csv.h"
#include "publish/Source.h"
#include "publish/TableText.h"
#include "support/Cases.h"
#include "support/FolderTest.h"
#include "support/Releases.h"

#include <QRandomGenerator>
#include <QTextCodec>
#include <QtTest>

namespace {

/** How a program saves a sheet. */
struct Form
{
    const char* encoding;
    QByteArray mark;
    QString separatorLine;
    QChar separator;
    QString lineEnd;
};

QVector<Form> forms()
{
    const QVector<QPair<const char*, QByteArray>> encodings {
        {"UTF-8", {}},    {"UTF-8", "\xef\xbb\xbf"}, {"UTF-16LE", {}}, {"UTF-16LE", "\xff\xfe"},
        {"UTF-16BE", {}}, {"UTF-16BE", "\xfe\xff"},  {"GB18030", {}}};
    const QVector<QPair<QString, QChar>> separators {
        {{}, u','}, {{}, u';'}, {{}, u'\t'}, {u"sep=|"_s, u'|'}};
    QVector<Form> forms;
    for (const auto& encoding : encodings) {
        for (const auto& separator : separators) {
            for (const QString& lineEnd : {u"\n"_s, u"\r\n"_s, u"\r"_s})
                forms.append({encoding.first, encoding.second,
                              separator.first.isEmpty() ? QString() : separator.first + lineEnd,
                              separator.second, lineEnd});
        }
    }
    return forms;
}

QByteArray saved(const Table& table, const Form& form)
{
    QString text = Csv::written(TableText::sheet(table), form.separator).mid(1);
    text = form.separatorLine + text.replace(u'\n', form.lineEnd);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return form.mark
        + QTextCodec::codecForName(form.encoding)
              ->fromUnicode(text.constData(), text.size(), &state);
}

/** A table's rows by their columns, to be edited. */
struct Sheet
{
    QStringList columns;
    QVector<QJsonArray> rows;

    QByteArray bytes() const { return TableText::file(columns, rows); }
};

QJsonValue edited(const QJsonValue& cell, QRandomGenerator& random)
{
    const int number = random.bounded(1000000) + 1;
    if (cell.isDouble())
        return cell.toDouble() + number;
    return cell.isBool() ? QJsonValue(!cell.toBool())
                         : QJsonValue(cell.toString() + u"改<%1>"_s.arg(number));
}

/** Makes of the old rows the new ones by what is told of them, where their order is the same. */
QVector<QJsonArray> carriedOut(const TableChange& change, const Sheet& before, int size)
{
    QVector<QJsonArray> after(size);
    QVector<QJsonArray> kept = before.rows;
    for (const RecordChange& record : change.records) {
        QJsonArray row;
        if (record.rowBefore > 0)
            row = before.rows.at(record.rowBefore - 1);
        while (row.size() < before.columns.size())
            row.append(QJsonValue::Null);
        for (const FieldChange& field : record.fields)
            row.replace(static_cast<int>(before.columns.indexOf(field.column)), field.after);
        if (record.rowBefore > 0)
            kept[record.rowBefore - 1] = {QJsonValue::Undefined};
        if (record.rowAfter > 0)
            after[record.rowAfter - 1] = row;
    }
    kept.removeAll({QJsonValue::Undefined});
    for (QJsonArray& row : after) {
        if (row.isEmpty() && !kept.isEmpty())
            row = kept.takeFirst();
    }
    return after;
}

} // namespace

/** What stands in a sheet arrives, whatever saved it, and what was edited in it is told. */
class tst_sheets : public FolderTest
{
    Q_OBJECT

    static Content published()
    {
        Content content;
        return content.read(QStringLiteral(ZGLOBAL_EXAMPLES "/content")).isEmpty() ? content
                                                                                   : Content();
    }

    void checkForm(const Form& form, const QString& name, const QByteArray& bytes) const
    {
        QByteArray wanted = bytes; // line ends in cells are the program's own, too
        wanted.replace(
            "\\n", QByteArray(form.lineEnd.toLatin1()).replace('\r', "\\r").replace('\n', "\\n"));
        Source source;
        QCOMPARE(source.read(ZTestFolder::write(name + u".csv"_s, saved(Table(name, bytes), form)),
                             m_published, {}),
                 QString());
        QVERIFY2(source.faults.isEmpty(), qPrintable(source.faults.value(0).message));
        QVERIFY2(TableText::areSame(name, source.tables.value(name), wanted),
                 source.tables.value(name) + form.encoding);
        const bool isAscii = QString::fromUtf8(bytes).toLatin1() == bytes;
        if (!isAscii) // else it is UTF-8 as well
            QCOMPARE(source.notes.filter(QString::fromLatin1(form.encoding)).size(),
                     QByteArray(form.encoding) == "UTF-8" ? 0 : 1);
    }

    Content m_published = published();

private Q_SLOTS:
    /** Every table in one form or another, and one with everything in each. */
    void forms()
    {
        const QByteArray everything = TableText::file(
            {u"id"_s, u"randomId"_s, u"zh_cn"_s, u"handleType"_s, u"opt"_s, u"jumpUrl"_s},
            {{101, u"007 “a”"_s, u"一\n二\"三\",;\t|=1+1"_s, 0, u" "_s, u"-"_s},
             {102, u"@x"_s, u"#FF0000 1E5"_s, 1, u"+86"_s, u"2026/1/5"_s}});
        const QStringList names = m_published.tables.keys();
        int next = 0;
        for (const Form& form : ::forms()) {
            const QString name = names.at(next++ % names.size());
            checkForm(form, u"Message"_s, everything);
            checkForm(form, name, m_published.tables.value(name));
        }
    }

    void refused_data() { Cases::rows("sheets"); }

    /** On top of a small tree, by rule, row of the sheet and column. */
    void refused()
    {
        QFETCH(QString, table);
        QFETCH(QString, sheet);
        PublishedTree tree(u"www"_s);
        ZTestFolder::write(u"www/app/versions.json"_s, R"({"versions": {"CS_GiftLabel": 4}})");
        ZTestFolder::write(u"www/app/resources/CS_GiftLabel"_s,
                           m_published.tables.value(u"CS_GiftLabel"_s));
        QCOMPARE(tree.open(), QString());
        const QString path = ZTestFolder::write(table + u".csv"_s, Cases::bytes(sheet));
        Plan plan;
        QString told = plan.publish(path, tree, {});
        for (const Finding& finding : plan.findings) {
            if (finding.severity != Severity::Hint)
                told += u"%1 %2 %3: %4\n"_s.arg(finding.rule)
                            .arg(plan.sheetRows.value(table).value(finding.place.row - 1))
                            .arg(finding.place.column, finding.message);
        }
        QTEST(told.trimmed(), "outcome");
    }

    /** Edits at random: what is told of them makes of the old table the new one, and no more of it
     *  is told than was edited. */
    void edits()
    {
        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        for (int round = 0; round < 300; ++round) {
            const QString name =
                m_published.tables.keys().at(random.bounded(m_published.tables.size()));
            const Table table(name, m_published.tables.value(name));
            Sheet before {TableText::columnsOf(table), {}};
            for (const Row& row : table.rows())
                before.rows.append(row.cells);
            Sheet after = before;
            int cells = 0;
            for (int i = random.bounded(4); i >= 0; --i) {
                const int row = random.bounded(after.rows.size());
                switch (random.bounded(3)) {
                case 0: { // not the key: then it would be another record
                    const int column = random.bounded(after.columns.size());
                    if (after.columns.at(column) == table.schema().key
                        || table.schema().key.isEmpty())
                        break;
                    after.rows[row].replace(column, edited(after.rows.at(row).at(column), random));
                    ++cells;
                    break;
                }
                case 1:
                    if (after.rows.size() > 1)
                        after.rows.removeAt(row);
                    break;
                default:
                    QJsonArray fresh = after.rows.at(row);
                    for (int column = 0; column < fresh.size(); ++column)
                        fresh.replace(column, edited(fresh.at(column), random));
                    after.rows.insert(row, fresh);
                }
            }
            Content old;
            Content now;
            old.tables.insert(name, before.bytes());
            now.tables.insert(name, after.bytes());
            const TableChange change = ContentDiff::between(old, now).constFirst();
            const QString what = u"seed %1, round %2, %3: %4"_s.arg(seed).arg(round).arg(
                name, QString::fromUtf8(after.bytes()));
            QVERIFY2(change.remarks.isEmpty() || before.rows == after.rows, qPrintable(what));
            QVERIFY2(carriedOut(change, before, after.rows.size()) == after.rows, qPrintable(what));
            int fields = 0;
            for (const RecordChange& record : change.records)
                fields += record.kind == Change::Changed ? record.fields.size() : 0;
            if (!table.schema().key.isEmpty())
                QVERIFY2(fields <= cells, qPrintable(what));
            QCOMPARE(TableText::areSame(name, before.bytes(), after.bytes()),
                     before.rows == after.rows);
        }
    }
};

QTEST_GUILESS_MAIN(tst_sheets)

#include "tst_sheets.moc"
