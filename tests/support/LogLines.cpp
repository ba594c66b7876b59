#include "support/LogLines.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex mutex;
QVector<QPair<QtMsgType, QString>> collected;
QtMessageHandler previous = nullptr;

void collect(QtMsgType level, const QMessageLogContext&, const QString& text)
{
    const QMutexLocker lock(&mutex);
    collected.append({level, text});
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

QStringList LogLines::lines(int level)
{
    const QMutexLocker lock(&mutex);
    QStringList lines;
    for (const auto& line : qAsConst(collected)) {
        if (level < 0 || line.first == level)
            lines.append(line.second);
    }
    return lines;
}

int LogLines::count(const QString& part)
{
    return lines().filter(part).size();
}
