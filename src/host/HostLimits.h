#pragma once

#include <QtGlobal>

/** How much the host reads and unpacks before it takes the input for a fault or an attack. */
namespace HostLimits {

/** A table file larger than this is not read. */
constexpr qint64 maxTableBytes = 64LL * 1024 * 1024;

/** An archive may hold this many files and folders, folders that are only part of a file's name
 *  included. */
constexpr int maxArchiveEntries = 10000;

/** What an archive may unpack to, counted in bytes that really come out of it. */
constexpr qint64 maxUnpackedBytes = 512LL * 1024 * 1024;

/** What may come out of an archive for each byte of it. Pictures and animation texts stay below 50;
 *  only from freeUnpackedBytes on is it looked at, since tiny archives are all overhead. */
constexpr qint64 maxUnpackRatio = 200;
constexpr qint64 freeUnpackedBytes = 1024LL * 1024;

} // namespace HostLimits
