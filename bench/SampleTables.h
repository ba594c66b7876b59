#pragma once

#include "datatable/TableStatus.h"

#include <QByteArray>

/** Tables of any size, made off their declarations. */
namespace SampleTables {

/**
 * A table file of this many rows, each of which becomes a record of its own: every cell is of the
 * kind that its column wants and every key is another. The other texts and numbers are a few that
 * come again and again, as in published tables.
 *
 * The gift table has rows of 320 bytes, with the same few texts but in the gift's id, its name, its
 * picture and the time of its last change, and a clientParam in every third.
 */
QByteArray bytes(const TableStatus& table, int rows);

/**
 * What a manager holds that it should not hold after loading these bytes, beside a plain reading of
 * their cells with Qt; empty when all is as it should be.
 */
QString difference(const TableStatus& table, const QByteArray& bytes);

} // namespace SampleTables
