#include "command/DiffText.h"

#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "diff/CellText.h"
#include "diff/DiffJson.h"
#include "diff/TextChange.h"

#include <algorithm>

namespace {

constexpr int step = 2;        // of the indentation
constexpr int longText = 24;   // columns from which on only what differs is shown
constexpr int context = 16;    // characters beside it
constexpr int mostRecords = 3; // named behind a file

struct Piece
{
    QString text;
    Terminal::Style style = Terminal::Plain;
};
using Pieces = QVector<Piece>;

/** Styles go in after the lines are broken, since they take no room. */
QString styled(const QString& line, const Pieces& pieces, int& piece, int& place)
{
    QString result;
    QString run;
    const auto flush = [&] {
        if (!run.isEmpty())
            result += Terminal::styled(pieces.at(piece).style, run);
        run.clear();
    };
    for (const QChar character : line) {
        // Where a line was broken a space is gone.
        while (place >= pieces.at(piece).text.size()
               || pieces.at(piece).text.at(place) != character) {
            if (++place < pieces.at(piece).text.size())
                continue;
            flush();
            ++piece;
            place = 0;
        }
        run += character;
        ++place;
    }
    flush();
    return result;
}

void add(QStringList& lines, int indent, Pieces pieces)
{
    QString text;
    for (Piece& piece : pieces) {
        piece.text = Terminal::legible(piece.text);
        text += piece.text;
    }
    const int width = Terminal::width() > 0 ? std::max(step, Terminal::width() - indent - step) : 0;
    int piece = 0;
    int place = 0;
    int further = 0;
    for (const QString& line : Terminal::wrapped(text, width)) {
        lines.append(QString(indent + further, QLatin1Char(' '))
                     + styled(line, pieces, piece, place));
        further = step;
    }
}

Terminal::Style styleOf(Change kind)
{
    switch (kind) {
    case Change::Added:
        return Terminal::Good;
    case Change::Removed:
        return Terminal::Bad;
    case Change::None:
    case Change::Changed:
        break;
    }
    return Terminal::Plain;
}

QString sign(Change kind)
{
    switch (kind) {
    case Change::Added:
        return u"+ "_s;
    case Change::Removed:
        return u"- "_s;
    case Change::None:
    case Change::Changed:
        break;
    }
    return u"~ "_s;
}

QString shown(const QJsonValue& cell)
{
    return cell.isUndefined() ? u"none"_s : CellText::of(cell);
}

Pieces remark(const QString& text)
{
    return text.isEmpty() ? Pieces() : Pieces {{u" (%1)"_s.arg(text), Terminal::Faint}};
}

/** Only where texts are long and have something in common; empty otherwise. */
Pieces textChange(const QJsonValue& before, const QJsonValue& after)
{
    if (!before.isString() || !after.isString())
        return {};
    const QString old = CellText::of(before);
    const QString now = CellText::of(after);
    if (std::max(Terminal::columns(old), Terminal::columns(now)) < longText)
        return {};
    const auto quoted = [](const QString& text) { return text.mid(1, text.size() - 2); };
    const auto stretches =
        TextChange::shortened(TextChange::between(quoted(old), quoted(now)), context);
    const bool isAny = std::any_of(stretches.begin(), stretches.end(), [](const Stretch& stretch) {
        return stretch.kind == Change::None;
    });
    Pieces pieces {{u"\""_s}};
    for (const Stretch& stretch : stretches) {
        if (stretch.kind == Change::None)
            pieces.append({stretch.text});
        else if (stretch.kind == Change::Removed)
            pieces.append({u"[-%1-]"_s.arg(stretch.text), Terminal::Bad});
        else
            pieces.append({u"{+%1+}"_s.arg(stretch.text), Terminal::Good});
    }
    pieces.append({u"\""_s});
    return isAny ? pieces : Pieces();
}

void addChanged(QStringList& lines, const RecordChange& record)
{
    for (const FieldChange& field : record.fields) {
        Pieces pieces = textChange(field.before, field.after);
        if (pieces.isEmpty())
            pieces = {{shown(field.before), Terminal::Bad},
                      {u" -> "_s},
                      {shown(field.after), Terminal::Good}};
        add(lines, 3 * step, Pieces {{field.column + u": "_s}} + pieces + remark(field.remark));
    }
}

/** The cells that say something, one behind the other. */
void addCells(QStringList& lines, const RecordChange& record)
{
    Pieces pieces;
    for (const FieldChange& field : record.fields) {
        if (!CellText::isEmpty(field.after))
            pieces += Pieces {{(pieces.isEmpty() ? QString() : u", "_s) + field.column + u": "_s
                               + shown(field.after)}}
                + remark(field.remark);
    }
    if (!pieces.isEmpty())
        add(lines, 3 * step, pieces);
}

void addRecord(QStringList& lines, const RecordChange& record, bool isWholeTable)
{
    const QString leftOut = record.leftOutFor.isEmpty()
        ? QString()
        : u"clients leave it out for %1"_s.arg(record.leftOutFor);
    add(lines, step,
        Pieces {{sign(record.kind) + record.label(), styleOf(record.kind)}} + remark(leftOut));
    if (record.kind == Change::Changed)
        addChanged(lines, record);
    else if (record.kind == Change::Added && !isWholeTable)
        addCells(lines, record);
}

void addFile(QStringList& lines, const FileChange& file)
{
    QString size = Readable::size(file.kind == Change::Removed ? file.sizeBefore : file.sizeAfter);
    if (file.kind == Change::Changed)
        size = u"%1 -> %2 bytes"_s.arg(file.sizeBefore).arg(file.sizeAfter);
    QString users = QStringList(file.records.mid(0, mostRecords)).join(u", "_s);
    if (file.records.size() > mostRecords)
        users += u" and %1 more"_s.arg(file.records.size() - mostRecords);
    add(lines, step,
        Pieces {{sign(file.kind) + file.path, styleOf(file.kind)}, {u", "_s + size}}
            + remark(users));
}

Pieces versions(const TableChange& change)
{
    if (change.versionBefore == change.versionAfter)
        return change.versionAfter.isUndefined()
            ? Pieces()
            : Pieces {{u"  version "_s + shown(change.versionAfter), Terminal::Faint}};
    return {{u"  version %1 -> %2"_s.arg(shown(change.versionBefore), shown(change.versionAfter))}};
}

void addTable(QStringList& lines, const TableChange& change)
{
    const QString name = change.table.isEmpty() ? u"files that no table names"_s : change.table;
    const bool isWhole = change.kind == Change::Added || change.kind == Change::Removed;
    Pieces title {{name, Terminal::Bold}};
    if (isWhole)
        title.append({u" (%1)"_s.arg(DiffJson::word(change.kind)), styleOf(change.kind)});
    add(lines, 0, title + versions(change));
    if (change.hasError())
        add(lines, step, {{u"not compared"_s, Terminal::Bad}});
    for (const QString& column : change.columnsAdded)
        add(lines, step, {{u"+ column "_s + column, Terminal::Good}});
    for (const QString& column : change.columnsRemoved)
        add(lines, step, {{u"- column "_s + column, Terminal::Bad}});
    for (const RecordChange& record : change.records)
        addRecord(lines, record, isWhole);
    for (const QString& text : change.remarks)
        add(lines, step, {{sign(Change::Changed) + text}});
    for (const FileChange& file : change.files)
        addFile(lines, file);
}

} // namespace

QStringList DiffText::lines(const QVector<TableChange>& changes)
{
    QStringList lines;
    for (const TableChange& change : changes) {
        if (change.isDifferent())
            addTable(lines, change);
    }
    return lines;
}
