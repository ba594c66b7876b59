#include "content/Content.h"
#include "diff/ContentDiff.h"
#include "diff/TextChange.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "testing/ZTestFolder.h"

#include <QJsonDocument>
#include <QtTest>

namespace {

const QVector<QString> signs {u"="_s, u"+"_s, u"-"_s, u"~"_s}; // by Change

QString sign(Change kind)
{
    return signs.at(static_cast<int>(kind));
}

QString shown(const QJsonValue& value)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray {value}).toJson(QJsonDocument::Compact));
}

/** What a record's change says, but for the cells of one that came or went. */
QString shown(const RecordChange& record)
{
    QStringList parts {u"%1 %2 %3>%4"_s.arg(sign(record.kind), record.label())
                           .arg(record.rowBefore)
                           .arg(record.rowAfter)};
    for (const FieldChange& field : record.fields) {
        if (record.kind == Change::Changed)
            parts.append(u"%1 %2%3%4"_s.arg(field.column, shown(field.before), shown(field.after),
                                            field.remark));
    }
    return parts.join(u"; "_s);
}

QStringList shown(const TableChange& change)
{
    QStringList lines {u"%1%2 %3%4"_s.arg(sign(change.kind), change.table,
                                          shown(change.versionBefore), shown(change.versionAfter))};
    lines += change.errorBefore + change.errorAfter;
    lines.removeAll(QString());
    for (const QString& column : change.columnsAdded)
        lines.append(u"+"_s + column);
    for (const QString& column : change.columnsRemoved)
        lines.append(u"-"_s + column);
    for (const RecordChange& record : change.records)
        lines.append(shown(record));
    lines += change.remarks;
    for (const FileChange& file : change.files)
        lines.append(u"%1 %2 %3>%4 %5"_s.arg(sign(file.kind), file.path)
                         .arg(file.sizeBefore)
                         .arg(file.sizeAfter)
                         .arg(file.records.value(0)));
    return lines;
}

} // namespace

/** What is told of one edit in a copy of the example content, and of small tables and texts. */
class tst_diff : public QObject
{
    Q_OBJECT

    static Content content(const QString& folder)
    {
        Content content;
        const QString fault = content.read(folder);
        return fault.isEmpty() ? content : Content();
    }

    ZTestFolder m_folder;
    Content m_published;

private Q_SLOTS:
    void initTestCase()
    {
        const QString source = QStringLiteral(ZGLOBAL_CONTENT "/");
        for (const QString& file : ZTestFolder::files(source))
            ZTestFolder::write(file, ZTestFolder::read(source + file));
        m_published = content(source);
        const auto same = ContentDiff::between(m_published, content(u"."_s));
        QCOMPARE(same.size(), Content::tableNames().size());
        QCOMPARE(ContentDiff::summary(same), u"no difference"_s);
    }

    void edits_data() { Cases::rows("diff"); }
    void edits()
    {
        QFETCH(QString, file);
        QFETCH(QString, find);
        QFETCH(QJsonValue, with);
        QFETCH(QJsonValue, expected);
        const QByteArray before = ZTestFolder::read(file);
        const QByteArray after = find.isEmpty()
            ? with.toString().toUtf8()
            : QByteArray(before).replace(find.toUtf8(), with.toString().toUtf8());
        QVERIFY(after != before);
        if (with.isNull())
            QFile::remove(file);
        else
            ZTestFolder::write(file, after);
        const auto changes = ContentDiff::between(m_published, content(u"."_s));
        if (before.isEmpty())
            QFile::remove(file);
        else
            ZTestFolder::write(file, before);
        QStringList lines;
        for (const TableChange& change : changes)
            lines += change.isDifferent() ? shown(change) : QStringList();
        QCOMPARE((lines << ContentDiff::summary(changes)).join(u"\n"_s),
                 expected.toVariant().toStringList().join(u"\n"_s));
    }

    void rows_data() { Cases::rows("diff"); }
    void rows()
    {
        QFETCH(QString, table);
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(QJsonValue, expected);
        Content old;
        Content now;
        old.tables.insert(table, before.toUtf8());
        now.tables.insert(table, after.toUtf8());
        QCOMPARE(shown(ContentDiff::between(old, now).constFirst()).mid(1).join(u"\n"_s),
                 expected.toVariant().toStringList().join(u"\n"_s));
    }

    void texts_data() { Cases::rows("diff"); }
    void texts()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        QString text;
        QString old;
        QString now;
        const auto stretches = TextChange::between(before, after);
        for (const Stretch& stretch : stretches) {
            old += stretch.kind == Change::Added ? QString() : stretch.text;
            now += stretch.kind == Change::Removed ? QString() : stretch.text;
        }
        QCOMPARE(old, before);
        QCOMPARE(now, after);
        for (const Stretch& stretch : TextChange::shortened(stretches, 4))
            text += stretch.kind == Change::None
                ? stretch.text
                : u"[%1%2]"_s.arg(sign(stretch.kind), stretch.text);
        QTEST(text, "expected");
    }
};

QTEST_GUILESS_MAIN(tst_diff)

#include "tst_diff.moc"
