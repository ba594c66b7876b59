#include "inspector/parts/DerivedColumn.h"

#include "inspector/host/ColumnTitle.h"
#include "inspector/parts/Look.h"

DerivedColumn::DerivedColumn(QAbstractItemModel* model, const char* title, Compute compute,
                             QObject* parent)
    : QIdentityProxyModel(parent)
    , m_title(title)
    , m_compute(std::move(compute))
{
    setSourceModel(model);
    // The column is none of the model's, whose indexes forget it.
    disconnect(model, &QAbstractItemModel::layoutAboutToBeChanged, this, nullptr);
    disconnect(model, &QAbstractItemModel::layoutChanged, this, nullptr);
    connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this, &DerivedColumn::holdOrder);
    connect(model, &QAbstractItemModel::layoutChanged, this, &DerivedColumn::takeOrder);
    connect(model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                Q_EMIT dataChanged(index(first.row(), place()), index(last.row(), place()));
            });
}

void DerivedColumn::tellChange()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, place()), index(rowCount() - 1, place()));
}

void DerivedColumn::holdOrder()
{
    Q_EMIT layoutAboutToBeChanged();
    m_held = persistentIndexList();
    for (const QModelIndex& held : qAsConst(m_held))
        m_rows.append(QPersistentModelIndex(mapToSource(held)));
}

void DerivedColumn::takeOrder()
{
    QModelIndexList now;
    for (int i = 0; i < m_held.size(); ++i)
        now.append(index(m_rows.at(i).row(), m_held.at(i).column()));
    changePersistentIndexList(m_held, now);
    m_held.clear();
    m_rows.clear();
    Q_EMIT layoutChanged();
}

int DerivedColumn::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : QIdentityProxyModel::columnCount(parent) + 1;
}

QModelIndex DerivedColumn::index(int row, int column, const QModelIndex& parent) const
{
    return column == place() && hasIndex(row, column, parent)
        ? createIndex(row, column)
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
    if (role == Qt::ToolTipRole)
        return Look::toolTip(m_compute(index.row()).toString());
    const bool isAsked = role == Qt::DisplayRole || role == Qt::UserRole;
    return isAsked ? m_compute(index.row()) : QVariant();
}

QVariant DerivedColumn::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section != place())
        return QIdentityProxyModel::headerData(section, orientation, role);
    return columnTitle("DerivedColumn", m_title, role);
}
