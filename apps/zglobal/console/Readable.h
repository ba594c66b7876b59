#pragma once

#include <QString>

/** Values as people read them. */
namespace Readable {

/** "17 KB"; thousands are powers of ten. */
QString size(qint64 bytes);

/** Local time, "2026-01-05 16:30:00", of seconds since the epoch. */
QString time(qint64 seconds);

QString yesNo(bool value);

} // namespace Readable
