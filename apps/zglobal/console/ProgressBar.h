#pragma once

#include <QObject>
#include <QUrl>

/** The progress of a client's requests, on the error stream where that is a terminal, while it
 *  lives. */
class ProgressBar : public QObject
{
    Q_OBJECT

public:
    ProgressBar() = default;
    ~ProgressBar() override;

public Q_SLOTS:
    void show(int finished, int started, qint64 received, const QUrl& url);

private:
    bool m_drawn = false;
};
