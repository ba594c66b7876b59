#pragma once

#include "datatable/TableList.h"

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonValue>
#include <QString>
#include <QVector>

/** A row of a table, and what a client makes of it. */
struct Row
{
    int number = 0; ///< from 1; what stands in place of a row counts
    QJsonArray cells;
    QString leftOutFor; ///< the column for which it becomes no record; empty when it becomes one
};

/** A table as a client's loader meets it. */
class Table
{
public:
    /** The name need not be that of a table. */
    Table(const QString& name, const QByteArray& bytes);

    const QString& name() const { return m_name; }

    /** Why the bytes are no table; empty when they are one. */
    const QString& error() const { return m_error; }

    /** Who reads it; null when nobody does. */
    const TableEntry* reader() const { return m_reader; }

    /** The declared columns; none when nobody reads the table. */
    const QVector<ColumnSchema>& columns() const { return m_schema.columns; }
    const TableSchema& schema() const { return m_schema; }
    /** Null when no column of that name is declared. */
    const ColumnSchema* column(const QString& name) const;

    /** Column names to the cells' indexes, as the file has them. */
    const QHash<QString, int>& header() const { return m_header; }

    /** What the file has among its rows. */
    const QJsonArray& elements() const { return m_elements; }

    /** The rows; elements that are none are not among them. */
    const QVector<Row>& rows() const { return m_rows; }

    /** Whether a client refuses the table, or would if it read it. */
    bool isRefused() const;

    /** The cell as it stands; undefined where the row or the table has none. */
    QJsonValue cell(const Row& row, const QString& column) const;

    /** How a message goes on where the start-up load fails without the reader's table. */
    static QString startUpNote(const TableEntry* reader);

    /** What a client reads there: of a column that is not declared, the cell itself. */
    QJsonValue value(const Row& row, const QString& column) const;

    /** The same as text, the way that an id is compared. */
    QString text(const Row& row, const QString& column) const;

    /** Whether the conditions hold under which the column's files and references count. */
    bool counts(const Row& row, const ColumnSchema& column) const;

private:
    QString m_name;
    QString m_error;
    const TableEntry* m_reader;
    TableSchema m_schema;
    QHash<QString, int> m_places; // of the declared columns
    QHash<QString, int> m_header;
    QJsonArray m_elements;
    QVector<Row> m_rows;
};
