#include "diff/DiffPage.h"

#include "diff/CellText.h"
#include "diff/ContentDiff.h"
#include "diff/DiffJson.h"
#include "diff/PageStyle.h"
#include "diff/TextChange.h"

#include <QSet>

#include <algorithm>

namespace {

constexpr int largestPicture = 2'000'000; // bytes; a page with more cannot be sent

/** Pages have no control characters: each is shown by its picture. */
QString escaped(QString text)
{
    for (QChar& character : text) {
        const ushort code = character.unicode();
        if (code < ' ' && code != '\t' && code != '\n')
            character = QChar(0x2400 + code);
        else if (character.category() == QChar::Other_Control && code >= 0x7F)
            character = QChar::ReplacementCharacter;
    }
    return text.toHtmlEscaped();
}

/** An element around what is already HTML. */
QString element(const char* name, const QString& content, const QString& kind = {})
{
    const QString attribute =
        kind.isEmpty() ? QString() : QStringLiteral(" class=\"%1\"").arg(kind);
    return QStringLiteral("<%1%2>%3</%1>").arg(QLatin1String(name), attribute, content);
}

struct Format
{
    const char* beginning;
    int offset;
    const char* type;
};

/** Pictures have no extension, so their first bytes tell; empty for what no browser shows. */
QString pictureType(const QByteArray& bytes)
{
    static const QVector<Format> formats {
        {"\x89PNG", 0, "image/png"}, {"\xFF\xD8\xFF", 0, "image/jpeg"},
        {"GIF8", 0, "image/gif"},    {"WEBPVP8", 8, "image/webp"},
        {"BM", 0, "image/bmp"},      {"<svg", 0, "image/svg+xml"}};
    for (const Format& format : formats) {
        if (bytes.mid(format.offset).startsWith(format.beginning))
            return QLatin1String(format.type);
    }
    return {};
}

QString figure(const QString& path, const QByteArray& bytes, const QString& which)
{
    const QString type = pictureType(bytes);
    QString note = QStringLiteral("%1 bytes").arg(bytes.size());
    QString picture;
    if (bytes.isEmpty())
        note = QStringLiteral("not there, or empty");
    else if (!type.isEmpty() && bytes.size() > largestPicture)
        note += QStringLiteral(", too large to be shown here");
    else if (!type.isEmpty())
        picture = QStringLiteral("<img alt=\"\" src=\"data:%1;base64,%2\">")
                      .arg(type, QString::fromLatin1(bytes.toBase64()));
    return element(
        "figure",
        picture
            + element("figcaption", escaped(QStringLiteral("%1: %2, %3").arg(which, path, note))));
}

QString cellText(const QJsonValue& cell)
{
    if (cell.isUndefined())
        return {};
    return cell.isString() ? element("bdi", escaped(cell.toString()), QStringLiteral("text"))
                           : escaped(CellText::of(cell));
}

/** The text of one side, with what the other has not marked. */
QString sideOf(const QVector<Stretch>& stretches, Change side)
{
    QString html;
    for (const Stretch& stretch : stretches) {
        if (stretch.kind == Change::None)
            html += escaped(stretch.text);
        else if (stretch.kind == side)
            html += element(side == Change::Added ? "ins" : "del", escaped(stretch.text));
    }
    return element("bdi", html, QStringLiteral("text"));
}

QString marked(const char* mark, const QJsonValue& cell)
{
    return cell.isUndefined() ? QString() : element(mark, cellText(cell));
}

QString remarkOf(const FieldChange& field)
{
    return field.remark.isEmpty() ? QString() : element("small", escaped(field.remark));
}

QString changedRow(const FieldChange& field)
{
    constexpr int context = 60;
    QString before = marked("del", field.before);
    QString after = marked("ins", field.after);
    if (field.before.isString() && field.after.isString()) {
        const auto stretches = TextChange::shortened(
            TextChange::between(field.before.toString(), field.after.toString()), context);
        before = sideOf(stretches, Change::Removed);
        after = sideOf(stretches, Change::Added);
    }
    return element("tr",
                   element("th", escaped(field.column)) + element("td", before)
                       + element("td", after + remarkOf(field)));
}

/** The cells of a record that came or went, folded up: there are many, and they say little. */
QString cellsOf(const RecordChange& record)
{
    QString rows;
    for (const FieldChange& field : record.fields) {
        const QJsonValue& cell = record.kind == Change::Removed ? field.before : field.after;
        if (!CellText::isEmpty(cell))
            rows += element("tr",
                            element("th", escaped(field.column))
                                + element("td", cellText(cell) + remarkOf(field)));
    }
    return element("details",
                   element("summary", QStringLiteral("its cells"))
                       + element("table", rows, QStringLiteral("cells")));
}

QString fieldsOf(const RecordChange& record)
{
    if (record.kind != Change::Changed)
        return cellsOf(record);
    QString rows;
    for (const FieldChange& field : record.fields)
        rows += changedRow(field);
    return element("table", rows);
}

/** Files that both name, then those that one names, beside each other. */
QVector<QPair<QString, QString>> pairsOf(const RecordChange& record)
{
    QVector<QPair<QString, QString>> pairs;
    QStringList before = record.filesBefore;
    QStringList after = record.filesAfter;
    for (const QString& path : record.filesBefore) {
        if (after.removeOne(path)) {
            before.removeOne(path);
            pairs.append({path, path});
        }
    }
    for (int i = 0; i < std::max(before.size(), after.size()); ++i)
        pairs.append({before.value(i), after.value(i)});
    return pairs;
}

template <class Take>
QStringList pathsIn(const QVector<TableChange>& changes, Take take)
{
    QStringList paths;
    for (const TableChange& change : changes) {
        for (const RecordChange& record : change.records)
            paths += take(record);
    }
    paths.removeDuplicates();
    return paths;
}

QString versionsOf(const TableChange& change)
{
    const QString before = CellText::of(change.versionBefore);
    const QString after = CellText::of(change.versionAfter);
    if (before == after)
        return before.isEmpty() ? before : QStringLiteral("version ") + before;
    return QStringLiteral("version %1 \u2192 %2")
        .arg(before.isEmpty() ? QStringLiteral("none") : before,
             after.isEmpty() ? QStringLiteral("none") : after);
}

QString idOf(const TableChange& change)
{
    return change.table.isEmpty() ? QStringLiteral("files") : change.table;
}

QString titleOf(const TableChange& change)
{
    return change.table.isEmpty() ? QStringLiteral("Files that no table names") : change.table;
}

QString contents(const QVector<TableChange>& changes)
{
    QString items;
    for (const TableChange& change : changes) {
        const QString link = QStringLiteral("<a href=\"#%1\">%2</a> ")
                                 .arg(escaped(idOf(change)), escaped(titleOf(change)));
        items += element(
            "li",
            link + element("span", escaped(ContentDiff::summary(change)), QStringLiteral("faint")));
    }
    return element("nav", element("ul", items));
}

QString errorOf(const DiffPage::Side& side, const QString& error)
{
    return error.isEmpty()
        ? QString()
        : element("p", escaped(side.title + QStringLiteral(": ") + error), QStringLiteral("error"));
}

} // namespace

