#pragma once

#include "inspector/parts/AnimationBox.h"
#include "inspector/parts/Tiles.h"

#include <QString>

/** Ranks, privileges and effects as they are shown. */
namespace LookTiles {

/** An award's effect, and one of recreation, by their ids. */
Tile award(const QString& id);
Tile recreation(const QString& id);

/** A privilege, which a rank may lack; 0 for no rank. */
Tile privilege(const QString& id, int rank);

/** What a rank of nobility comes with beside the privileges: bubbles, head frame, car. */
QString comesWith(const QString& rank);

/** Whether a flash animation is on the disk, or why it could not be had. */
QString stateOf(const QString& flash);

/** What a flash animation, an award and an effect of recreation play, by name or id. */
Moving flash(const QString& name);
Moving awardFlash(const QString& id);
Moving recreationAnimation(const QString& id);

} // namespace LookTiles
