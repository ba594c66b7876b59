#include "inspector/parts/NinePatch.h"

#include <QPainter>
#include <QPixmap>
#include <QStringList>
#include <qdrawutil.h>

#include <algorithm>

namespace {

/** Whether the outermost pixels are none of the picture: black marks, or nothing. */
bool hasMarks(const QImage& picture)
{
    if (picture.width() < 3 || picture.height() < 3)
        return false;
    const auto isMark = [&](int x, int y) {
        const QRgb pixel = picture.pixel(x, y);
        return qAlpha(pixel) == 0 || pixel == qRgb(0, 0, 0);
    };
    const int right = picture.width() - 1;
    const int bottom = picture.height() - 1;
    for (int x = 0; x <= right; ++x) {
        if (!isMark(x, 0) || !isMark(x, bottom))
            return false;
    }
    for (int y = 0; y <= bottom; ++y) {
        if (!isMark(0, y) || !isMark(right, y))
            return false;
    }
    return true;
}

QMargins atLeastNone(const QMargins& margins)
{
    return {std::max(0, margins.left()), std::max(0, margins.top()), std::max(0, margins.right()),
            std::max(0, margins.bottom())};
}

} // namespace

QMargins NinePatch::widths(const QString& text, bool* ok)
{
    QVector<int> sides;
    const QStringList parts = text.split(u',');
    *ok = true;
    for (const QString& part : parts) {
        bool isNumber = false;
        sides.append(part.trimmed().toInt(&isNumber));
        *ok = *ok && isNumber;
    }
    *ok = *ok && (sides.size() == 1 || sides.size() == 4);
    if (!*ok)
        return {};
    if (sides.size() == 1)
        sides = {sides.first(), sides.first(), sides.first(), sides.first()};
    return {sides.at(3), sides.at(0), sides.at(1), sides.at(2)};
}

NinePatch::NinePatch(const QImage& whole, const QMargins& widths, const QMargins& inside)
    : picture(whole)
    , borders(atLeastNone(widths))
    , padding(inside)
{
    if (!hasMarks(whole))
        return;
    // The widths are those of the picture as it is published, marks included.
    picture = whole.copy(whole.rect().adjusted(1, 1, -1, -1));
    borders = atLeastNone(borders - QMargins(1, 1, 1, 1));
}

QSize NinePatch::sizeFor(const QSize& text) const
{
    const QMargins inset = atLeastNone(borders + padding);
    return text.grownBy(inset).expandedTo(picture.size());
}

QRect NinePatch::textIn(const QRect& place) const
{
    return place.marginsRemoved(atLeastNone(borders + padding));
}

void NinePatch::paint(QPainter& painter, const QRect& place) const
{
    const bool fits = borders.left() + borders.right() < picture.width()
        && borders.top() + borders.bottom() < picture.height();
    qDrawBorderPixmap(&painter, place, fits ? borders : QMargins(), QPixmap::fromImage(picture));
}
