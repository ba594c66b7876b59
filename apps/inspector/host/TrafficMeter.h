#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QVector>

/** The process's requests second by second while it lives. GUI thread only. */
class TrafficMeter : public QObject
{
    Q_OBJECT

public:
    /** What fell into one second. */
    struct Second
    {
        qint64 bytes = 0;
        int requests = 0;
        int failures = 0;
    };
    static constexpr int secondsKept = 120;

    explicit TrafficMeter(QObject* parent = nullptr);

    /** The last seconds up to now, the oldest first; fewer at the beginning. */
    QVector<Second> seconds() const;
    Second total() const { return m_total; }

Q_SIGNALS:
    void sigChanged();

private:
    void add(const Second& more);
    void moveOn() const;

    QElapsedTimer m_clock;
    Second m_total;
    QHash<int, qint64> m_received; // of the requests under way
    mutable QVector<Second> m_seconds;
    mutable qint64 m_last = 0; // which second the last of them is
};
