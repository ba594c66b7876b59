#include "console/Readable.h"

#include "console/Literals.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

QString timeFormat()
{
    return u"yyyy-MM-dd HH:mm:ss"_s;
}

struct Unit
{
    qint64 from; // seconds; from two on, as 13 days would be "1 week" otherwise
    qint64 seconds;
    const char* name;
};

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr qint64 day = 24 * hour;
constexpr qint64 year = 365 * day;
constexpr std::array<Unit, 7> units {{{2 * year, year, "year"},
                                      {60 * day, 30 * day, "month"},
                                      {14 * day, 7 * day, "week"},
                                      {2 * day, day, "day"},
                                      {2 * hour, hour, "hour"},
                                      {minute, minute, "minute"},
                                      {0, 0, ""}}};

} // namespace

QString Readable::size(qint64 bytes)
{
    constexpr qint64 kilo = 1000;
    constexpr qint64 mega = kilo * kilo;
    constexpr qint64 giga = kilo * mega;
    if (bytes < kilo)
        return u"%1 B"_s.arg(bytes);
    if (bytes < mega - kilo / 2) // what would be rounded to the next unit is told in that
        return u"%1 KB"_s.arg((bytes + kilo / 2) / kilo);
    if (bytes < giga - mega / 20)
        return u"%1 MB"_s.arg(static_cast<double>(bytes) / mega, 0, 'f', 1);
    return u"%1 GB"_s.arg(static_cast<double>(bytes) / giga, 0, 'f', 1);
}

QString Readable::time(qint64 seconds)
{
    return time(QDateTime::fromSecsSinceEpoch(seconds));
}

QString Readable::time(const QDateTime& moment)
{
    return moment.toLocalTime().toString(timeFormat());
}

QDateTime Readable::moment(const QString& text)
{
    return QDateTime::fromString(text, timeFormat());
}

QString Readable::age(qint64 seconds, qint64 now)
{
    const qint64 span = std::abs(now - seconds);
    const auto* unit = std::find_if(units.begin(), units.end() - 1,
                                    [span](const Unit& one) { return span >= one.from; });
    if (unit->seconds == 0)
        return seconds > now ? u"in a moment"_s : u"just now"_s;
    const QString count = counted(span / unit->seconds, QLatin1String(unit->name));
    return seconds > now ? u"in "_s + count : count + u" ago"_s;
}

QString Readable::duration(qint64 seconds)
{
    constexpr int sixty = 60;
    if (seconds < sixty)
        return u"%1 s"_s.arg(seconds);
    const qint64 minutes = seconds / sixty;
    if (minutes < sixty)
        return u"%1 min %2 s"_s.arg(minutes).arg(seconds % sixty);
    return u"%1 h %2 min"_s.arg(minutes / sixty).arg(minutes % sixty);
}

QString Readable::counted(qint64 count, const QString& thing)
{
    return u"%1 %2%3"_s.arg(QString::number(count), thing, count == 1 ? QString() : u"s"_s);
}

QString Readable::yesNo(bool value)
{
    return value ? u"yes"_s : u"no"_s;
}
