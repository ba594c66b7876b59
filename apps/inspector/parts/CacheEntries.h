#pragma once

#include "inspector/parts/CacheScan.h"

#include <QAbstractTableModel>

class TidyVerdicts;

/** Files and folders of the cache, with what tidying does with each. */
class CacheEntries : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Size, Tidying, Why, Files, Modified, ColumnCount };

    /** The verdicts outlive the model. */
    explicit CacheEntries(const TidyVerdicts& verdicts, QObject* parent = nullptr);

    /** Shows entries of a tree. */
    void show(const CacheTree& tree, const QVector<const CacheEntry*>& entries);
    /** Tells that the verdicts are others now. */
    void judge();

    const CacheEntry* entry(int row) const { return m_entries.value(row); }
    /** The row that shows a path or what it is in; -1 when none does. */
    int rowOf(const QString& path) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    QVariant value(const CacheEntry& entry, int column) const;
    QVariant shown(const CacheEntry& entry, int column) const;
    QVariant look(const CacheEntry& entry, int column, int role) const;

    const TidyVerdicts& m_verdicts;
    CacheTree m_tree;
    QVector<const CacheEntry*> m_entries; // of the tree
};
