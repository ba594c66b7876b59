#pragma once

#include <QIdentityProxyModel>

#include <functional>

/** The same model with a column behind the others that is worked out whenever a view asks. */
class DerivedColumn : public QIdentityProxyModel
{
    Q_OBJECT

public:
    using Compute = std::function<QVariant(int row)>;

    /** The title is to be translated in the context "DerivedColumn". */
    DerivedColumn(QAbstractItemModel* model, const char* title, Compute compute,
                  QObject* parent = nullptr);

    /** Tells the views that what the column is worked out from has changed. */
    void tellChange();

    int columnCount(const QModelIndex& parent = {}) const override;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex sibling(int row, int column, const QModelIndex& index) const override;
    QModelIndex mapToSource(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    int place() const { return sourceModel()->columnCount(); }
    void holdOrder();
    void takeOrder();

    const char* m_title;
    Compute m_compute;
    QModelIndexList m_held; // while the rows change their order
    QVector<QPersistentModelIndex> m_rows;
};
