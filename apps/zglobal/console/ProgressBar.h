#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QUrl>

/** The progress of a client's requests, on the error stream where that is a terminal, while it
 *  lives. */
class ProgressBar : public QObject
{
    Q_OBJECT

public:
    ProgressBar();
    ~ProgressBar() override;

public Q_SLOTS:
    /** As ZGlobalClient::sigProgress() tells it. */
    void show(int finished, int started, qint64 received, const QUrl& url, qint64 expected);

private:
    QString timeLeft(qint64 received, qint64 expected) const;

    QElapsedTimer m_clock;
    qint64 m_shown = -1; // when, in milliseconds; -1 while nothing stands there
};
