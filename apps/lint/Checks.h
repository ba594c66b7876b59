#pragma once

class Findings;
class Table;

/** What is looked for in one table, by what it is looked for in. A table that is none, or that is
 *  refused, is for checkTable() only. */
namespace Checks {

/** The file, its columns, and how its rows are made. */
void checkTable(const Table& table, Findings& findings);

/** Each cell by itself, and the two ends of a period. */
void checkCells(const Table& table, Findings& findings);

/** The records that become of the rows. */
void checkRecords(const Table& table, Findings& findings);

} // namespace Checks
