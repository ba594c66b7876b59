#pragma once

#include <QStringList>

/** Collects the log while it lives, from every thread; one at a time. */
class LogLines
{
public:
    LogLines();
    ~LogLines();
    Q_DISABLE_COPY(LogLines)

    /** The lines so far, in order, without level or category. */
    static QStringList lines();
    /** Those of one level. */
    static QStringList lines(QtMsgType level);
    static int count(const QString& part);
};
