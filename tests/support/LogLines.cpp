#include "support/LogLines.h"

#include <QVector>

#include <mutex>

namespace {

std::mutex mutex; // one that the thread sanitizer sees
QVector<QPair<QtMsgType, QString>> collected;
QtMessageHandler previous = nullptr;

void collect(QtMsgType level, const QMessageLogContext&, const QString& text)
{
    const std::lock_guard lock(mutex);
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
    const std::lock_guard lock(mutex);
    collected.clear();
}

QStringList LogLines::lines(int level)
{
    const std::lock_guard lock(mutex);
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
