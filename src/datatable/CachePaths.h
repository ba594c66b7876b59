#pragma once

#include "ZGlobalExport.h"

#include <QString>

/**
 * Paths below "res/" that are made of names out of tables. The managers answer such paths as they
 * are made; whether a file may be put there is asked here. Any thread.
 */
namespace CachePaths {

/**
 * Whether a path, relative to the working directory, stays below "res/" on every system: no "..",
 * no separator of another system, no drive, no control character, no reserved device name.
 */
ZGLOBAL_EXPORT bool staysInCache(const QString& path);

/**
 * Whether the library may write or remove something at the path: it stays below "res/", or was
 * never meant to be there. The log tells of one that may not be used, once.
 */
bool mayBeUsed(const QString& path);

/**
 * Whether a name out of a table may be that of one file or folder: without a separator, and good on
 * every system. The log tells of one that may not, once.
 */
bool mayBeName(const QString& name);

/** Why it may not, as in "is empty"; an empty text when it may. */
ZGLOBAL_EXPORT QString nameFault(const QString& name);

} // namespace CachePaths
