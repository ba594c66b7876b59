#include "datatable/LocalClock.h"

#include <iterator>

namespace {

constexpr qint64 secondsOfDay = 86400;
constexpr qint64 sameOffsetWithin = 3 * secondsOfDay;
constexpr qint64 maxAge = 1000; // milliseconds

qint64 localSeconds(const QDate& date, const QTime& time)
{
    return date.toJulianDay() * secondsOfDay + time.msecsSinceStartOfDay() / 1000;
}

} // namespace

std::optional<qint64> LocalClock::secondsOf(const QDate& date, const QTime& time)
{
    forgetWhenOld();
    const qint64 local = localSeconds(date, time);
    const auto after = m_stretches.upper_bound(local);
    if (after != m_stretches.begin()) {
        const Stretch& stretch = std::prev(after)->second;
        if (local <= stretch.last)
            return local - stretch.offset;
    }
    const QDateTime asked(date, time);
    if (!asked.isValid())
        return std::nullopt;
    const qint64 seconds = asked.toSecsSinceEpoch();
    remember(local, local - seconds);
    return seconds;
}

qint64 LocalClock::secondsOfNoDate()
{
    forgetWhenOld();
    if (!m_noDate)
        m_noDate = QDateTime().toSecsSinceEpoch();
    return *m_noDate;
}

void LocalClock::forgetWhenOld()
{
    const QByteArray zone = qgetenv("TZ");
    if (m_age.isValid() && m_age.elapsed() < maxAge && zone == m_zone)
        return;
    m_stretches.clear();
    m_noDate.reset();
    m_zone = zone;
    m_age.start();
}

void LocalClock::remember(qint64 local, qint64 offset)
{
    const auto joins = [offset](const Stretch& stretch, qint64 distance) {
        return stretch.offset == offset && distance <= sameOffsetWithin;
    };
    auto after = m_stretches.upper_bound(local);
    qint64 first = local;
    qint64 last = local;
    if (after != m_stretches.end() && joins(after->second, after->first - local)) {
        last = after->second.last;
        after = m_stretches.erase(after);
    }
    if (after != m_stretches.begin()) {
        const auto before = std::prev(after);
        if (joins(before->second, local - before->second.last))
            first = before->first;
    }
    m_stretches[first] = {last, offset};
}
