#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QString>
#include <QStringList>
#include <QVector>

class Table;

/** Tables as text: as files, and as sheets. */
namespace TableText {

/** The bytes of a table file, a row a line. */
QByteArray file(const QStringList& columns, const QVector<QJsonArray>& rows);

/** The column names, in the order of the file. */
QStringList columnsOf(const Table& table);

/** What a sheet shows in a cell. */
QString shown(const QJsonValue& cell);

/** A row for the column names, and each row of the table. */
QVector<QStringList> sheet(const Table& table);

/** Whether clients read the same of both: the columns in any order, and no matter how they are
 *  written. Bytes that are no table equal nothing but the same bytes. */
bool areSame(const QString& name, const QByteArray& left, const QByteArray& right);

} // namespace TableText
