#pragma once

#include <QImage>
#include <QString>
#include <QVector>

#include <functional>

class QObject;

/** Animations as a client keeps them: a folder with the archive, the description "NAME.flajson" and
 *  the frames that it lists. */
namespace Animations {

/** What an animation's folder holds, to be played. */
struct Frames
{
    QVector<QImage> images;
    int framesPerSecond = 12;
    QString fault; ///< why there are none
};

/** Reads the frames, none larger than size; any thread. Frames beyond the first few hundred are
 *  passed over. */
Frames read(const QString& folder, const QSize& size);

/** Whether the folder has a description, which is the last thing to come out of an archive. */
bool isThere(const QString& folder);

/**
 * Downloads an archive into its folder and unpacks it there. done() is told what went wrong, or an
 * empty text, unless the receiver has gone.
 */
void fetch(const QString& folder, const QString& address, QObject* receiver,
           const std::function<void(const QString& fault)>& done);

} // namespace Animations
