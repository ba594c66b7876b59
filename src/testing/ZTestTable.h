#pragma once

#include "ZGlobalTestingExport.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>
#include <QVector>

/** Tables of a test's own making. Any thread. */
namespace ZTestTable {

/**
 * The bytes of a table file. A row is a QJsonArray of cells in the order of the columns, or a
 * QJsonObject of them by column, in which one left out becomes null; QJsonValue::Null is no row.
 * What a manager wants of its table is told by its declaration().columnNames().
 *
 * A row that names a column which the table has not ends the test with a message (qFatal).
 */
ZGLOBALTESTING_EXPORT QByteArray bytes(const QStringList& columns, const QVector<QJsonValue>& rows);

} // namespace ZTestTable
