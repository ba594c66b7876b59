#pragma once

#include "content/Table.h"
#include "datatable/TableStatus.h"
#include "why/Explanation.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Why {

/** What the file of a table has in one place, and what a load makes of it. */
struct RawRow
{
    enum Fate {
        Record,
        LeftOut,     ///< its cell in a column says that it is not meant
        Overwritten, ///< a later row has its id
        NoRow,       ///< null
        Refused,     ///< with the whole table
        Unread,      ///< no manager reads the table
    };

    Row row;    ///< without cells where something else stands in place of a row
    QString id; ///< as a client reads it; empty where the records have none
    QString name;
    Fate fate = Record;
    int overwrittenBy = 0; ///< the row
    QString words;         ///< the fate, as in "left out for valid: a row without it is left out"
    QString page;          ///< of a table that has pages: that of the row
    QString path;          ///< the part of the page that tells addresses to open embedded
    bool isEmbedding = false; ///< whether the row has its page open embedded
};

/** The file of a table in its current version, row by row. */
class RawTable
{
public:
    explicit RawTable(const TableStatus& status);

    /** The same file where something else is known of its table meanwhile. */
    RawTable with(const TableStatus& status) const;

    const TableStatus& status() const { return m_status; }

    /** Why the file cannot be read or is refused; empty when a load takes it. */
    const QString& fault() const { return m_fault; }

    const Table& table() const { return m_table; }
    const QVector<RawRow>& rows() const { return m_rows; }

    /** Whether a row is held as a record: one that a later row answers for may be. */
    bool isRecord(const RawRow& row) const;

    /** How many rows have a fate. */
    int count(RawRow::Fate fate) const;

    /** The row that answers for the id, else the last that has it; null when none does. */
    const RawRow* find(const QString& id) const;

    /** The column whose number decides whether pages open embedded; null when none does. */
    const ColumnSchema* embeddingColumn() const;

    /** The column whose cells are names for people; empty when none is. */
    static QString nameColumn(const TableSchema& schema);

    /** Where a row of this table stands, or the table alone. */
    Origin origin(const RawRow* row = nullptr) const;

private:
    void readRows();
    void leaveOut(QStringList columns);
    void noteOverwritten();
    void readPages();
    void noteIds();
    QString recordWords() const;
    QString leftOutWords(const RawRow& row) const;

    TableStatus m_status;
    QString m_path;
    QString m_fault;
    Table m_table;
    QVector<RawRow> m_rows;
    QHash<QString, int> m_places; // of the rows that find() answers
};

/** The file of a table as it lies there, or would. */
Origin originOf(const TableStatus& status);

/** The table of that name; only the name is set where there is none. */
TableStatus statusOf(const QString& table);

} // namespace Why
