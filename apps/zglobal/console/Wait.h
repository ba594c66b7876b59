#pragma once

#include "console/Interrupt.h"
#include "host/zErrorInfo.h"

#include <QString>
#include <QtPromise>

#include <functional>

/**
 * Turns the event loop until the condition holds; false when that takes too long. As with
 * everything that waits here, Interrupted is thrown when the program is told to end.
 */
bool waitUntil(const std::function<bool()>& condition, int milliseconds);

/** What came of a promise. */
template <class T>
struct Outcome
{
    bool ok = false;
    QString error; ///< the rejection's message
    T value {};    ///< of a fulfilled promise
};

template <>
struct Outcome<void>
{
    bool ok = false;
    QString error;
};

/** Turns the event loop until the promise settles. */
template <class T>
Outcome<T> settled(const QtPromise::QPromise<T>& promise)
{
    Outcome<T> outcome;
    auto failed = [&outcome](const zErrorInfo& error) { outcome.error = error.message(); };
    if constexpr (std::is_void_v<T>) {
        outcome.ok = promise.tapFail(failed).wait().isFulfilled();
    } else {
        auto arrived = [&outcome](const T& value) { outcome.value = value; };
        outcome.ok = promise.tap(arrived).tapFail(failed).wait().isFulfilled();
    }
    Interrupt::check();
    return outcome;
}
