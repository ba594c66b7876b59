#include "publish/Csv.h"

#include <algorithm>

namespace {

bool isLineEnd(QChar character)
{
    return character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

/** Reads a sheet from its begin to its end, once. */
class Reader
{
public:
    explicit Reader(const QString& text)
        : m_text(text)
    {
    }

    QString read(QVector<Csv::Record>& records)
    {
        findSeparator();
        for (int row = 1; m_at < m_text.size(); ++row) {
            Csv::Record record {row, {}};
            const QString fault = readRow(record.cells);
            if (!fault.isEmpty())
                return QStringLiteral("row %1: %2").arg(QString::number(row), fault);
            const auto isEmpty = [](const QString& cell) { return cell.trimmed().isEmpty(); };
            if (!std::all_of(record.cells.cbegin(), record.cells.cend(), isEmpty))
                records.append(record);
        }
        return {};
    }

private:
    void findSeparator()
    {
        const QLatin1String said("sep=");
        if (m_text.startsWith(said, Qt::CaseInsensitive) && m_text.size() > said.size()) {
            m_separator = m_text.at(said.size());
            m_at = said.size() + 1;
            endRow();
            return;
        }
        QString unquoted;
        bool quoted = false;
        for (const QChar character : m_text) {
            if (character == QLatin1Char('"'))
                quoted = !quoted;
            else if (!quoted && isLineEnd(character))
                break;
            else if (!quoted)
                unquoted += character;
        }
        m_separator = QLatin1Char(',');
        for (const QChar other : {QLatin1Char(';'), QLatin1Char('\t')}) {
            if (unquoted.count(other) > unquoted.count(m_separator))
                m_separator = other;
        }
    }

    void endRow()
    {
        if (m_at < m_text.size() && m_text.at(m_at) == QLatin1Char('\r'))
            ++m_at;
        if (m_at < m_text.size() && m_text.at(m_at) == QLatin1Char('\n'))
            ++m_at;
    }

    QString readRow(QStringList& cells)
    {
        for (;;) {
            QString cell;
            QString fault = readCell(cell);
            if (!fault.isEmpty())
                return fault;
            cells.append(cell);
            if (m_at == m_text.size() || m_text.at(m_at) != m_separator)
                break;
            ++m_at;
        }
        endRow();
        return {};
    }

    QString readCell(QString& cell)
    {
        if (m_at < m_text.size() && m_text.at(m_at) == QLatin1Char('"'))
            return readQuoted(cell);
        const auto start = m_at;
        while (!isCellEnd())
            ++m_at;
        cell = m_text.mid(start, m_at - start);
        return {};
    }

    QString readQuoted(QString& cell)
    {
        const QLatin1Char quote('"');
        do {
            const auto end = m_text.indexOf(quote, m_at + 1);
            if (end < 0)
                return QStringLiteral("a quote is opened and never closed");
            // A further quote at once stands for itself.
            cell +=
                (cell.isNull() ? QString() : QString(quote)) + m_text.mid(m_at + 1, end - m_at - 1);
            m_at = end + 1;
        } while (m_at < m_text.size() && m_text.at(m_at) == quote);
        if (isCellEnd())
            return {};
        return QStringLiteral("something stands between a closing quote and the end of its cell");
    }

    bool isCellEnd() const
    {
        return m_at == m_text.size() || m_text.at(m_at) == m_separator
            || isLineEnd(m_text.at(m_at));
    }

    const QString m_text;
    decltype(m_text.size()) m_at = 0;
    QChar m_separator;
};

QString quoted(const QString& cell, QChar separator)
{
    const auto needsQuotes = [separator](QChar character) {
        return character == separator || character == QLatin1Char('"') || isLineEnd(character);
    };
    if (std::none_of(cell.cbegin(), cell.cend(), needsQuotes))
        return cell;
    QString inner = cell;
    return QLatin1Char('"') + inner.replace(QLatin1Char('"'), QLatin1String("\"\""))
        + QLatin1Char('"');
}

} // namespace

QString Csv::parse(const QString& text, QVector<Record>& records)
{
    return Reader(text).read(records);
}

QString Csv::written(const QVector<QStringList>& rows, QChar separator)
{
    QString text(QChar::ByteOrderMark);
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& cell : row)
            cells.append(quoted(cell, separator));
        text += cells.join(separator) + QLatin1Char('\n');
    }
    return text;
}
