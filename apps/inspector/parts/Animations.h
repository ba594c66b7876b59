#pragma once

#include "inspector/parts/AnimatedPng.h"

#include <QSize>
#include <QString>
#include <QVector>

#include <functional>

class QObject;

/** Animations as a client keeps them: a folder with the archive, the description "NAME.flajson" and
 *  the frames that it lists. */
namespace Animations {

/** What is to be played. */
struct Frames
{
    QVector<MovingFrame> shown;
    QString fault; ///< why there are none
};

/** Reads the frames of a folder, none larger than size; any thread. Frames beyond the first few
 *  hundred are passed over. */
Frames read(const QString& folder, const QSize& size);

/** Reads a picture that moves, or one frame of one that does not; any thread. */
Frames readPicture(const QString& path, const QSize& size);

/** Whether the folder has a description, which is the last thing to come out of an archive. */
bool isThere(const QString& folder);

/**
 * Downloads an archive into its folder and unpacks it there. done() is told what went wrong, or an
 * empty text, unless the receiver has gone.
 */
void fetch(const QString& folder, const QString& address, QObject* receiver,
           const std::function<void(const QString& fault)>& done);

} // namespace Animations
