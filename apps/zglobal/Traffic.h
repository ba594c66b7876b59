#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QUrl>

/**
 * The requests of the client while this object lives: counts, and a progress bar on the error
 * stream when that is a terminal.
 */
class Traffic : public QObject
{
    Q_OBJECT

public:
    Traffic();
    ~Traffic() override;

    int started() const { return m_started; }
    qint64 bytes() const;

    /** Turns the event loop until all requests have ended and none follows them; false when that
     *  takes too long. */
    bool waitUntilQuiet(int milliseconds) const;

private:
    void onFinished(int id, const QUrl& url);
    void draw(const QUrl& url);

    int m_started = 0;
    QSet<int> m_open; // not those that were under way before
    QHash<int, qint64> m_received;
};
