#pragma once

#include "diff/Changes.h"

#include <QString>
#include <QVector>

/** A part of two texts: both have it, or one of them only. */
struct Stretch
{
    Change kind = Change::None; ///< None, Removed or Added
    QString text;
};

/** Where two texts differ: by words, and by characters in scripts that set no blanks. */
namespace TextChange {

/** The stretches of the old text, all but the added ones, and of the new, all but the removed. */
QVector<Stretch> between(const QString& before, const QString& after);

/** The same, of what both have no more than this many characters beside what differs. */
QVector<Stretch> shortened(QVector<Stretch> stretches, int context);

} // namespace TextChange
