#pragma once

#include "datatable/Cells.h"
#include "datatable/EDataTable.h"
#include "datatable/SharedTexts.h"
#include "datatable/TableCatalogue.h"
#include "datatable/TableRows.h"
#include "datatable/TableSchema.h"

#include <QJsonObject>
#include <QVariant>

#include <functional>
#include <initializer_list>
#include <limits>
#include <optional>
#include <type_traits>

/** A field of a record as a column declaration wants it: where it is, and what it is called. */
#define Z_FIELD(owner, field) &owner::field, #field

enum ColumnNeed {
    Required, ///< a table without the column is refused
    Optional, ///< without the column the field keeps its default
};

/** Said of a column: its cells name a record of another table. */
struct RefersTo
{
    EDataTable::EDataTableType table;
    const char* column;
    ReferenceForm form = ReferenceForm::One;
};

/** Said of a column: its cells name a file on a server, behind a part of the address. */
struct FileOn
{
    const char* server; ///< configuration key
    const char* address;
    const char* name = "{}"; ///< as in FileSchema
};

/** The same of an archive: the column of its version, and the file in it without which it is of no
 *  use. */
struct ArchiveOn
{
    const char* server;
    const char* address;
    const char* version;
    const char* description = "";
};

/** Said of a column: files and references count only where that column's number is one of these. */
struct OnlyWhere
{
    const char* column;
    int from;
    int to;
};

/** Said of a column: the numbers that mean something to a client. */
struct Between
{
    int least;
    int most = std::numeric_limits<int>::max();
};

/** Said of a column: the period that begins in that column ends here, both included. */
struct EndOf
{
    const char* start;
};

/** Said of a column: where its number is above 0, the page of that column opens embedded. */
struct OpensEmbedded
{
    const char* page;
    const char* pattern; ///< captures the part of it that tells addresses to open so
};

/** Said of the column that a period begins in: what lies outside of that other one has no effect.
 */
struct Within
{
    const char* start;
    const char* end;
};

/** Said of the id of records that are there for other tables to name, and for nothing else. */
struct ThereToBeNamed
{
};

/** Said of a column: rows without this text in the cell are left out. */
struct Wants
{
    const char* text;
};

template <class Value>
int ordered(const Value& left, const Value& right)
{
    return left < right ? -1 : static_cast<int>(right < left);
}
inline int ordered(const QString& left, const QString& right)
{
    return left.compare(right);
}

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
 * One column: whether a table must have it, its name where the field has another, how its cells are
 * read, the field it fills, and what else is to be said of it (a remark, a TextUse, RefersTo and
 * the like).
 *
 * Row is what a row is read into; Record, of which Row may be a subclass with fields for the
 * loader's own use, is what the manager keeps.
 */
template <class Row, class Record>
class Column
{
public:
    template <class Conversion, class Owner, class... Notes>
    Column(ColumnNeed need, const char* name, Conversion, typename Conversion::Value Owner::*field,
           const char* fieldName, const Notes&... notes)
        : read([field](const QJsonValue& cell, Row& row, SharedTexts& texts) {
            row.*field = Conversion::read(cell);
            if constexpr (std::is_same_v<typename Conversion::Value, QString>)
                texts.share(row.*field);
        })
        , place([field](const Row& row) -> const void* { return &(row.*field); })
    {
        schema.name = QString::fromUtf8(name);
        schema.required = need == Required;
        schema.conversion = QString::fromUtf8(Conversion::name);
        schema.otherwise = QString::fromUtf8(Conversion::otherwise);
        schema.fits = &Conversion::fits;
        schema.becomes = [](const QJsonValue& cell) { return jsonOf(Conversion::read(cell)); };
        if constexpr (std::is_base_of_v<Owner, Record>) {
            schema.field = QString::fromUtf8(fieldName);
            value = [field](const Record& record) { return QVariant(record.*field); };
            compare = [field](const Record& left, const Record& right) {
                return ordered(left.*field, right.*field);
            };
        }
        (note(notes), ...);
    }

    template <class Conversion, class Owner, class... Notes>
    Column(ColumnNeed need, Conversion conversion, typename Conversion::Value Owner::*field,
           const char* fieldName, const Notes&... notes)
        : Column(need, fieldName, conversion, field, fieldName, notes...)
    {
    }

    /** A column that must be there and is never read. */
    Column(ColumnNeed need, const char* name, const char* remark)
    {
        schema.name = QString::fromUtf8(name);
        schema.required = need == Required;
        note(remark);
    }

