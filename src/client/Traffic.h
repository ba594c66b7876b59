#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QUrl>
#include <QtPromise>

/** Counts the requests of the process while it lives. GUI thread only. */
class Traffic : public QObject
{
    Q_OBJECT

public:
    explicit Traffic(QObject* parent);

    int started() const { return m_started; }
    qint64 received() const;

    /** How many bytes there will be: those of unknown size as large as the others on average; -1
     *  while no size is known. */
    qint64 expected() const;

    /** Forgets what has been counted; requests that are under way are not counted any more. */
    void restart();

    /** Fulfilled when no request is under way and none has followed the last. */
    QtPromise::QPromise<void> quiet();

Q_SIGNALS:
    void sigProgress(int finished, int started, qint64 received, const QUrl& url, qint64 expected);

private:
    void tell(const QUrl& url);

    int m_started = 0;
    QSet<int> m_open;    // of those counted
    QSet<int> m_running; // all
    QHash<int, qint64> m_received;
    QHash<int, qint64> m_sizes; // as far as they are known
};
