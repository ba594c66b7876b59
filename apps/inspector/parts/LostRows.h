#pragma once

#include "why/RawTable.h"

#include <QAbstractTableModel>

#include <memory>

/** The rows of a table's file that became no record, with what became of them. */
class LostRows : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /** Null for none. */
    void setFile(const std::shared_ptr<const Why::RawTable>& file);

    /** A row of this model; null when there is no such row. */
    const Why::RawRow* row(int row) const;
    /** The first of this id; -1 when there is none. */
    int rowOf(const QString& id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    enum Column { Number, Id, Name, Fate, ColumnCount };

    std::shared_ptr<const Why::RawTable> m_file;
    QVector<int> m_rows; // their places in the file
};
