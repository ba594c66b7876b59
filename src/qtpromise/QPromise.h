#pragma once

#include "QPromiseState.h"

#include <QPointer>
#include <QTimer>
#include <QtGlobal>

#include <chrono>
#include <limits>

/** Promises over Qt's event loop. */
namespace QtPromise {

/**
 * Fulfils the promise it was made for: with a value, with nothing where the promise is one of void,
 * or with a promise, which is then followed. Only the first use of it, its copies and the matching
 * QPromiseReject counts; from then on none of them holds anything. Any thread.
 */
template <typename T>
class QPromiseResolve
{
public:
    explicit QPromiseResolve(detail::HandlePtr<T> handle)
        : m_handle(std::move(handle))
    {
    }

    template <typename V = T>
    void operator()(V&& value) const
    {
        if (const auto state = m_handle->take()) {
            detail::settleWith(state, [&]() -> V&& { return std::forward<V>(value); });
        }
    }

    void operator()() const
    {
        static_assert(std::is_void_v<T>, "this promise needs a value");
        if (const auto state = m_handle->take()) {
            state->fulfill(nullptr);
        }
    }

private:
    detail::HandlePtr<T> m_handle;
};

/** Rejects the promise it was made for; see QPromiseResolve. */
template <typename T>
class QPromiseReject
{
public:
    explicit QPromiseReject(detail::HandlePtr<T> handle)
        : m_handle(std::move(handle))
    {
    }

    /** The reason may be of any copyable type; a std::exception_ptr stands for what it holds. */
    template <typename E>
    void operator()(E&& error) const
    {
        if (const auto state = m_handle->take()) {
            state->reject(detail::makeError(std::forward<E>(error)));
        }
    }

    /** The reason is a QPromiseUndefinedException. */
    void operator()() const { (*this)(QPromiseUndefinedException()); }

private:
    detail::HandlePtr<T> m_handle;
};

/**
 * A value, or nothing but the fact for void, that is there now or later, or the reason why it never
 * will be. Implicitly shared: copies are the same promise. A promise settles once.
 *
 * Handlers run later, never inside the call that takes them, from the event loop of the thread that
 * made that call, in the order in which they were added. They run even when no copy of the promise
 * is left, and are freed in that thread once they ran. When the thread ends first they never run
 * and the promise returned for them stays pending. What a handler throws rejects that promise.
 *
 * A handler for the value takes const T& (nothing is copied), T, or nothing. A handler for errors
 * takes the errors of its argument's type, derived ones included, and others pass it by; one
 * without an argument takes all, and so does one that takes a std::exception_ptr. A handler that
 * returns a promise has it followed. All functions may be called in any thread.
 *
 * Qt 6 has a class of this name outside of the namespace; "using" one hides or meets the other.
 */
template <typename T>
class QPromise
{
public:
    using Type = T;

    /**
     * Calls resolver(QPromiseResolve<T>, QPromiseReject<T>), or with the first alone, before it
     * returns. An exception that resolver throws rejects the promise.
     */
    template <
        typename F,
        std::enable_if_t<
            std::is_invocable_v<F&, QPromiseResolve<T>,
                                QPromiseReject<T>> || std::is_invocable_v<F&, QPromiseResolve<T>>,
            int> = 0>
    explicit QPromise(F&& resolver)
        : m_state(std::make_shared<detail::State<T>>())
    {
        const auto handle = std::make_shared<detail::Handle<T>>(m_state);
        const QPromiseReject<T> reject(handle);
        try {
            if constexpr (std::is_invocable_v<F&, QPromiseResolve<T>, QPromiseReject<T>>) {
                resolver(QPromiseResolve<T>(handle), reject);
            } else {
                resolver(QPromiseResolve<T>(handle));
            }
        } catch (...) {
            reject(std::current_exception());
        }
    }

    // A move is a copy: a promise that was moved from is still one.
    QPromise(const QPromise&) = default;
    QPromise& operator=(const QPromise&) = default;
    ~QPromise() = default;

    /** Any promise serves as one of void, which settles with it. */
    template <typename U, std::enable_if_t<std::is_void_v<U> && !std::is_same_v<T, U>, int> = 0>
    operator QPromise<U>() const
    {
        return QPromise<U>::resolve(*this);
    }

    /** Promises are equal when they are copies of the same one. */
    bool operator==(const QPromise& other) const { return m_state == other.m_state; }
    bool operator!=(const QPromise& other) const { return m_state != other.m_state; }

    bool isPending() const { return m_state->status() == detail::State<T>::Status::Pending; }
    bool isFulfilled() const { return m_state->status() == detail::State<T>::Status::Fulfilled; }
    bool isRejected() const { return m_state->status() == detail::State<T>::Status::Rejected; }

    /**
     * The promise of what the handler that gets called returns; its type is what onFulfilled
     * returns, and onRejected must return the same. Where nullptr stands for a handler, the value
     * or error is passed on.
     */
    template <typename F, typename R = std::nullptr_t>
    auto then(F&& onFulfilled, R&& onRejected = nullptr) const
    {
        using Result = typename detail::Then<T, std::decay_t<F>>::Type;
        return derive<Result>(
            [fulfilled = std::forward<F>(onFulfilled), rejected = std::forward<R>(onRejected)](
                const auto& next, const auto& settled) mutable {
                detail::settleBy(next, *settled, fulfilled, rejected);
            });
    }

