#pragma once

#include "ZGlobalModelsExport.h"
#include "datatable/TableSchema.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QString>
#include <QVector>

#include <functional>

struct TableEntry;

/**
 * The records that a manager holds of one table, a row each: in table order where the manager keeps
 * that, else by their key.
 *
 * A column is one that fills a field of the record, under its name in the table; the one column of
 * GroupWelComeWord is called "text". Every column is a role of each index, too, of the column's
 * name.
 *
 * A load through ZDataTableMgr is told row by row: rows are matched by the table's key, the first
 * of one key with the first, and those of a table without one by all they hold. What goes is
 * removed, what stays keeps its persistent indexes, what is new inserted, what differs changed:
 * where more than a hundred stretches of rows differ, as one over all of them, in which ChangedRole
 * tells the values that do. A load that fails changes nothing, nor does one of equal records.
 * Between two loads the model holds the manager's records without a copy and reads a value when it
 * is asked for.
 *
 * GUI thread only, like the managers.
 */
class ZGLOBALMODELS_EXPORT ZRecordModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_PROPERTY(QString table READ table WRITE setTable NOTIFY sigTableChanged)

public:
    enum Role {
        ValueRole = Qt::UserRole, ///< in the type of the record's field, for sorting
        ChangedRole,     ///< while dataChanged is told: whether the load made another value of it
        FirstColumnRole, ///< of column 0; those of the others follow, in their order
    };

    explicit ZRecordModel(QObject* parent = nullptr);
    explicit ZRecordModel(const QString& table, QObject* parent = nullptr);

    /** The table's name on the content server. One that nobody reads has neither rows nor columns.
     */
    QString table() const { return m_table; }
    void setTable(const QString& table);

    /** The place of a column by its name; -1 when there is none. */
    int columnOf(const QString& name) const { return m_places.value(name, -1); }

    /** What the manager declares of a column; null for that of a table without any. */
    const ColumnSchema* schema(int column) const;

    /** What the record of a row holds, in the type of its field; invalid for an unknown name or
     * row.
     */
    QVariant value(int row, const QString& column) const;

    /** What names the record of a row, as text; empty in a table where nothing does, and for a row
     *  that is not there. */
    QString key(int row) const;

    /** The first row of that key; -1 when there is none. */
    int rowOf(const QString& key) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    /** For display: dates in local time, everything else as the record holds it. */
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /** The column's name; as its tool tip how cells are read, and what the manager makes of them.
     */
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

public Q_SLOTS:
    /** For records that came in by another way than ZDataTableMgr. */
    void refresh();

Q_SIGNALS:
    void sigTableChanged();

protected:
    /** A role beside the columns; compute(row) is asked whenever a view wants it. Answers the role.
     */
    int addRole(const QByteArray& name, const std::function<QVariant(int row)>& compute);

    /** Tells that a role of these rows has changed: told holds, by row, whether it has. */
    void tellChanges(const QVector<bool>& changed, int role);

private:
    using Records = QVector<const void*>;

    void take(const TableSnapshot& snapshot);
    void remove(int first, int count);
    void insert(int first, int count, const Records& records);
    void reorder(const Records& records);
    void takeChanged(const TableSnapshot& snapshot);
    bool hasChanged(int row, int column) const;

    QString m_table;
    const TableEntry* m_entry = nullptr;
    QVector<int> m_columns; // their places in the schema
    QHash<QString, int> m_places;
    TableSnapshot m_snapshot;
    TableSnapshot m_before; // while changes are told
    QVector<std::function<QVariant(int)>> m_computed;
    QVector<QByteArray> m_computedNames;
};
