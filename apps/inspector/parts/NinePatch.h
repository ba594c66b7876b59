#pragma once

#include <QImage>
#include <QMargins>
#include <QRect>
#include <QString>

class QPainter;

/** A picture that is stretched between its borders, with what a record says of them. */
struct NinePatch
{
    QImage picture; ///< without the marks at its edges
    QMargins borders;
    QMargins padding; ///< from the borders to the text; below zero into them

    /** As the record has it: one width for all sides, or those of top, right, bottom and left. */
    static QMargins widths(const QString& text, bool* ok);

    NinePatch(const QImage& picture, const QMargins& borders, const QMargins& padding);

    /** Of the whole around such a text; never smaller than the picture. */
    QSize sizeFor(const QSize& text) const;
    QRect textIn(const QRect& place) const;
    void paint(QPainter& painter, const QRect& place) const;
};