DiffPage::DiffPage(const Side& before, const Side& after)
    : m_before(before)
    , m_after(after)
{
}

QByteArray DiffPage::html(const QVector<TableChange>& changes) const
{
    QVector<TableChange> different;
    std::copy_if(changes.begin(), changes.end(), std::back_inserter(different),
                 [](const TableChange& change) { return change.isDifferent(); });
    const QString head =
        QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                       "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src "
                       "'none'; style-src 'unsafe-inline'; img-src data:\">"
                       "<title>What changed</title><style>")
        + pageStyle() + QStringLiteral("</style></head>\n<body>");
    QString body = element("h1", QStringLiteral("What changed"))
        + element("p",
                  QStringLiteral("from %1<br>to %2")
                      .arg(element("bdi", escaped(m_before.title)),
                           element("bdi", escaped(m_after.title))))
        + element("p", escaped(ContentDiff::summary(changes)));
    if (different.size() > 1)
        body += contents(different);
    for (const TableChange& change : qAsConst(different))
        body += section(change);
    return (head + body + QStringLiteral("</body></html>\n")).toUtf8();
}

QStringList DiffPage::filesBefore(const QVector<TableChange>& changes)
{
    return pathsIn(changes, [](const RecordChange& record) { return record.filesBefore; });
}

