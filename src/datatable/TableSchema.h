#pragma once

#include "ZGlobalExport.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <memory>
#include <optional>

/** What the texts of a column are, beyond being texts. */
enum class TextUse {
    Any,
    Name,     ///< what people call the thing
    Words,    ///< for people to read as they stand: nothing is filled in
    Colour,   ///< "#RRGGBB", or with an alpha before or no more than a digit each
    Address,  ///< of a web page
    Schedule, ///< the periods of a day, as JSON
    Object,   ///< a JSON object
};

/** How a cell names records of another table. */
enum class ReferenceForm {
    One,
    Beginning, ///< by that of their ids, whatever the letter case
};

/** A file that a cell has a client fetch. */
struct FileSchema
{
    QString server;         ///< the configuration key of the server that holds it
    QString address;        ///< what stands between the server and the name
    QString name;           ///< "{}" stands for the cell, "{column}" for that cell of the row
    bool isArchive = false; ///< unpacked by the client; a film (".mp4") in its place is not
    QString version;        ///< the column of the archive's version; empty for other files
    QString description;    ///< the file in the archive without which it is of no use; may be empty
};

/** One column that a manager wants of its table, in words. */
struct ColumnSchema
{
    QString name;
    bool required = false; ///< a table without the column is refused
    QString conversion;    ///< how the cell is read; empty when it never is
    QString otherwise;     ///< what a cell of another type, or one beyond the row's end, becomes
    QString field;         ///< the record's field that it fills; empty when none
    QString remark;        ///< what the manager makes of it beyond filling the field

    QString referredTable;  ///< the table whose record the cell names; empty when none
    QString referredColumn; ///< that table's column with the same value
    ReferenceForm referenceForm = ReferenceForm::One;
    bool isThereToBeNamed = false; ///< a record that no other table names is of no use
    QVector<FileSchema> files;

    TextUse use = TextUse::Any;
    QString wanted; ///< a row without this text in its cell is left out; empty when that is no rule
    std::optional<int> least; ///< of the numbers that mean something to a client
    std::optional<int> most;
    QString startColumn; ///< where the period begins that ends here; empty for other columns
    QString withinStart; ///< the period that the one which begins here has to meet ...
    QString withinEnd;   ///< ... and its end; empty when there is none
    QString pageColumn;  ///< the page that opens embedded where this number is above 0, or empty
    QString pagePattern; ///< captures the part of the page that tells addresses to open so
    QString onlyWhere; ///< the column whose number decides whether files and references count; ...
    int onlyFrom = 0;  ///< ... they do from this one ...
    int onlyTo = 0;    ///< ... to this one; onlyWhere is empty when they always do

    /** Whether a cell is of the kind that the conversion is meant for; null for one never read. */
    bool (*fits)(const QJsonValue& cell) = nullptr;

    /** What the conversion makes of a cell; null like fits. */
    QJsonValue (*becomes)(const QJsonValue& cell) = nullptr;
};

/** What a manager makes of its table's columns and rows, in words. */
struct TableSchema
{
    QVector<ColumnSchema> columns;
    QString key;                  ///< the column that names a record; empty when none does
    QString duplicates;           ///< what happens to two rows of one key
    bool laterRowAnswers = false; ///< of two rows of one key, only the later is found by it ...
    bool isEveryRowKept = false;  ///< ... though the earlier one may still be in a list
};

/**
 * The records that a manager held of a table at one moment. They stay as they are, whatever is
 * loaded meanwhile; nothing is copied before the next load.
 */
struct TableSnapshot
{
    QVector<const void*> records;       ///< to be read by TableDeclaration::value() and compare()
    std::shared_ptr<const void> keeper; ///< they live as long as it does
};

/**
 * A table as its manager declares it: the columns in words, the loading, the records held.
 *
 * What holds for every manager and every loading operation unless its own words say otherwise:
 *
 * - A load is false, with records, signals and log as if it had not been tried, when the file is no
 *   table or lacks a required column. Otherwise it replaces what the manager holds of the table.
 * - Elements of the table that are null are passed over; one that is no row reads as an empty row.
 * - A lookup of an unknown id gives an empty text or a default record, and a lookup never fails.
 * - References to containers are to the live ones: not to be held across a load.
 * - GUI thread only.
 */
class ZGLOBAL_EXPORT TableDeclaration
{
public:
    virtual ~TableDeclaration();

    const TableSchema& schema() const { return m_schema; }

    /** The names of all columns that the manager wants, the optional ones too. */
    QStringList columnNames() const;

    /** The first required column that a header lacks; empty when it has them all. */
    QString missingColumn(const QHash<QString, int>& header) const;

    /** For each row, of which none is null: the column for which a load leaves it out; empty when
     *  it becomes a record, or the table is refused. */
    virtual QStringList leftOutFor(const QHash<QString, int>& header, const QJsonArray& rows) const;

    /** The manager's own loading operation. */
    virtual bool load(const QString& path) const = 0;

    /** The records that the manager holds of this table at the moment. */
    virtual int recordCount() const = 0;

    /** The same records as objects whose members are the columns, or as texts. */
    virtual QJsonArray records() const = 0;

    /** The same records as they are, in the same order; out of an unordered map by their key. */
    virtual TableSnapshot snapshot() const = 0;

    /** What a record of a snapshot holds of a column, by its place in the schema: in the type of
     *  the record's field, and invalid where none is filled. Column 0 of a table without columns is
     *  the text itself. */
    virtual QVariant value(const void* record, int column) const = 0;

    /** The order of two such values: below 0, 0 when they are equal, above 0. */
    virtual int compare(const void* left, const void* right, int column) const = 0;

protected:
    TableDeclaration() = default;
    Q_DISABLE_COPY(TableDeclaration)

    TableSchema m_schema;
};
