#pragma once

#include <QHash>
#include <QObject>
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
    int finished() const { return m_finished; }
    int failed() const { return m_failed; }
    qint64 bytes() const;

private:
    void onFinished(int id, const QUrl& url, bool ok);
    void draw(const QUrl& url);

    int m_started = 0;
    int m_finished = 0;
    int m_failed = 0;
    QHash<int, qint64> m_received;
};
