#include "datatable/LocalClock.h"

namespace {

constexpr int daysOfStretch = 3;
constexpr int firstHour = 17; // of a stretch: no clock is known to have been changed at this hour
constexpr qint64 secondsOfDay = 86400;
constexpr qint64 maxAge = 1000; // milliseconds

qint64 localSeconds(const QDate& date, const QTime& time)
{
    return date.toJulianDay() * secondsOfDay + time.msecsSinceStartOfDay() / 1000;
}

std::optional<qint64> askedOf(const QDate& date, const QTime& time)
{
    const QDateTime asked(date, time);
    return asked.isValid() ? std::optional(asked.toSecsSinceEpoch()) : std::nullopt;
}

/** How far local time is ahead on a day at that hour. */
std::optional<qint64> offsetAt(qint64 julianDay)
{
    const QDate date = QDate::fromJulianDay(julianDay);
    const QTime time(firstHour, 0);
    const std::optional<qint64> seconds = askedOf(date, time);
    return seconds ? std::optional(localSeconds(date, time) - *seconds) : std::nullopt;
}

/** Of a stretch, where it is the same at both ends. */
std::optional<qint64> offsetWithin(qint64 stretch)
{
    const std::optional<qint64> first = offsetAt(stretch * daysOfStretch);
    return first == offsetAt((stretch + 1) * daysOfStretch) ? first : std::nullopt;
}

} // namespace

std::optional<qint64> LocalClock::secondsOf(const QDate& date, const QTime& time)
{
    forgetWhenOld();
    const qint64 local = localSeconds(date, time);
    // Julian days are positive since long before the first date of a calendar.
    const qint64 stretch = (local - firstHour * qint64(3600)) / (daysOfStretch * secondsOfDay);
    const auto offset = m_offsets.constFind(stretch);
    if (offset != m_offsets.constEnd() && *offset)
        return local - **offset;
    // First of all: of an hour that a change of clocks repeats, the answer hangs on what was asked
    // before.
    const std::optional<qint64> seconds = askedOf(date, time);
    if (offset == m_offsets.constEnd())
        m_offsets.insert(stretch, offsetWithin(stretch));
    return seconds;
}

qint64 LocalClock::secondsOfNoDate()
{
    forgetWhenOld();
    if (!m_noDate)
        m_noDate = QDateTime().toSecsSinceEpoch();
    return *m_noDate;
}

void LocalClock::hold()
{
    forgetWhenOld();
    ++m_holders;
}

void LocalClock::forgetWhenOld()
{
    if (m_holders > 0)
        return;
    const QByteArray zone = qgetenv("TZ");
    if (m_age.isValid() && m_age.elapsed() < maxAge && zone == m_zone)
        return;
    m_offsets.clear();
    m_noDate.reset();
    m_zone = zone;
    m_age.start();
}
