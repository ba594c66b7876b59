#include "inspector/parts/DerivedColumn.h"

DerivedColumn::DerivedColumn(QAbstractItemModel* model, const QString& title, Compute compute,
                             QObject* parent)
    : QIdentityProxyModel(parent)
    , m_title(title)
    , m_compute(std::move(compute))
{
    setSourceModel(model);
    connect(model, &QAbstractItemModel::dataChanged, this, &DerivedColumn::tellChange);
}

void DerivedColumn::tellChange()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, place()), index(rowCount() - 1, place()));
}

int DerivedColumn::columnCount(const QModelIndex& parent) const
{
    return QIdentityProxyModel::columnCount(parent) + 1;
}

QModelIndex DerivedColumn::index(int row, int column, const QModelIndex& parent) const
{
    return column == place() && row < rowCount() ? createIndex(row, column)
                                                 : QIdentityProxyModel::index(row, column, parent);
}

QModelIndex DerivedColumn::sibling(int row, int column, const QModelIndex& /*index*/) const
{
    return index(row, column);
}

QModelIndex DerivedColumn::mapToSource(const QModelIndex& index) const
{
    // The model below has to know of some cell of that row, or a view loses what it selected.
    return index.column() == place() ? sourceModel()->index(index.row(), 0)
                                     : QIdentityProxyModel::mapToSource(index);
}

QVariant DerivedColumn::data(const QModelIndex& index, int role) const
{
    if (index.column() != place())
        return QIdentityProxyModel::data(index, role);
    const bool isAsked = role == Qt::DisplayRole || role == Qt::ToolTipRole || role == Qt::UserRole;
    return isAsked ? m_compute(index.row()) : QVariant();
}

QVariant DerivedColumn::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section != place())
        return QIdentityProxyModel::headerData(section, orientation, role);
    return role == Qt::DisplayRole ? m_title : QVariant();
}
