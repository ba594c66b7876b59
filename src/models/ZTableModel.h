#pragma once

#include "ZGlobalModelsExport.h"
#include "datatable/TableStatus.h"

#include <QAbstractTableModel>
#include <QDateTime>
#include <QVector>

/**
 * Every published table as it stands, a row each: those of the catalogue in its order, then those
 * outside it. Every column is a role of each index, too, under the name that its header has.
 *
 * What becomes of a table through ZDataTableMgr shows at once; refresh() is for files that change
 * by another hand. GUI thread only.
 */
class ZGLOBALMODELS_EXPORT ZTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        Table,     ///< its name on the content server
        Kind,      ///< value of EDataTable::EDataTableType, -1 outside the catalogue
        Version,   ///< 0 when none is known; can be edited for a table of the catalogue
        Size,      ///< of its file in bytes, 0 when that is missing
        Modified,  ///< when its file was written; invalid when that is missing
        Records,   ///< that its manager holds; invalid for a table that nobody reads
        State,     ///< TableStatus::State
        Manager,   ///< the class that reads it; empty when none does
        Loader,    ///< and by which operation
        AtStart,   ///< whether ZDataTableMgr::loadAllTables() loads it
        Path,      ///< of its file
        Error,     ///< why its last load or update failed; empty when it did not
        LastFault, ///< what last went wrong with it, mended since or not
        ColumnCount,
    };
    enum Role {
        ValueRole = Qt::UserRole, ///< for sorting
        FirstColumnRole,          ///< of the first column; those of the others follow
    };

    explicit ZTableModel(QObject* parent = nullptr);

    /** Of a row; one without a name where there is none. */
    TableStatus status(int row) const { return m_rows.value(row).status; }
    /** The row of a table by its name; -1 when there is none. */
    int rowOf(const QString& table) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /** A version: as learnt from the service, see ZDataTableMgr::setTableVersion(); saved. */
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

public Q_SLOTS:
    void refresh();

private:
    struct Row
    {
        TableStatus status;
        QDateTime modified;
        QVariant records;
    };
    static Row rowFor(const TableStatus& status);
    static QVariant valueOf(const Row& row, int column);
    void refreshTable(const QString& table, int kind);
    void take(int row, const TableStatus& status);

    QVector<Row> m_rows;
};
