#pragma once

#include <QIdentityProxyModel>
#include <QSet>
#include <QVector>

/**
 * The same model with its last changes highlighted: rows that came in, cells that are others now.
 * They stay so until they are to be forgotten, or the model is reset.
 */
class ChangeMarks : public QIdentityProxyModel
{
    Q_OBJECT

public:
    using QIdentityProxyModel::QIdentityProxyModel;

    void setSourceModel(QAbstractItemModel* model) override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    void forget();

    /** How many rows are highlighted, and how many have gone. */
    int marked() const;
    int gone() const { return m_gone; }

private:
    void clear();
    void insert(int first, int last);
    void remove(int first, int last);
    void change(int first, int last, int firstColumn, int lastColumn);
    void holdOrder();
    void takeOrder();

    /** The columns of a row that are highlighted, the first and the last. */
    struct Mark
    {
        int first = 0;
        int last = -1;
    };
    QVector<Mark> m_marks;                 // by row
    QVector<QPersistentModelIndex> m_held; // while the rows change their order
    QVector<Mark> m_heldMarks;
    int m_gone = 0;
};
