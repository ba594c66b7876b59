#pragma once

#include "diff/Changes.h"

#include <QJsonArray>

/** Changes for programs. */
namespace DiffJson {

/** An object for each table that differs; "table" is empty for the files that no table names. What
 *  there is none of, such as a cell beyond the end of its row, has no member. */
QJsonArray of(const QVector<TableChange>& changes);

/** "unchanged", "added", "removed" or "changed". */
QString word(Change kind);

} // namespace DiffJson
