#pragma once

#include "datatable/TableSchema.h"

#include <QString>
#include <QStringList>

class Table;
struct Row;

/** The files that cells have a client fetch. */
namespace FileUse {

/** The names in a cell of a column with files: one, or those of a schedule's pictures. */
QStringList namesIn(const ColumnSchema& column, const QString& text);

/** Why the file of that name does not come to be, as in "is empty, so ..."; an empty text when
 *  nothing is in its way. */
QString nameFault(const ColumnSchema& column, const QString& name);

/** Where the content folder has the file, relative to it. */
QString pathOf(const FileSchema& file, const Table& table, const Row& row, const QString& name);

} // namespace FileUse
