#pragma once

#include <QColor>
#include <QListView>
#include <QString>
#include <QStyledItemDelegate>

#include <functional>

class Pictures;

/** What a tile shows of a thing. */
struct Tile
{
    QString path; ///< of the picture, and where it comes from
    QString address;
    QString title;
    QString below;
    QString fault; ///< why the thing is not to be had; the tile is dimmed then
    QString badge; ///< a short word in a corner, on a gradient
    QColor badgeStart;
    QColor badgeEnd;
    bool badgeHolds = true; ///< else it is drawn as an outline
};

/** Paints a row as a tile: a picture, two lines, what is wrong, a badge. */
class TileDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using TileOf = std::function<Tile(const QModelIndex& index)>;

    TileDelegate(Pictures& pictures, const QSize& picture, TileOf tileOf, QAbstractItemView* view);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    void paintPicture(QPainter& painter, const QRect& inside, const Tile& tile) const;
    void paintBadge(QPainter& painter, const QRect& place, const Tile& tile) const;

    Pictures& m_pictures;
    QSize m_picture;
    TileOf m_tileOf;
};

/** The rows of a model as tiles in lines, which are copied as rows are. */
class TileView : public QListView
{
    Q_OBJECT

public:
    explicit TileView(QWidget* parent = nullptr);
};
