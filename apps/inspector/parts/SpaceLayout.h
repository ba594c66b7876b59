#pragma once

#include "inspector/parts/CacheScan.h"

#include <QRectF>

/** A rectangle of a space map; those in it come after it. */
struct SpaceTile
{
    const CacheEntry* entry = nullptr; ///< of the tree that is laid out
    QRectF place;
    int depth = 0; ///< 0 for what is directly in the folder
    bool hasHeading = false;
};

/** Where the entries of a folder lie when each takes room by its size. Any thread. */
namespace SpaceLayout {

/**
 * Tiles as near to squares as they come, folders with their entries in them below a heading. What
 * would be smaller than a few points is left out.
 */
QVector<SpaceTile> tiles(const CacheEntry& folder, const QSizeF& size, qreal headingHeight);

} // namespace SpaceLayout
