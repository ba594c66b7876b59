#include "console/Wait.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

bool waitUntil(const std::function<bool()>& condition, int milliseconds)
{
    constexpr int interval = 10;
    bool holds = condition();
    if (holds)
        return true;
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds || clock.hasExpired(milliseconds))
            loop.quit();
    });
    timer.start(interval);
    loop.exec();
    Interrupt::check();
    return holds;
}
