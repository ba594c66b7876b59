#pragma once

#include <QStyledItemDelegate>

class Pictures;

/** Draws bubble styles around a line as a client draws them, and below each what its row says. */
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
    struct Bubble;
    Bubble bubbleOf(const QModelIndex& index) const;

    Pictures& m_pictures;
    QString m_line;
};
