#pragma once

#include "why/RawTable.h"

#include <QString>

class QTableWidget;
class ZRecordModel;

/** One row of a table as its file has it, beside what the record holds of it. */
namespace RowCells {

void prepare(QTableWidget& cells);

/** Fills the cells: a line for each column of the file, then those that only the reader knows.
 *  Answers where the row stands. */
QString show(QTableWidget& cells, const ZRecordModel& records, int row, const Why::RawTable& file);

/** The same of a row that became no record. */
QString showLost(QTableWidget& cells, const Why::RawRow& row, const Why::RawTable& file);

} // namespace RowCells
