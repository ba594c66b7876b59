#pragma once

#include "datatable/Cells.h"
#include "datatable/TableDescription.h"
#include "datatable/TableRows.h"

#include <QJsonObject>

#include <initializer_list>
#include <optional>
#include <type_traits>

/** A field of a record as a column declaration wants it: where it is, and its name for people. */
#define Z_FIELD(owner, field) &owner::field, #field

enum ColumnNeed {
    Required, ///< a table without the column is refused
    Optional, ///< without the column the field keeps its default
};

inline QJsonValue jsonOf(qint64 value)
{
    return {value};
}
inline QJsonValue jsonOf(const QStringList& value)
{
    return QJsonArray::fromStringList(value);
}
template <class Value>
QJsonValue jsonOf(const Value& value)
{
    return {value};
}

/**
 * One column: its name, whether a table must have it, how its cells are read, the field it fills.
 *
 * Row is what a row is read into; Record, of which Row may be a subclass with fields for the
 * loader's own use, is what the manager keeps.
 */
template <class Row, class Record>
class Column
{
public:
    template <class Conversion, class Owner>
    Column(ColumnNeed need, const char* name, Conversion, typename Conversion::Value Owner::*field,
           const char* fieldName, const char* remark = "")
        : description {QString::fromUtf8(name),
                       need == Required,
                       QString::fromUtf8(Conversion::name),
                       QString::fromUtf8(Conversion::otherwise),
                       std::is_base_of_v<Owner, Record> ? QString::fromUtf8(fieldName) : QString(),
                       QString::fromUtf8(remark)}
        , read([field](const QJsonValue& cell, Row& row) { row.*field = Conversion::read(cell); })
    {
        if constexpr (std::is_base_of_v<Owner, Record>)
            show = [field](const Record& record) { return jsonOf(record.*field); };
    }

    /** A column that must be there and is never read. */
    Column(ColumnNeed need, const char* name, const char* remark)
        : description {QString::fromUtf8(name),  need == Required, {}, {}, {},
                       QString::fromUtf8(remark)}
    {
    }

    ColumnDescription description;
    std::function<void(const QJsonValue&, Row&)> read;
    std::function<QJsonValue(const Record&)> show;
};

/** The rows of one table file, with the declared columns found in its header. */
template <class Row, class Record>
class BoundTable
{
public:
    /** Calls use(Row&&) or use(Row&&, const QJsonArray& cells) for every row, in table order. */
    template <class Use>
    void forEach(Use&& use) const
    {
        m_rows.forEachRow([&](const QJsonArray& cells) {
            Row row;
            for (const Place& place : m_places)
                place.column->read(cells.at(place.index), row);
            if constexpr (std::is_invocable_v<Use, Row&&, const QJsonArray&>)
                use(std::move(row), cells);
            else
                use(std::move(row));
        });
    }

private:
    template <class, class>
    friend class TableColumns;

    struct Place
    {
        const Column<Row, Record>* column;
        int index;
    };

    TableRows m_rows;
    QVector<Place> m_places;
};

/**
 * The columns that a manager wants of its table, in the order of the record's fields. Loading, the
 * printing of records and the column reference all run off this one declaration.
 */
template <class Row, class Record = Row>
class TableColumns
{
public:
    TableColumns(std::initializer_list<Column<Row, Record>> columns)
        : m_columns(columns)
    {
    }
    // Tables bound to the columns point into them.
    TableColumns(const TableColumns&) = delete;
    TableColumns& operator=(const TableColumns&) = delete;

    /** The rows of the file; nothing when it is no table or lacks a required column. */
    std::optional<BoundTable<Row, Record>> read(const QString& path) const
    {
        TableRows rows;
        if (!rows.read(path))
            return std::nullopt;
        return bind(rows);
    }

    /** The same for rows that have been read already. */
    std::optional<BoundTable<Row, Record>> bind(const TableRows& rows) const
    {
        BoundTable<Row, Record> table;
        for (const auto& column : m_columns) {
            const int index = rows.header.value(column.description.name, -1);
            if (index < 0 && column.description.required)
                return std::nullopt;
            if (index >= 0 && column.read)
                table.m_places.append({&column, index});
        }
        table.m_rows = rows;
        return table;
    }

    /**
     * The declaration in words, with a view of the records: held() answers the container that the
     * manager keeps them in.
     */
    template <class Held>
    TableDescription describe(const QString& key, const QString& duplicates, Held held) const
    {
        TableDescription description;
        description.key = key;
        description.duplicates = duplicates;
        for (const auto& column : m_columns)
            description.columns.append(column.description);
        description.recordCount = [held] { return static_cast<int>(held().size()); };
        description.records = [this, held] {
            QJsonArray records;
            const auto& container = held();
            for (const Record& record : container)
                records.append(shown(record));
            return records;
        };
        return description;
    }

private:
    QJsonObject shown(const Record& record) const
    {
        QJsonObject object;
        for (const auto& column : m_columns) {
            if (column.show)
                object.insert(column.description.name, column.show(record));
        }
        return object;
    }

    QVector<Column<Row, Record>> m_columns;
};

/** What most managers do with two rows of one key. */
inline QString laterRowWins()
{
    return QStringLiteral("the later row replaces the earlier");
}
