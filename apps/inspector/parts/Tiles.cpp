#include "inspector/parts/Tiles.h"

#include "inspector/parts/CopiedRows.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/Pictures.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include <utility>

namespace {

constexpr int edge = 6;
constexpr qreal dimmed = 0.35;

int lineHeight(const QStyleOptionViewItem& option)
{
    return option.fontMetrics.height();
}

QPalette::ColorRole textRole(const QStyleOptionViewItem& option)
{
    return option.state.testFlag(QStyle::State_Selected) ? QPalette::HighlightedText
                                                         : QPalette::Text;
}

void drawLine(QPainter& painter, const QRect& line, const QString& text)
{
    const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, line.width());
    painter.drawText(line, Qt::AlignCenter, shown);
}

/** Readable on the colour. */
QColor inkOn(const QColor& colour)
{
    return qGray(colour.rgb()) > 150 ? QColor(Qt::black) : QColor(Qt::white);
}

} // namespace

TileDelegate::TileDelegate(Pictures& pictures, const QSize& picture, TileOf tileOf,
                           QAbstractItemView* view)
    : QStyledItemDelegate(view)
    , m_pictures(pictures)
    , m_picture(picture)
    , m_tileOf(std::move(tileOf))
{
    connect(&pictures, &Pictures::sigLoaded, view->viewport(), QOverload<>::of(&QWidget::update));
}

QSize TileDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    const int text = option.fontMetrics.horizontalAdvance(QStringLiteral("from 2000-00-00"));
    return {qMax(m_picture.width() + edge, text) + edge,
            m_picture.height() + 3 * lineHeight(option) + 3 * edge};
}

void TileDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    const Tile tile = m_tileOf(index);
    const QStyle* style = option.widget == nullptr ? QApplication::style() : option.widget->style();
    QStyleOptionViewItem panel = option;
    panel.showDecorationSelected = true;
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &panel, painter, option.widget);
    painter->save();
    const QRect inside = option.rect.adjusted(edge / 2, edge, -edge / 2, -edge);
    paintPicture(*painter, inside, tile);
    const QColor ink = option.palette.color(QPalette::Active, textRole(option));
    QRect line(inside.left(), inside.top() + m_picture.height() + edge / 2, inside.width(),
               lineHeight(option));
    painter->setPen(ink);
    drawLine(*painter, line, tile.title);
    line.translate(0, line.height());
    QColor faint = ink;
    faint.setAlphaF(0.65F);
    painter->setPen(faint);
    drawLine(*painter, line, tile.below);
    line.translate(0, line.height());
    painter->setPen(textRole(option) == QPalette::Text ? Look::faultColour(option.palette) : ink);
    drawLine(*painter, line, tile.fault);
    if (!tile.badge.isEmpty())
        paintBadge(*painter, inside, tile);
    painter->restore();
}

void TileDelegate::paintPicture(QPainter& painter, const QRect& inside, const Tile& tile) const
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QImage image = m_pictures.get(tile.path, tile.address, m_picture * ratio);
    if (image.isNull())
        return;
    const bool fits = QRect(QPoint(), m_picture).contains(image.rect());
    QRectF place(QPointF(),
                 fits ? image.size() : image.size().scaled(m_picture, Qt::KeepAspectRatio));
    place.moveCenter(QPointF(inside.center().x(), inside.top() + m_picture.height() / 2.0));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(tile.fault.isEmpty() ? 1 : dimmed);
    painter.drawImage(place, image);
    painter.setOpacity(1);
}

void TileDelegate::paintBadge(QPainter& painter, const QRect& place, const Tile& tile) const
{
    const QFontMetrics metrics = painter.fontMetrics();
    const int width = metrics.horizontalAdvance(tile.badge) + 2 * edge;
    const QRectF badge(place.left(), place.top(), width, metrics.height() + 2);
    QLinearGradient gradient(badge.topLeft(), badge.topRight());
    gradient.setColorAt(0, tile.badgeStart);
    gradient.setColorAt(1, tile.badgeEnd);
    QPainterPath path;
    path.addRoundedRect(badge.adjusted(0.5, 0.5, -0.5, -0.5), badge.height() / 2,
                        badge.height() / 2);
    painter.setRenderHint(QPainter::Antialiasing);
    if (tile.badgeHolds) {
        painter.fillPath(path, gradient);
        painter.setPen(inkOn(tile.badgeStart));
    } else {
        painter.setPen(QPen(QBrush(gradient), 1));
        painter.drawPath(path);
    }
    painter.drawText(badge, Qt::AlignCenter, tile.badge);
}

TileView::TileView(QWidget* parent)
    : QListView(parent)
{
    setViewMode(QListView::IconMode);
    setResizeMode(QListView::Adjust);
    setMovement(QListView::Static);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSpacing(2);
    CopiedRows::addActions(*this);
}
