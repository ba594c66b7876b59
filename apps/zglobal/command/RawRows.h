#pragma once

#include "datatable/TableStatus.h"

#include <QString>

/** The rows of a table as its file has them, and what became of each. */
namespace RawRows {

/** Prints all of them, or those that have an id or a name; a Failure where there is none. */
void print(const TableStatus& table, const QString& idOrName, bool json);

} // namespace RawRows
