#include "publish/SheetTable.h"

#include "content/Table.h"
#include "lint/Wording.h"
#include "publish/SheetCells.h"
#include "publish/TableText.h"

#include <QHash>
#include <QMap>

#include <algorithm>

namespace {

constexpr int daysLength = 10; // of a date without a time
constexpr int mostTold = 5;    // faults of a column

struct Column
{
    int place = 0; // in the sheet
    QString name;
    CellKind kind = CellKind::Text;
    const ColumnSchema* schema = nullptr;
};

QString cellOf(const Csv::Record& record, int index)
{
    // Spreadsheets leave out what is empty at the end of a row.
    return index < record.cells.size() ? record.cells.at(index) : QString();
}

class SheetReader
{
public:
    SheetReader(const QString& name, const QVector<Csv::Record>& records, const Table* published)
        : m_declared(name, QByteArray())
        , m_records(records)
        , m_published(published)
    {
        if (m_published == nullptr)
            return;
        for (const Row& row : m_published->rows())
            m_publishedRows.insert(m_published->text(row, key()), &row);
    }

    SheetTable read()
    {
        if (m_records.isEmpty()) {
            fault(0, QString(),
                  QStringLiteral("the sheet is empty; its first row names the columns"));
            return m_made;
        }
        findColumns();
        QVector<QJsonArray> rows;
        for (int i = 1; i < m_records.size(); ++i)
            rows.append(rowOf(m_records.at(i)));
        countUntold();
        QStringList names;
        for (const Column& column : qAsConst(m_columns))
            names.append(column.name);
        m_made.bytes = TableText::file(names, rows);
        return m_made;
    }

private:
    const QString& key() const { return m_declared.schema().key; }

    /** Of a column that is wrong all the way down some cells are enough. */
    void fault(int row, const QString& column, const QString& message)
    {
        if (++m_faulty[column] <= mostTold)
            tell(row, column, message);
    }

    void tell(int row, const QString& column, const QString& message)
    {
        m_made.faults.append(
            {QStringLiteral("sheet"), Severity::Error, {m_declared.name(), row, column}, message});
    }

    void countUntold()
    {
        for (auto column = m_faulty.cbegin(); column != m_faulty.cend(); ++column) {
            if (*column > mostTold)
                tell(0, column.key(),
                     QStringLiteral("so it is with %1 more").arg(*column - mostTold));
        }
    }

    void findColumns()
    {
        QStringList names = m_records.constFirst().cells;
        while (!names.isEmpty() && names.constLast().trimmed().isEmpty())
            names.removeLast();
        m_width = static_cast<int>(names.size());
        for (int i = 0; i < names.size(); ++i) {
            Column column {i, names.at(i).trimmed(), CellKind::Text, nullptr};
            if (column.name.isEmpty() && isEmpty(i))
                continue;
            if (column.name.isEmpty())
                fault(0, QString(), QStringLiteral("column %1 has no name").arg(i + 1));
            findTwin(column);
            column.schema = m_declared.column(column.name);
            const bool isRead = column.schema != nullptr && column.schema->fits != nullptr;
            column.kind =
                isRead ? SheetCells::kindOf(*column.schema) : kindOfUnread(column.name, i);
            m_columns.append(column);
        }
    }

    void findTwin(const Column& column)
    {
        const auto twin =
            std::find_if(m_columns.cbegin(), m_columns.cend(),
                         [&column](const Column& other) { return other.name == column.name; });
        if (twin != m_columns.cend() && !column.name.isEmpty())
            fault(0, column.name,
                  QStringLiteral("columns %1 and %2 have this name")
                      .arg(QString::number(twin->place + 1), QString::number(column.place + 1)));
    }

    bool isEmpty(int place) const
    {
        return std::all_of(m_records.begin(), m_records.end(), [place](const Csv::Record& record) {
            return cellOf(record, place).trimmed().isEmpty();
        });
    }

    CellKind kindOfUnread(const QString& name, int index)
    {
        if (m_published != nullptr && m_published->header().contains(name)) {
            QVector<QJsonValue> cells;
            for (const Row& row : m_published->rows())
                cells.append(m_published->cell(row, name));
            return SheetCells::kindOf(cells);
        }
        QStringList texts;
        for (int i = 1; i < m_records.size(); ++i)
            texts.append(cellOf(m_records.at(i), index));
        const CellKind kind = SheetCells::kindOf(texts);
        m_made.notes.append(QStringLiteral("no client reads %1.%2; by its look it is %3")
                                .arg(m_declared.name(), name, SheetCells::name(kind)));
        return kind;
    }

    QJsonArray rowOf(const Csv::Record& record)
    {
        m_made.rows.append(record.row);
        const int number = m_made.rows.size();
        QJsonArray cells;
        for (const Column& column : qAsConst(m_columns))
            cells.append(valueOf(number, column, cellOf(record, column.place)));
        const auto tooMany = std::find_if(
            record.cells.begin() + std::min<int>(m_width, record.cells.size()), record.cells.end(),
            [](const QString& cell) { return !cell.trimmed().isEmpty(); });
        if (tooMany != record.cells.end())
            fault(number, QString(),
                  QStringLiteral("%1 stands beyond the columns").arg(Wording::shown(*tooMany)));
        sharpenDates(cells);
        return cells;
    }

    QJsonValue valueOf(int number, const Column& column, const QString& text)
    {
        const SheetCells::Cell cell = SheetCells::read(column.kind, text);
        m_sharpness.insert(column.name, cell.sharpness);
        if (!cell.fault.isEmpty())
            fault(number, column.name, Wording::shown(text) + QLatin1Char(' ') + cell.fault);
        return cell.value;
    }

    /** What a spreadsheet does not show of a date it has not changed. */
    void sharpenDates(QJsonArray& cells)
    {
        QString id;
        for (int i = 0; i < m_columns.size(); ++i) {
            if (m_columns.at(i).name == key())
                id = m_columns.at(i).schema->becomes(cells.at(i)).toVariant().toString();
        }
        const Row* before = key().isEmpty() ? nullptr : m_publishedRows.value(id);
        for (int i = 0; i < m_columns.size(); ++i) {
            const Column& column = m_columns.at(i);
            const int sharpness = m_sharpness.value(column.name);
            if (column.kind != CellKind::Date || sharpness == 0)
                continue;
            const QString kept =
                before == nullptr ? QString() : m_published->cell(*before, column.name).toString();
            if (kept.left(sharpness) == cells.at(i).toString().left(sharpness))
                cells.replace(i, kept);
            else if (sharpness == daysLength && !column.schema->startColumn.isEmpty())
                fault(m_made.rows.size(), column.name,
                      QStringLiteral("%1 has no time; write %2 23:59:59 for the whole day")
                          .arg(Wording::shown(cells.at(i).toString().left(daysLength)),
                               cells.at(i).toString().left(daysLength)));
        }
    }

    const Table m_declared; // of no rows
    const QVector<Csv::Record>& m_records;
    const Table* m_published;
    QHash<QString, const Row*> m_publishedRows; // by key
    QVector<Column> m_columns;
    int m_width = 0;                 // of the sheet
    QHash<QString, int> m_sharpness; // of the row's dates
    QMap<QString, int> m_faulty;     // cells, by column
    SheetTable m_made;
};

} // namespace

SheetTable readSheet(const QString& name, const QVector<Csv::Record>& records,
                     const Table* published)
{
    return SheetReader(name, records, published).read();
}
