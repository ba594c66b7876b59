#include "console/TextTable.h"

#include "console/Terminal.h"

#include <algorithm>

TextTable::TextTable(const QStringList& headings)
{
    for (const QString& heading : headings) {
        m_toRight.append(heading.startsWith(QLatin1Char('>')));
        m_headings.append(m_toRight.last() ? heading.mid(1) : heading);
    }
}

void TextTable::add(const QStringList& cells)
{
    m_rows.append(cells);
}

QStringList TextTable::lines() const
{
    QVector<QStringList> rows = m_rows;
    if (!m_headings.isEmpty())
        rows.prepend(m_headings);
    QVector<int> widths;
    for (const QStringList& row : qAsConst(rows)) {
        widths.resize(std::max(widths.size(), row.size()));
        for (int i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths.at(i), Terminal::columns(row.at(i)));
    }
    QStringList lines;
    for (const QStringList& row : qAsConst(rows)) {
        QString line;
        for (int i = 0; i < row.size(); ++i) {
            const int missing = widths.at(i) - Terminal::columns(row.at(i));
            const QString space(missing, QLatin1Char(' '));
            line += m_toRight.value(i) ? space + row.at(i) : row.at(i) + space;
            line += QLatin1String("  ");
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        lines.append(line);
    }
    return lines;
}

void TextTable::print() const
{
    const QStringList all = lines();
    for (const QString& line : all)
        Terminal::print(line);
}
