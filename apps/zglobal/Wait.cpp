#include "Wait.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

bool waitUntil(const std::function<bool()>& condition, int milliseconds)
{
    constexpr int interval = 10;
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (condition() || clock.hasExpired(milliseconds))
            loop.quit();
    });
    timer.start(interval);
    if (!condition())
        loop.exec();
    return condition();
}
