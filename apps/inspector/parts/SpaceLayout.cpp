#include "inspector/parts/SpaceLayout.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qreal smallestArea = 6; // that anybody sees
constexpr qreal smallestFolder = 150;
constexpr qreal margin = 2;

class Layout
{
public:
    explicit Layout(qreal headingHeight)
        : m_headingHeight(headingHeight)
    {
    }

    /** Row after row along the shorter side, each as long as that makes its tiles squarer. */
    void fill(const CacheEntry& folder, QRectF place, int depth)
    {
        qreal bytesLeft = static_cast<qreal>(folder.bytes);
        const auto& entries = folder.entries;
        auto next = entries.begin();
        while (next != entries.end() && next->bytes > 0) {
            const qreal scale = place.width() * place.height() / bytesLeft;
            if (static_cast<qreal>(next->bytes) * scale < smallestArea)
                return; // and so are all that follow
            const qreal side = std::min(place.width(), place.height());
            qreal area = 0;
            const auto end = endOfRow(next, entries.end(), side, scale, &area);
            putRow(next, end, takeRow(place, area / side), scale, depth);
            bytesLeft -= area / scale;
            next = end;
        }
    }

    QVector<SpaceTile> tiles;

private:
    using Iterator = QVector<CacheEntry>::const_iterator;

    static Iterator endOfRow(Iterator first, Iterator end, qreal side, qreal scale, qreal* area)
    {
        const qreal largest = static_cast<qreal>(first->bytes) * scale;
        qreal worst = std::numeric_limits<qreal>::max();
        Iterator next = first;
        for (; next != end && next->bytes > 0; ++next) {
            const qreal own = static_cast<qreal>(next->bytes) * scale;
            const qreal sum = *area + own;
            const qreal ratio =
                std::max(side * side * largest / (sum * sum), sum * sum / (side * side * own));
            if (ratio > worst)
                break;
            worst = ratio;
            *area = sum;
        }
        return next;
    }

    static QRectF takeRow(QRectF& place, qreal thickness)
    {
        QRectF row = place;
        if (place.width() > place.height()) {
            row.setWidth(thickness);
            place.setLeft(row.right());
        } else {
            row.setHeight(thickness);
            place.setTop(row.bottom());
        }
        return row;
    }

    void putRow(Iterator next, Iterator end, QRectF row, qreal scale, int depth)
    {
        const bool isColumn = row.height() > row.width();
        const qreal thickness = isColumn ? row.width() : row.height();
        for (; next != end; ++next) {
            const qreal length = static_cast<qreal>(next->bytes) * scale / thickness;
            QRectF tile = row;
            if (isColumn) {
                tile.setHeight(length);
                row.setTop(tile.bottom());
            } else {
                tile.setWidth(length);
                row.setLeft(tile.right());
            }
            put(*next, tile, depth);
        }
    }

    void put(const CacheEntry& entry, const QRectF& place, int depth)
    {
        const bool opens = entry.isFolder && place.width() * place.height() > smallestFolder;
        const bool hasHeading =
            opens && place.height() > 3 * m_headingHeight && place.width() > 3 * m_headingHeight;
        tiles.append({&entry, place, depth, hasHeading});
        const QRectF inside =
            place.adjusted(margin, hasHeading ? m_headingHeight : margin, -margin, -margin);
        if (opens && inside.width() > margin && inside.height() > margin)
            fill(entry, inside, depth + 1);
    }

    qreal m_headingHeight;
};

} // namespace

QVector<SpaceTile> SpaceLayout::tiles(const CacheEntry& folder, const QSizeF& size,
                                      qreal headingHeight)
{
    Layout layout(headingHeight);
    if (!size.isEmpty())
        layout.fill(folder, QRectF(QPointF(0, 0), size), 0);
    return layout.tiles;
}
