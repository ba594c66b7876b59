#include "signals/Termination.h"

#include <QCoreApplication>
#include <QTimer>

#include <csignal>

namespace {

volatile std::sig_atomic_t signalCaught = 0;

void onSignal(int number)
{
    signalCaught = number;
    std::signal(number, SIG_DFL);
}

} // namespace

void Termination::watch(const std::function<void()>& told)
{
    constexpr int interval = 50; // milliseconds; a handler may not do more than set a flag
    std::signal(SIGINT, &onSignal);
    std::signal(SIGTERM, &onSignal);
    auto* timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, [told] {
        if (signalCaught != 0)
            told();
    });
    timer->start(interval);
}

void Termination::release()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

int Termination::caught()
{
    return signalCaught;
}
