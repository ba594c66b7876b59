#pragma once

#include "diff/Changes.h"

#include <QVector>

struct Content;

/**
 * What differs between two states of the content, by the declarations that clients read it with:
 * records are told apart by their keys, and cells are compared as the files have them. Prints
 * nothing and writes nothing. Any thread.
 */
namespace ContentDiff {

/**
 * Every table that either side has, the unchanged ones too, in the order of their names; a
 * versions.json that cannot be read stands among them; the files that no table names come last,
 * with no name. Files are compared where both sides have their content folder.
 */
QVector<TableChange> between(const Content& before, const Content& after);

/** As in "2 tables: 3 records added, 1 removed, 4 changed; 1 file changed". */
QString summary(const QVector<TableChange>& changes);

/** The same of one, without a count of tables. */
QString summary(const TableChange& change);

/** Of the same changes those of tables with these names. */
QVector<TableChange> ofTables(const QVector<TableChange>& changes, const QStringList& names);

} // namespace ContentDiff
