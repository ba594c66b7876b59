#pragma once

#include <QStringList>

/** Collects the log while it lives, from every thread; one at a time. */
class LogLines
{
public:
    LogLines();
    ~LogLines();
    Q_DISABLE_COPY(LogLines)

    /** The lines so far, of one level or of all, in order, without level or category. */
    static QStringList lines(int level = -1);
    static int count(const QString& part);
};
