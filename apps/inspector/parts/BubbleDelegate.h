#pragma once

#include <QStyledItemDelegate>

class Pictures;

/**
 * Draws bubble styles as a client does: the thumbnail that stands for one where it is chosen, with
 * what its row says, and below it both nine-patches around a line.
 */
class BubbleDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    BubbleDelegate(Pictures& pictures, QObject* parent);

    /** The line; where it is empty, each bubble has its style's description. */
    void setLine(const QString& line);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    struct Form;
    struct Bubble;
    Bubble bubbleOf(const QModelIndex& index) const;

    Pictures& m_pictures;
    QString m_line;
};
