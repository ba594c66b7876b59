#include "console/Log.h"

#include "console/Literals.h"
#include "console/Terminal.h"
#include "console/Wait.h"

#include <QMutex>
#include <QtGlobal>

#include <algorithm>

namespace {

struct Kept
{
    QMutex mutex;
    QStringList lines;
    bool verbose = false;
};

Kept& kept()
{
    // Never destroyed: other threads may have something to say until the process is gone.
    static Kept& instance = *new Kept;
    return instance;
}

QString nameOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return u"debug"_s;
    case QtInfoMsg:
        return u"info"_s;
    case QtWarningMsg:
        return u"warning"_s;
    default:
        return u"error"_s;
    }
}

void handle(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    {
        const QMutexLocker lock(&kept().mutex);
        kept().lines.append(text);
    }
    if (kept().verbose || (type != QtDebugMsg && type != QtInfoMsg))
        Terminal::tell(u"%1: %2"_s.arg(nameOf(type), text));
}

} // namespace

void Log::install(bool verbose)
{
    kept().verbose = verbose;
    qInstallMessageHandler(&handle);
}

QStringList Log::lines()
{
    const QMutexLocker lock(&kept().mutex);
    return kept().lines;
}

void Log::restart()
{
    const QMutexLocker lock(&kept().mutex);
    kept().lines.clear();
}

bool Log::waitFor(const QString& text, int milliseconds)
{
    return waitUntil([&text] { return !lines().filter(text).isEmpty(); }, milliseconds);
}
