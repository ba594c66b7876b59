#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>

#include <optional>

/**
 * Local time as seconds since the epoch, as QDateTime tells it.
 *
 * Asking the system is what makes dates dear, so time is cut into stretches of three days, and
 * where the offset is the same at both ends of one it is remembered for all of it: no place has
 * ever changed its clocks and changed them back within three days. What is remembered is dropped
 * when the time zone may have changed, at the latest after a second.
 */
class LocalClock
{
public:
    /** Nothing for a time that a change of clocks skipped. Date and time must be valid. */
    std::optional<qint64> secondsOf(const QDate& date, const QTime& time);

    /** What QDateTime makes of no date at all, which depends on the time zone too. */
    qint64 secondsOfNoDate();

    /** From hold() to release() the time zone counts as unchanged. */
    void hold();
    void release() { --m_holders; }

private:
    void forgetWhenOld();

    QHash<qint64, std::optional<qint64>> m_offsets; // by stretch; none where clocks change within
    std::optional<qint64> m_noDate;
    QByteArray m_zone;
    QElapsedTimer m_age;
    int m_holders = 0;
};
