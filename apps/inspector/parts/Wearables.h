#pragma once

#include "inspector/parts/AnimationBox.h"
#include "inspector/parts/Tiles.h"
#include "why/Explanation.h"

#include <QString>

/** What a user wears or drives, as a tile and in full, by its key. */
namespace Wearables {

struct Wearable
{
    Tile tile;
    Moving moving;
    Why::Explanation explanation; ///< facts in place of rules
};

Wearable level(const QString& key);
Wearable medal(const QString& key);
Wearable car(const QString& key);
Wearable stamp(const QString& key);
Wearable funStamp(const QString& key);

} // namespace Wearables
