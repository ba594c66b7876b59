#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QElapsedTimer>

#include <map>
#include <optional>

/**
 * Local time as seconds since the epoch, as QDateTime tells it.
 *
 * Asking the system is what makes dates dear, so an answer is remembered with the stretch of time
 * around it that must have the same offset: no place has ever changed its clocks and changed them
 * back within three days. What is remembered is dropped when the time zone may have changed, at the
 * latest after a second.
 */
class LocalClock
{
public:
    /** Nothing for a time that a change of clocks skipped. Date and time must be valid. */
    std::optional<qint64> secondsOf(const QDate& date, const QTime& time);

    /** What QDateTime makes of no date at all, which depends on the time zone too. */
    qint64 secondsOfNoDate();

private:
    struct Stretch
    {
        qint64 last;
        qint64 offset;
    };

    void forgetWhenOld();
    void remember(qint64 local, qint64 offset);

    std::map<qint64, Stretch> m_stretches; // by their first second, which like the last is local
    std::optional<qint64> m_noDate;
    QByteArray m_zone;
    QElapsedTimer m_age;
};
