#pragma once

#include "datatable/ZDataTableMgr.h"
#include "support/Literals.h"
#include "testing/ZTestFolder.h"
#include "testing/ZTestTable.h"

#include <QJsonDocument>

/** The elements of a JSON array, written with apostrophes for its quotes. */
inline QJsonArray jsonOf(QByteArray text)
{
    const QJsonDocument parsed = QJsonDocument::fromJson(text.replace('\'', '"'));
    if (!parsed.isArray())
        qFatal("no array: %s", text.constData());
    return parsed.array();
}

/** As JSON. */
inline QString textOf(const QJsonValue& value)
{
    const QJsonDocument list(QJsonArray {value});
    return QString::fromUtf8(list.toJson(QJsonDocument::Compact)).mid(1).chopped(1);
}

/** Of the table of that name; without a declaration where there is none. */
inline TableStatus statusOf(const QString& table)
{
    for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
        if (status.table == table)
            return status;
    }
    return {};
}

/** The bytes of a table file: the columns' names between spaces; rows as for ZTestTable::bytes().
 */
inline QByteArray tableBytes(const QString& columns, const QJsonArray& rows)
{
    return ZTestTable::bytes(columns.split(u' ', Qt::SkipEmptyParts),
                             QVector<QJsonValue>(rows.begin(), rows.end()));
}
inline QByteArray tableBytes(const QString& columns, const QByteArray& rows)
{
    return tableBytes(columns, jsonOf(rows));
}

/** The columns that a manager wants of its table, as for tableBytes(). */
inline QString columnsOf(const TableDeclaration& table, bool optionalToo = true)
{
    QStringList names;
    for (const ColumnSchema& column : table.schema().columns) {
        if (column.required || optionalToo)
            names.append(column.name);
    }
    return names.join(u' ');
}

/** Of a table of these columns: "*" are all that its manager knows, "required" those it insists on.
 */
inline QByteArray tableBytes(const TableStatus& status, const QString& columns,
                             const QJsonArray& rows)
{
    const bool known = columns == u"*"_s || columns == u"required"_s;
    return tableBytes(known ? columnsOf(*status.declaration, columns == u"*"_s) : columns, rows);
}

/** The same as a file of its own in the working folder, whose path is answered. */
template <class Rows>
QString tableOf(const QString& columns, const Rows& rows)
{
    static int tables = 0;
    return ZTestFolder::write(u"table_%1"_s.arg(++tables), tableBytes(columns, rows));
}

/** Has a manager load such a table; without columns said, one of all those that it knows. */
template <class Manager>
bool loadTable(const QString& columns, const QByteArray& rows)
{
    return Manager::declaration().load(tableOf(columns, rows));
}
template <class Manager>
bool loadTable(const QByteArray& rows)
{
    return loadTable<Manager>(columnsOf(Manager::declaration()), rows);
}