QStringList DiffPage::filesAfter(const QVector<TableChange>& changes)
{
    return pathsIn(changes, [](const RecordChange& record) { return record.filesAfter; });
}

QString DiffPage::section(const TableChange& change) const
{
    QString html =
        QStringLiteral("\n<section><h2 id=\"%1\">%2 <small>%3</small></h2>")
            .arg(escaped(idOf(change)), escaped(titleOf(change)), escaped(versionsOf(change)));
    html += errorOf(m_before, change.errorBefore) + errorOf(m_after, change.errorAfter);
    const auto add = [&html](const QString& text) { html += element("p", escaped(text)); };
    if (change.kind == Change::Added || change.kind == Change::Removed)
        add(QStringLiteral("The table was %1.").arg(DiffJson::word(change.kind)));
    if (!change.columnsAdded.isEmpty())
        add(QStringLiteral("Columns added: ") + change.columnsAdded.join(QStringLiteral(", ")));
    if (!change.columnsRemoved.isEmpty())
        add(QStringLiteral("Columns removed: ") + change.columnsRemoved.join(QStringLiteral(", ")));
    for (const QString& remark : change.remarks)
        add(QStringLiteral("Changed: ") + remark + QLatin1Char('.'));
    for (const RecordChange& one : change.records)
        html += record(one);
    return html + files(change) + QStringLiteral("</section>");
}

QString DiffPage::record(const RecordChange& record) const
{
    QStringList notes;
    if (record.rowBefore > 0 && record.rowAfter > 0 && record.rowBefore != record.rowAfter)
        notes.append(QStringLiteral("row %1, was %2")
                         .arg(QString::number(record.rowAfter), QString::number(record.rowBefore)));
    else if (!record.key.isEmpty() || !record.name.isEmpty())
        notes.append(QStringLiteral("row %1").arg(std::max(record.rowBefore, record.rowAfter)));
    if (!record.leftOutFor.isEmpty())
        notes.append(QStringLiteral("clients leave it out for ") + record.leftOutFor);
    const QString word = DiffJson::word(record.kind);
    const QString title = element("span", word, QStringLiteral("kind")) + QLatin1Char(' ')
        + element("bdi", escaped(record.label())) + QLatin1Char(' ')
        + element("small", escaped(notes.join(QStringLiteral("; "))));
    return element("article", element("h3", title) + pictures(record) + fieldsOf(record), word)
        + QLatin1Char('\n');
}

QString DiffPage::pictures(const RecordChange& record) const
{
    QString html;
    const auto pairs = pairsOf(record);
    for (const auto& pair : pairs)
        html += picturePair(pair.first, pair.second);
    return html;
}

QString DiffPage::files(const TableChange& change) const
{
    const QStringList shown = filesBefore({change}) + filesAfter({change});
    QString html;
    for (const FileChange& file : change.files) {
        if (shown.contains(file.path))
            continue;
        const QString word = DiffJson::word(file.kind);
        QString users = file.records.mid(0, 5).join(QStringLiteral(", "));
        if (file.records.size() > 5)
            users += QStringLiteral(" and %1 more").arg(file.records.size() - 5);
        const QString title = element("span", word, QStringLiteral("kind")) + QLatin1Char(' ')
            + element("bdi", escaped(file.path)) + QLatin1Char(' ')
            + element("small", escaped(users));
        html += element("article",
                        element("h3", title)
                            + picturePair(file.kind == Change::Added ? QString() : file.path,
                                          file.kind == Change::Removed ? QString() : file.path),
                        word)
            + QLatin1Char('\n');
    }
    return html;
}

QString DiffPage::picturePair(const QString& before, const QString& after) const
{
    const auto read = [](const Side& side, const QString& path) {
        return path.isEmpty() || !side.read ? QByteArray() : side.read(path);
    };
    const QByteArray old = read(m_before, before);
    const QByteArray now = read(m_after, after);
    QString html;
    if (before == after && old == now) {
        html = pictureType(now).isEmpty() ? QString()
                                          : figure(after, now, QStringLiteral("unchanged"));
    } else {
        if (!before.isEmpty() && m_before.read)
            html += figure(before, old, QStringLiteral("old"));
        if (!after.isEmpty() && m_after.read)
            html += figure(after, now, QStringLiteral("new"));
    }
    return html.isEmpty() ? html : element("div", html, QStringLiteral("pair"));
}
