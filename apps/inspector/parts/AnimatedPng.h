#pragma once

#include <QByteArray>
#include <QImage>
#include <QVector>

/** A picture of several, and how long it stays. */
struct MovingFrame
{
    QImage image;
    int milliseconds = 0;
};

/** PNG pictures that move, of which Qt's reader has the first frame only. */
namespace AnimatedPng {

/** The frames as they are shown, each whole; none when the bytes are something else or damaged. */
QVector<MovingFrame> frames(const QByteArray& bytes);

} // namespace AnimatedPng
