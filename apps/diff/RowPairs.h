#pragma once

#include <QStringList>
#include <QVector>

class Table;

/** What became of a row. */
struct RowPair
{
    int before = -1; ///< its index among the rows of the old table; -1 when it was not there
    int after = -1;  ///< among those of the new one; -1 when it is not there
};

/** Which rows of two tables are the same record. */
namespace RowPairs {

/** The column whose cell tells the rows from each other; empty when none does in both tables. */
QString keyOf(const Table& before, const Table& after);

/**
 * In the order of the new table, a row that went behind the one that it followed. Rows of one key
 * are one record; of several with that key, or without any, those are that have the same cells, and
 * then those that are alike and in order.
 */
QVector<RowPair> of(const Table& before, const Table& after, const QStringList& columns);

} // namespace RowPairs
