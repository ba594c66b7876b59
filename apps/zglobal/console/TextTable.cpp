#include "console/TextTable.h"

#include "console/Terminal.h"

#include <algorithm>

namespace {

constexpr int gap = 2;
constexpr int narrowest = 8;      // that a column is cut to
constexpr int narrowestText = 20; // that goes on below itself

int total(const QVector<int>& widths, const QVector<int>& shown)
{
    int sum = -gap;
    for (const int column : shown)
        sum += widths.at(column) + gap;
    return sum;
}

} // namespace

TextTable::TextTable(const QStringList& headings)
{
    for (const QString& heading : headings) {
        const int optional = heading.startsWith(QLatin1Char('?')) ? 1 : 0;
        const int number = heading.mid(optional).startsWith(QLatin1Char('>')) ? 1 : 0;
        m_columns.append({heading.mid(optional + number), number != 0, optional != 0});
    }
}

TextTable::TextTable(const QVector<Column>& columns)
    : m_columns(columns)
{
}

void TextTable::add(const QStringList& cells)
{
    QStringList row = cells;
    for (QString& cell : row)
        cell = Terminal::legible(cell);
    m_rows.append(row);
}

QVector<int> TextTable::naturalWidths() const
{
    QVector<int> widths;
    for (const Column& column : m_columns)
        widths.append(Terminal::columns(column.heading));
    for (const QStringList& row : m_rows) {
        while (widths.size() < row.size())
            widths.append(0);
        for (int i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths.at(i), Terminal::columns(row.at(i)));
    }
    return widths;
}

QVector<int> TextTable::shown(int width) const
{
    const QVector<int> widths = naturalWidths();
    QVector<int> shown;
    for (int i = 0; i < widths.size(); ++i)
        shown.append(i);
    for (int i = static_cast<int>(widths.size()); width > 0 && i-- > 0;) {
        if (m_columns.value(i).isOptional && total(widths, shown) > width)
            shown.removeAt(i);
    }
    return shown;
}

int TextTable::leftOut(int width) const
{
    return static_cast<int>(naturalWidths().size() - shown(width).size());
}

QVector<int> TextTable::fitted(const QVector<int>& shown, int width) const
{
    QVector<int> widths = naturalWidths();
    int over = width > 0 ? total(widths, shown) - width : 0;
    if (over > 0 && m_columns.isEmpty()) {
        int& last = widths.last();
        last = std::max(last - over, std::min(last, narrowestText));
    }
    for (; over > 0 && !m_columns.isEmpty(); --over) {
        int widest = -1;
        for (const int column : shown) {
            if (!m_columns.value(column).isNumber
                && (widest < 0 || widths.at(column) > widths.at(widest)))
                widest = column;
        }
        if (widest < 0 || widths.at(widest) <= narrowest)
            break;
        --widths[widest];
    }
    return widths;
}

QStringList TextTable::linesOf(const QStringList& row, const QVector<int>& shown,
                               const QVector<int>& widths) const
{
    QStringList lines;
    QString line;
    for (const int i : shown) {
        if (i >= row.size())
            break;
        QString cell = row.at(i);
        if (!m_columns.isEmpty()) {
            cell = Terminal::cut(cell, widths.at(i));
        } else if (i == widths.size() - 1) {
            const QStringList parts = Terminal::wrapped(cell, widths.at(i));
            for (const QString& part : parts.mid(0, parts.size() - 1)) {
                lines.append(line + part);
                line = QString(Terminal::columns(line), QLatin1Char(' '));
            }
            cell = parts.constLast();
        }
        const QString space(widths.at(i) - Terminal::columns(cell), QLatin1Char(' '));
        line += m_columns.value(i).isNumber ? space + cell : cell + space;
        line += QString(gap, QLatin1Char(' '));
    }
    lines.append(line);
    for (QString& text : lines) {
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
    }
    return lines;
}

QStringList TextTable::lines(int width) const
{
    const QVector<int> columns = shown(width);
    const QVector<int> widths = fitted(columns, width);
    QStringList lines;
    if (!m_columns.isEmpty()) {
        QStringList headings;
        for (const Column& column : m_columns)
            headings.append(column.heading);
        lines += linesOf(headings, columns, widths);
    }
    for (const QStringList& row : m_rows)
        lines += linesOf(row, columns, widths);
    return lines;
}

void TextTable::print() const
{
    const QStringList all = lines(Terminal::width());
    for (const QString& line : all)
        Terminal::print(line);
}
