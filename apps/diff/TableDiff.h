#pragma once

#include "diff/Changes.h"

#include <QHash>

class Table;

/** What differs between two tables of one name. */
namespace TableDiff {

/** Fills in columns, records and remarks; both are tables, and their bytes differ. */
void compare(const Table& before, const Table& after, TableChange& change);

/** The same for one that only one side has: its records all came, or went. */
void list(const Table& table, Change kind, TableChange& change);

/** The files that a table names, with the labels of the records that do. */
QHash<QString, QStringList> users(const Table& table);

} // namespace TableDiff
