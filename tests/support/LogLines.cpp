#include "support/LogLines.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex mutex;
QStringList collected;
QtMessageHandler previous = nullptr;

void collect(QtMsgType, const QMessageLogContext&, const QString& text)
{
    const QMutexLocker lock(&mutex);
    collected.append(text);
}

} // namespace

LogLines::LogLines()
{
    previous = qInstallMessageHandler(collect);
}

LogLines::~LogLines()
{
    qInstallMessageHandler(previous);
    const QMutexLocker lock(&mutex);
    collected.clear();
}

QStringList LogLines::lines()
{
    const QMutexLocker lock(&mutex);
    return collected;
}

int LogLines::count(const QString& part)
{
    return lines().filter(part).size();
}
