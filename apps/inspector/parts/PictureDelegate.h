#pragma once

#include <QSize>
#include <QStyledItemDelegate>

class Pictures;
class QAbstractItemView;

/** Shows the pictures of a view's rows as they come into view. */
class PictureDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /** The roles answer the picture's path and its address; the size is that of the picture. */
    PictureDelegate(Pictures& pictures, int pathRole, int addressRole, const QSize& size,
                    QAbstractItemView* view);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    Pictures& m_pictures;
    int m_pathRole;
    int m_addressRole;
    QSize m_size;
};
