#pragma once

#include <QElapsedTimer>
#include <QString>

/**
 * What is being worked at, on the error stream where that is a terminal, while it lives and once it
 * lives longer than a second.
 */
class WorkLine
{
public:
    /** What is done with everything, as in "looking over". */
    explicit WorkLine(const QString& work);
    ~WorkLine();
    Q_DISABLE_COPY(WorkLine)

    /** Begins with the next thing; throws Interrupted when the program has been told to end. */
    void next(const QString& what);

private:
    QString m_work;
    QElapsedTimer m_clock;
    bool m_isShown = false;
};