    /** then(nullptr, onRejected): what onRejected returns takes the place of the value. */
    template <typename R>
    QPromise fail(R&& onRejected) const
    {
        return then(nullptr, std::forward<R>(onRejected));
    }

    /**
     * Calls handler, without an argument, either way. The promise returned settles like this one,
     * after the promise that handler may return; that one's rejection, or what handler throws,
     * takes its place.
     */
    template <typename F>
    QPromise finally(F&& handler) const
    {
        return derive<T>(
            [handler = std::forward<F>(handler)](const auto& next, const auto& settled) mutable {
                detail::followAfter(next, settled, handler);
            });
    }

    /** As finally, but for a value only, which handler may take. */
    template <typename F>
    QPromise tap(F&& handler) const
    {
        return derive<T>(
            [handler = std::forward<F>(handler)](const auto& next, const auto& settled) mutable {
                if (settled->isFulfilled()) {
                    detail::followAfter(next, settled, [&]() -> decltype(auto) {
                        return detail::callFulfilled<T>(handler, settled->value());
                    });
                } else {
                    next->follow(*settled);
                }
            });
    }

    /** As finally, but for an error only, which handler may take. */
    template <typename F>
    QPromise tapFail(F&& handler) const
    {
        return derive<T>(
            [handler = std::forward<F>(handler)](const auto& next, const auto& settled) mutable {
                if (settled->isFulfilled()) {
                    next->follow(*settled);
                } else {
                    detail::followAfter(next, settled, [&]() -> decltype(auto) {
                        return detail::callRejected(handler, settled->error());
                    });
                }
            });
    }

    /** Hands a value on after this time, counted from its arrival; an error at once. */
    QPromise delay(std::chrono::milliseconds time) const
    {
        return tap([time] {
            return QPromise<void>([time](const QPromiseResolve<void>& resolve) {
                QTimer::singleShot(toInterval(time), detail::Mailbox::current()->context(),
                                   resolve);
            });
        });
    }
    QPromise delay(int milliseconds) const
    {
        return delay(std::chrono::milliseconds(milliseconds));
    }

    /**
     * Settles like this promise, but is rejected with error when that takes longer than this time,
     * counted from now by the event loop of the calling thread. The work itself is not stopped.
     */
    template <typename E = QPromiseTimeoutException>
    QPromise timeout(std::chrono::milliseconds time, E&& error = E()) const
    {
        const QPointer<QTimer> timer = new QTimer(detail::Mailbox::current()->context());
        const auto output = derive<T>([timer](const auto& next, const auto& settled) {
            delete timer.data();
            next->follow(*settled);
        });
        QObject::connect(
            timer, &QTimer::timeout, timer,
            [timer, next = output.m_state, reason = detail::makeError(std::forward<E>(error))] {
                timer->deleteLater();
                next->reject(reason);
            });
        timer->setSingleShot(true);
        timer->start(toInterval(time));
        return output;
    }
    template <typename E = QPromiseTimeoutException>
    QPromise timeout(int milliseconds, E&& error = E()) const
    {
        return timeout(std::chrono::milliseconds(milliseconds), std::forward<E>(error));
    }

    /**
     * Runs an event loop in the calling thread until this promise is settled, and returns it. When
     * the program is told to quit meanwhile, it returns with the promise still pending.
     */
    QPromise wait() const
    {
        if (isPending()) {
            detail::WaitingLoop loop;
            m_state->whenSettled(nullptr, [end = loop.ender()](const auto& /*settled*/) { end(); });
            loop.exec();
        }
        return *this;
    }

    /** A promise that is fulfilled already, or follows value where that is a promise. */
    template <typename V = T>
    static QPromise resolve(V&& value)
    {
        return QPromise([&](const QPromiseResolve<T>& settle) { settle(std::forward<V>(value)); });
    }
    static QPromise resolve()
    {
        return QPromise([](const QPromiseResolve<T>& settle) { settle(); });
    }

    /** A promise that is rejected already; without a reason, with QPromiseUndefinedException. */
    template <typename E = QPromiseUndefinedException>
    static QPromise reject(E&& error = E())
    {
        return QPromise([&](const QPromiseResolve<T>& /*resolve*/,
                            const QPromiseReject<T>& settle) { settle(std::forward<E>(error)); });
    }

private:
    friend struct detail::Access;

    explicit QPromise(detail::StatePtr<T> state)
        : m_state(std::move(state))
    {
    }

    /** A promise that job(its state, this one's settled state) settles, in the calling thread. */
    template <typename U, typename Job>
    QPromise<U> derive(Job&& job) const
    {
        auto next = std::make_shared<detail::State<U>>();
        m_state->whenSettled(detail::Mailbox::current(),
                             [next, job = std::forward<Job>(job)](const auto& settled) mutable {
                                 job(next, settled);
                             });
        return detail::Access::promise(std::move(next));
    }

    static int toInterval(std::chrono::milliseconds time)
    {
        using Count = std::chrono::milliseconds::rep;
        return int(std::clamp<Count>(time.count(), 0, std::numeric_limits<int>::max()));
    }

    detail::StatePtr<T> m_state;
};

} // namespace QtPromise
