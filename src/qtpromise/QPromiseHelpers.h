#pragma once

#include "QPromise.h"

#include <QMetaObject>
#include <QObject>
#include <QVector>

#include <array>
#include <mutex>
#include <vector>

namespace QtPromise {

/** A promise fulfilled with this value, its type deduced. */
template <typename T>
QPromise<std::decay_t<T>> resolve(T&& value)
{
    return QPromise<std::decay_t<T>>::resolve(std::forward<T>(value));
}
inline QPromise<void> resolve()
{
    return QPromise<void>::resolve();
}

/** A promise is itself. */
template <typename T>
QPromise<T> resolve(QPromise<T> promise)
{
    return promise;
}

/** Calls function with these arguments at once: the promise of what it returns or throws. */
template <typename F, typename... Args>
auto attempt(F&& function, Args&&... args)
{
    using Result = typename detail::Unwrapped<std::invoke_result_t<F, Args...>>::Type;
    auto output = std::make_shared<detail::State<Result>>();
    detail::settleWith(output, [&]() -> decltype(auto) {
        return std::invoke(std::forward<F>(function), std::forward<Args>(args)...);
    });
    return detail::Access::promise(std::move(output));
}

namespace detail {

/** The values that have come in so far of those that all() waits for. */
template <typename T>
class Gathering
{
public:
    explicit Gathering(std::size_t count)
        : m_missing(count)
        , m_values(count)
    {
    }

    /** True for the last one missing. */
    bool add(std::size_t index, typename State<T>::Value value)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_values[index] = std::move(value);
        return --m_missing == 0;
    }

    /** The values in the order of the promises. */
    QVector<T> result() const
    {
        QVector<T> result;
        result.reserve(int(m_values.size()));
        for (const auto& value : m_values) {
            result.append(*value);
        }
        return result;
    }

private:
    std::mutex m_mutex;
    std::size_t m_missing;
    std::vector<typename State<T>::Value> m_values;
};

} // namespace detail

/**
 * The promise of all values of a list (QVector, QList, std::vector) of promises, in its order; of
 * void for promises of void. The first rejection rejects it at once. An empty list is fulfilled.
 */
template <typename Sequence>
auto all(const Sequence& promises)
{
    using T = typename Sequence::value_type::Type;
    using Result = std::conditional_t<std::is_void_v<T>, void, QVector<T>>;
    auto output = std::make_shared<detail::State<Result>>();
    const auto gathering = std::make_shared<detail::Gathering<T>>(std::size_t(promises.size()));
    const auto finish = [output, gathering] {
        detail::settleWith(output, [&] {
            if constexpr (!std::is_void_v<T>) {
                return gathering->result();
            }
        });
    };

    if (promises.size() == 0) {
        finish();
    }
    std::size_t index = 0;
    for (const auto& promise : promises) {
        detail::Access::state(promise)->whenSettled(
            nullptr, [output, gathering, finish, index](const auto& settled) {
                if (!settled->isFulfilled()) {
                    output->reject(settled->error());
                } else if (gathering->add(index, settled->value())) {
                    finish();
                }
            });
        ++index;
    }
    return detail::Access::promise(std::move(output));
}

namespace detail {

// An empty type, such as the mark of a private signal, is no value.
template <typename C>
Tag<void> signalValue(void (C::*)());
template <typename C, typename A, typename... Rest>
Tag<std::conditional_t<std::is_empty_v<std::decay_t<A>>, void, std::decay_t<A>>>
signalValue(void (C::*)(A, Rest...));
template <typename Signal>
using SignalValue = typename decltype(signalValue(std::declval<Signal>()))::Type;

/** Has the signal call settle with its first argument, if any, in the thread that emits it. */
template <typename Sender, typename Signal, typename Settle>
QMetaObject::Connection settleOn(const Sender* sender, Signal signal, const Settle& settle)
{
    using Value = SignalValue<Signal>;
    if constexpr (std::is_void_v<Value>) {
        return QObject::connect(sender, signal, [settle] { settle(); });
    } else {
        return QObject::connect(sender, signal, [settle](const Value& value) { settle(value); });
    }
}

/** The promise that makeConnections(resolve, reject) connects; it is disconnected once settled. */
template <typename T, typename MakeConnections>
QPromise<T> connected(const QObject* sender, const MakeConnections& makeConnections)
{
    auto output = std::make_shared<State<T>>();
    const auto handle = std::make_shared<Handle<T>>(output);
    const QPromiseReject<T> reject(handle);
    auto connections = makeConnections(QPromiseResolve<T>(handle), reject);
    const auto lost = QObject::connect(sender, &QObject::destroyed,
                                       [reject] { reject(QPromiseContextException()); });
    output->whenSettled(nullptr, [connections, lost](const auto& /*settled*/) {
        QObject::disconnect(lost);
        for (const auto& connection : connections) {
            QObject::disconnect(connection);
        }
    });
    return Access::promise(std::move(output));
}

} // namespace detail

/**
 * The promise of the next time that sender emits this signal: its value is the signal's first
 * argument, or nothing. When sender is destroyed first, the reason is a QPromiseContextException.
 */
template <typename Sender, typename Signal>
auto connect(const Sender* sender, Signal signal)
{
    using T = detail::SignalValue<Signal>;
    return detail::connected<T>(sender, [=](const auto& resolve, const auto& /*reject*/) {
        return std::array {detail::settleOn(sender, signal, resolve)};
    });
}

/** The same, and rejected by the second signal of rejecter: the reason is its first argument. */
template <typename Sender, typename Signal, typename Rejecter, typename RejectSignal>
auto connect(const Sender* sender, Signal signal, const Rejecter* rejecter,
             RejectSignal rejectSignal)
{
    using T = detail::SignalValue<Signal>;
    return detail::connected<T>(sender, [=](const auto& resolve, const auto& reject) {
        return std::array {detail::settleOn(sender, signal, resolve),
                           detail::settleOn(rejecter, rejectSignal, reject)};
    });
}

/** The same, both signals being of one sender. */
template <typename Sender, typename Signal, typename RejectSignal>
auto connect(const Sender* sender, Signal signal, RejectSignal rejectSignal)
{
    return connect(sender, signal, sender, rejectSignal);
}

} // namespace QtPromise