    ColumnSchema schema;
    std::function<void(const QJsonValue&, Row&, SharedTexts&)> read;
    std::function<QVariant(const Record&)> value; ///< null where no field is filled
    std::function<int(const Record&, const Record&)> compare;
    std::function<const void*(const Row&)> place; ///< the field inside a row, to know it again

private:
    void note(const char* remark) { schema.remark = QString::fromUtf8(remark); }
    void note(const RefersTo& reference)
    {
        schema.referredTable = TableCatalogue::name(reference.table);
        schema.referredColumn = QString::fromUtf8(reference.column);
        schema.referenceForm = reference.form;
    }
    void note(const FileOn& file)
    {
        schema.files.append({QString::fromUtf8(file.server), QString::fromUtf8(file.address),
                             QString::fromUtf8(file.name), false, QString(), QString()});
    }
    void note(const ArchiveOn& file)
    {
        schema.files.append({QString::fromUtf8(file.server), QString::fromUtf8(file.address),
                             QStringLiteral("{}"), true, QString::fromUtf8(file.version),
                             QString::fromUtf8(file.description)});
    }
    void note(const OnlyWhere& condition)
    {
        schema.onlyWhere = QString::fromUtf8(condition.column);
        schema.onlyFrom = condition.from;
        schema.onlyTo = condition.to;
    }
    void note(const Between& numbers)
    {
        schema.least = numbers.least;
        schema.most = numbers.most;
    }
    void note(const EndOf& period) { schema.startColumn = QString::fromUtf8(period.start); }
    void note(const Within& other)
    {
        schema.withinStart = QString::fromUtf8(other.start);
        schema.withinEnd = QString::fromUtf8(other.end);
    }
    void note(const OpensEmbedded& page)
    {
        schema.pageColumn = QString::fromUtf8(page.page);
        schema.pagePattern = QString::fromUtf8(page.pattern);
    }
    void note(const Wants& part) { schema.wanted = QString::fromUtf8(part.text); }
    void note(const ThereToBeNamed&) { schema.isThereToBeNamed = true; }
    void note(TextUse use) { schema.use = use; }
};

/** The rows of a table, with the declared columns found in its header. */
template <class Row, class Record>
class BoundTable
{
public:
    /** Calls use(Row&&, const QJsonArray& cells) for every row, in table order. */
    template <class Use>
    void forEach(Use&& use) const
    {
        const Cells::OneTimeZone zone;
        SharedTexts texts;
        m_rows.forEachRow([&](const QJsonArray& cells) {
            Row row;
            for (const Place& place : m_places)
                place.column->read(cells.at(place.index), row, texts);
            use(std::move(row), cells);
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

/** The columns that a manager wants of its table, in the order of the record's fields. */
template <class Row, class Record = Row>
class TableColumns
{
public:
    TableColumns(std::initializer_list<Column<Row, Record>> columns)
        : m_columns(columns)
    {
    }

    /** Nothing when a required column is missing. What is bound points into these columns. */
    std::optional<BoundTable<Row, Record>> bind(const TableRows& rows) const
    {
        BoundTable<Row, Record> table;
        for (const auto& column : m_columns) {
            const int index = rows.header.value(column.schema.name, -1);
            if (index < 0 && column.schema.required)
                return std::nullopt;
            if (index >= 0 && column.read)
                table.m_places.append({&column, index});
        }
        table.m_rows = rows;
        return table;
    }

    QVector<ColumnSchema> schemas() const
    {
        QVector<ColumnSchema> schemas;
        for (const auto& column : m_columns)
            schemas.append(column.schema);
        return schemas;
    }

    /** The place among the columns of the one that fills a field; -1 when none does. */
    template <class Value, class Owner>
    int indexOf(Value Owner::*field) const
    {
        const Row sample {};
        for (int i = 0; i < m_columns.size(); ++i) {
            if (m_columns.at(i).place && m_columns.at(i).place(sample) == &(sample.*field))
                return i;
        }
        return -1;
    }

    QJsonObject shown(const Record& record) const
    {
        QJsonObject object;
        for (const auto& column : m_columns) {
            if (column.value)
                object.insert(column.schema.name, QJsonValue::fromVariant(column.value(record)));
        }
        return object;
    }

    QVariant value(const Record& record, int column) const
    {
        const auto& read = m_columns.at(column).value;
        return read ? read(record) : QVariant();
    }

    int compare(const Record& left, const Record& right, int column) const
    {
        const auto& compared = m_columns.at(column).compare;
        return compared ? compared(left, right) : 0;
    }

private:
    QVector<Column<Row, Record>> m_columns;
};
