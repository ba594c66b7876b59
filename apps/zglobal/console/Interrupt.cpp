#include "console/Interrupt.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <csignal>

namespace {

volatile std::sig_atomic_t caught = 0;

void onSignal(int number)
{
    caught = number;
    std::signal(number, SIG_DFL);
}

} // namespace

void Interrupt::watch()
{
    constexpr int interval = 50; // milliseconds; a handler may not do more than set a flag
    std::signal(SIGINT, &onSignal);
    std::signal(SIGTERM, &onSignal);
    auto* timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, [] {
        if (caught != 0)
            QCoreApplication::exit(); // every event loop, nested ones too, and those to come
    });
    timer->start(interval);
}

void Interrupt::release()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    check();
}

void Interrupt::check()
{
    constexpr int bySignal = 128;
    if (caught != 0)
        throw Interrupted {bySignal + caught};
}

void Interrupt::wait()
{
    while (caught == 0)
        QEventLoop().exec();
}
