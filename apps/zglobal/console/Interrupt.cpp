#include "console/Interrupt.h"

#include "signals/Termination.h"

#include <QCoreApplication>
#include <QEventLoop>

void Interrupt::watch()
{
    Termination::watch([] { QCoreApplication::exit(); });
}

void Interrupt::release()
{
    Termination::release();
    check();
}

void Interrupt::check()
{
    constexpr int bySignal = 128;
    const int caught = Termination::caught();
    if (caught != 0)
        throw Interrupted {bySignal + caught};
}

void Interrupt::wait()
{
    while (Termination::caught() == 0)
        QEventLoop().exec();
}
