#include "models/RowMatch.h"

#include <QHash>

#include <algorithm>

RecordKeys::RecordKeys(const TableDeclaration& table, const QVector<int>& columns)
    : m_table(table)
    , m_columns(columns)
{
    const TableSchema& schema = table.schema();
    const auto key = std::find_if(columns.begin(), columns.end(), [&schema](int column) {
        return !schema.key.isEmpty() && schema.columns.at(column).name == schema.key;
    });
    if (key != columns.end())
        m_columns = {*key};
}

bool RecordKeys::isSame(const void* left, const void* right) const
{
    return std::all_of(m_columns.begin(), m_columns.end(),
                       [=](int column) { return m_table.compare(left, right, column) == 0; });
}

QString RecordKeys::textOf(const QVariant& value)
{
    return value.userType() == QMetaType::QStringList ? value.toStringList().join(u',')
                                                      : value.toString();
}

QString RecordKeys::text(const void* record) const
{
    QStringList texts;
    for (const int column : m_columns)
        texts += textOf(m_table.value(record, column));
    return texts.join(QChar(0x1f));
}

RowMatch::RowMatch(const RecordKeys& keys, const QVector<const void*>& old,
                   const QVector<const void*>& now)
    : after(old.size(), -1)
    , before(now.size(), -1)
{
    // Mostly a table comes with the rows that it had, and few of them differ.
    int begin = 0;
    int oldEnd = static_cast<int>(old.size());
    int end = static_cast<int>(now.size());
    const auto join = [this](int oldRow, int row) {
        after[oldRow] = row;
        before[row] = oldRow;
    };
    for (; begin < std::min(oldEnd, end) && keys.isSame(old.at(begin), now.at(begin)); ++begin)
        join(begin, begin);
    for (; begin < std::min(oldEnd, end) && keys.isSame(old.at(oldEnd - 1), now.at(end - 1));
         --oldEnd, --end)
        join(oldEnd - 1, end - 1);
    if (begin == oldEnd || begin == end)
        return;
    QHash<QString, QVector<int>> rows; // from the last to the first
    for (int row = end - 1; row >= begin; --row)
        rows[keys.text(now.at(row))].append(row);
    for (int row = begin; row < oldEnd; ++row) {
        const auto same = rows.find(keys.text(old.at(row)));
        if (same != rows.end() && !same->isEmpty())
            join(row, same->takeLast());
    }
}

bool RowMatch::isInOrder() const
{
    int last = -1;
    return std::all_of(after.begin(), after.end(), [&last](int row) {
        const bool follows = row < 0 || row > last;
        last = std::max(last, row);
        return follows;
    });
}
