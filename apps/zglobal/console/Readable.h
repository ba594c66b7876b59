#pragma once

#include <QDateTime>
#include <QString>

/** Values as people read them. */
namespace Readable {

/** "17 KB"; thousands are powers of ten. */
QString size(qint64 bytes);

/** Local time, "2026-01-05 16:30:00", of seconds since the epoch. */
QString time(qint64 seconds);
QString time(const QDateTime& moment);

/** The moment that a text such as time() gives names; none that is valid for any other text. */
QDateTime moment(const QString& text);

/** "2 days ago", "in 3 weeks"; now is in seconds since the epoch too. */
QString age(qint64 seconds, qint64 now = QDateTime::currentSecsSinceEpoch());

/** How long something takes: "45 s", "3 min 20 s", "2 h 5 min". */
QString duration(qint64 seconds);

/** "1 table", "2 tables". */
QString counted(qint64 count, const QString& thing);

QString yesNo(bool value);

} // namespace Readable
