#pragma once

#include "datatable/TableSchema.h"

#include <QString>
#include <QVector>

/** Tells the records of one table apart. */
class RecordKeys
{
public:
    /** Over these columns of the table, by their places in its schema. */
    RecordKeys(const TableDeclaration& table, const QVector<int>& columns);

    bool isSame(const void* left, const void* right) const;
    /** Equal for records that are the same. */
    QString text(const void* record) const;

    /** What a field holds, as text. */
    static QString textOf(const QVariant& value);

private:
    const TableDeclaration& m_table;
    QVector<int> m_columns; // those that name a record, or all of them
};

/** Which rows of a table before and after a load are of the same record; -1 where none is. */
struct RowMatch
{
    QVector<int> after;  ///< by the row before
    QVector<int> before; ///< by the row after

    RowMatch(const RecordKeys& keys, const QVector<const void*>& old,
             const QVector<const void*>& now);

    /** Whether those that stay do so in their order. */
    bool isInOrder() const;
};

/** Consecutive rows. */
struct RowRun
{
    int first;
    int count;

    /** Those of the rows 0 to size - 1 for which holds(row). */
    template <class Holds>
    static QVector<RowRun> where(int size, const Holds& holds)
    {
        QVector<RowRun> runs;
        for (int row = 0; row < size; ++row) {
            if (!holds(row))
                continue;
            if (!runs.isEmpty() && runs.last().first + runs.last().count == row)
                ++runs.last().count;
            else
                runs.append({row, 1});
        }
        return runs;
    }

    /** One over all of them where they are too many. */
    static QVector<RowRun> joined(const QVector<RowRun>& runs, int most)
    {
        if (runs.size() <= most)
            return runs;
        const RowRun& last = runs.last();
        return {{runs.first().first, last.first + last.count - runs.first().first}};
    }
};
