#pragma once

#include "chat/ZDoutuMgr.h"

#include <QAbstractTableModel>
#include <QMap>
#include <QVector>

/** The stickers: a row for each group, in it the stickers by their positions. */
class Stickers : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role { PathRole = Qt::UserRole + 1, AddressRole };

    explicit Stickers(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    void take();

    QMap<int, QVector<ZDoutuInfo>> m_groups;
    QVector<int> m_numbers; // of the groups, by row
    int m_most = 0;         // stickers in a group
};
