#pragma once

#include "datatable/TableSchema.h"

#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>

/** What a cell of a sheet becomes in a table. */
enum class CellKind { Text, Date, Integer, Number, Flag };

/** Cells of a sheet are texts; their columns tell what they become. Nothing is guessed: what can be
 *  read in two ways is a fault. */
namespace SheetCells {

/** The kind that a declared column is read as; null fits of a column that is never read apart. */
CellKind kindOf(const ColumnSchema& column);

/** The kind of all of these cells of a table, or of all of these texts; they are of no other. */
CellKind kindOf(const QVector<QJsonValue>& cells);
CellKind kindOf(const QStringList& texts);

/** "text", "an integer" and so on. */
QString name(CellKind kind);

struct Cell
{
    QJsonValue value;
    QString fault;     ///< why it is none of that kind, as in "is empty"; else empty
    int sharpness = 0; ///< of a date: so many of its characters stood in the sheet
};

Cell read(CellKind kind, const QString& text);

} // namespace SheetCells
