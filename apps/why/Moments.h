#pragma once

#include <QDateTime>
#include <QString>

/** Moments as tables write them. */
namespace Moments {

/** Local time of seconds since the epoch. */
inline QString text(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

} // namespace Moments
