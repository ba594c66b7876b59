#pragma once

#include "QPromiseExceptions.h"
#include "QPromiseMailbox.h"

#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

namespace QtPromise {

template <typename T>
class QPromise;

namespace detail {

/**
 * What all copies of a promise and of its resolvers share. Settled once and from then on constant;
 * the value is shared as well, so handing it down a chain copies nothing. Any thread.
 *
 * A pending state holds its continuations, and these must not hold the state: they get it when they
 * run. A state that nobody can settle any more is thus freed.
 */
template <typename T>
class State : public std::enable_shared_from_this<State<T>>
{
public:
    using Value = std::shared_ptr<const T>;
    using Settled = std::shared_ptr<const State>;
    enum class Status { Pending, Fulfilled, Rejected };

    Status status() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_status;
    }
    bool isFulfilled() const { return status() == Status::Fulfilled; }

    // Of a settled state only.
    const Value& value() const { return m_value; }
    const std::exception_ptr& error() const { return m_error; }

    // All three are ignored once the state is settled.
    void fulfill(Value value) { settle(Status::Fulfilled, std::move(value), nullptr); }
    void reject(std::exception_ptr error) { settle(Status::Rejected, nullptr, std::move(error)); }
    template <typename U>
    void follow(const State<U>& settled)
    {
        if (!settled.isFulfilled()) {
            reject(settled.error());
        } else if constexpr (std::is_void_v<T>) {
            fulfill(nullptr);
        } else {
            fulfill(settled.value());
        }
    }

    /** Has job(settled state) run in the thread of where, or, without one, where it is settled. */
    template <typename Job>
    void whenSettled(std::shared_ptr<Mailbox> where, Job&& job)
    {
        // Shared because the job need not be copyable, which a std::function must be.
        auto shared = std::make_shared<std::decay_t<Job>>(std::forward<Job>(job));
        Continuation next {std::move(where), [shared = std::move(shared)](const Settled& settled) {
                               (*shared)(settled);
                           }};
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (m_status == Status::Pending) {
                m_continuations.push_back(std::move(next));
                return;
            }
        }
        dispatch(std::move(next));
    }

private:
    struct Continuation
    {
        std::shared_ptr<Mailbox> where;
        std::function<void(const Settled&)> job;
    };

    void settle(Status status, Value value, std::exception_ptr error)
    {
        std::vector<Continuation> ready;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (m_status != Status::Pending) {
                return;
            }
            m_status = status;
            m_value = std::move(value);
            m_error = std::move(error);
            ready.swap(m_continuations);
        }
        for (auto& next : ready) {
            dispatch(std::move(next));
        }
    }

    void dispatch(Continuation&& next)
    {
        if (next.where == nullptr) {
            next.job(this->shared_from_this());
            return;
        }
        // Moved all the way, so that a handler ends its life in the thread it runs in.
        next.where->post(
            [job = std::move(next.job), self = this->shared_from_this()] { job(self); });
    }

    mutable std::mutex m_mutex;
    Status m_status = Status::Pending;
    Value m_value;
    std::exception_ptr m_error;
    std::vector<Continuation> m_continuations;
};

template <typename T>
using StatePtr = std::shared_ptr<State<T>>;

/**
 * The one right to settle a promise, which all its resolvers share. Whoever takes it gets the state
 * and leaves none behind, so that a resolver that is kept does not keep the value alive. Any
 * thread.
 */
template <typename T>
class Handle
{
public:
    explicit Handle(StatePtr<T> state)
        : m_state(std::move(state))
    {
    }

    /** The state for the first caller, null for all others. */
    StatePtr<T> take()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return std::exchange(m_state, nullptr);
    }

private:
    std::mutex m_mutex;
    StatePtr<T> m_state;
};

template <typename T>
using HandlePtr = std::shared_ptr<Handle<T>>;

/** The door between a promise and its state, for the helpers of this library only. */
struct Access
{
    template <typename T>
    static const StatePtr<T>& state(const QPromise<T>& promise)
    {
        return promise.m_state;
    }

    template <typename T>
    static QPromise<T> promise(StatePtr<T> state)
    {
        return QPromise<T>(std::move(state));
    }
};

/** The reason for a rejection: a std::exception_ptr stands for what it points to. */
template <typename E>
std::exception_ptr makeError(E&& error)
{
    if constexpr (std::is_same_v<std::decay_t<E>, std::exception_ptr>) {
        return error ? std::exception_ptr(error) : makeError(QPromiseUndefinedException());
    } else {
        return std::make_exception_ptr(std::forward<E>(error));
    }
}

// What a result R of a handler makes of the promise: U for a QPromise<U>, else the plain type.
template <typename R>
struct Unwrap
{
    using Type = R;
    static constexpr bool isPromise = false;
};
template <typename U>
struct Unwrap<QPromise<U>>
{
    using Type = U;
    static constexpr bool isPromise = true;
};
template <typename R>
using Unwrapped = Unwrap<std::decay_t<R>>;

/**
 * Settles target as the result of call() says: a value, a promise to follow, or an exception.
 *
 * A promise is followed to its end: target stays pending until source settles, which may be before
 * this returns, later, in another thread, or never. In each case the following takes place right
 * there, inside the call that settles source (or here, where it is settled already). Without a
 * mailbox, that is, for three reasons: nothing of the program runs in it, as the handlers of target
 * go through the mailboxes that they were added with; every hop through an event loop would delay
 * them by one round for each promise in a row; and the thread that happens to call this may never
 * run a loop again, while source is settled by another that does.
 *
 * A promise that would follow itself waits for its own end, so it is rejected instead. The states
 * are compared, not the promises, because only the state is common to all copies and because a
 * promise of void may be made of one of T, whose state is of another type: hence the bare
 * addresses. A ring of several promises is not looked for; it stays pending, and as each state in
 * it then holds the next one, it is never freed.
 *
 * Source holds target while source is pending, never the other way round. So target settles even
 * when all that is left of it is a handler, and when nobody can settle source any more both go.
 */
template <typename T, typename Call>
void settleWith(const StatePtr<T>& target, Call&& call)
{
    using Result = decltype(call());
    try {
        if constexpr (Unwrapped<Result>::isPromise) {
            const auto source = Access::state(call());
            static_assert(std::is_void_v<T> || std::is_same_v<decltype(source), const StatePtr<T>>,
                          "the promise to follow is one of another type");
            if (static_cast<const void*>(source.get()) == target.get()) {
                target->reject(makeError(QPromiseUndefinedException()));
            } else {
                source->whenSettled(nullptr, [target](const auto& end) { target->follow(*end); });
            }
        } else if constexpr (std::is_void_v<T>) {
            call();
            target->fulfill(nullptr);
        } else {
            static_assert(std::is_convertible_v<Result, T>,
                          "the result does not convert to the type of the promise");
            target->fulfill(std::make_shared<const T>(call()));
        }
    } catch (...) {
        target->reject(std::current_exception());
    }
}

/** Runs call() and, when it and a promise it may return went well, lets target follow settled. */
template <typename T, typename Call>
void followAfter(const StatePtr<T>& target, const typename State<T>::Settled& settled, Call&& call)
{
    const auto gate = std::make_shared<State<void>>();
    settleWith(gate, std::forward<Call>(call));
    gate->whenSettled(nullptr, [target, settled](const auto& passed) {
        if (passed->isFulfilled()) {
            target->follow(*settled);
        } else {
            target->reject(passed->error());
        }
    });
}

template <typename A>
struct Tag
{
    using Type = A;
};
template <typename R, typename A, typename... Rest>
Tag<A> firstArgument(R (*)(A, Rest...));
template <typename C, typename R, typename A, typename... Rest>
Tag<A> firstArgument(R (C::*)(A, Rest...));
template <typename C, typename R, typename A, typename... Rest>
Tag<A> firstArgument(R (C::*)(A, Rest...) const);

template <typename F, typename = void>
struct Caught
{
    using Type = typename decltype(firstArgument(std::declval<F>()))::Type;
};
template <typename F>
struct Caught<F, std::void_t<decltype(&F::operator())>>
{
    using Type = typename decltype(firstArgument(&F::operator()))::Type;
};

template <typename T, typename F>
decltype(auto) callFulfilled(F& handler, const typename State<T>::Value& value)
{
    if constexpr (std::is_invocable_v<F&, std::add_lvalue_reference_t<const T>>) {
        return handler(*value);
    } else {
        return handler();
    }
}

/** An error of a type that the handler does not take is thrown on. */
template <typename F>
decltype(auto) callRejected(F& handler, const std::exception_ptr& error)
{
    // Called inside the catch, so that a handler may say "throw;".
    if constexpr (std::is_invocable_v<F&>) {
        try {
            std::rethrow_exception(error);
        } catch (...) {
            return handler();
        }
    } else {
        using Type = typename Caught<F>::Type;
        if constexpr (std::is_same_v<std::decay_t<Type>, std::exception_ptr>) {
            return handler(error);
        } else {
            // Pointers by value: only so does one to a derived class match.
            using Catch = std::conditional_t<std::is_pointer_v<std::decay_t<Type>>,
                                             std::decay_t<Type>, std::remove_reference_t<Type>&>;
            try {
                std::rethrow_exception(error);
            } catch (Catch caught) {
                return handler(caught);
            }
        }
    }
}

/** The type of the promise that then() returns for a handler F on a promise of T. */
template <typename T, typename F>
struct Then : Unwrapped<decltype(callFulfilled<T>(std::declval<F&>(),
                                                  std::declval<const typename State<T>::Value&>()))>
{
};
template <typename T>
struct Then<T, std::nullptr_t> : Tag<T>
{
};

/** Settles target by the one of the two handlers that is meant; a null one passes on. */
template <typename T, typename U, typename F, typename R>
void settleBy(const StatePtr<U>& target, const State<T>& settled, F& onFulfilled, R& onRejected)
{
    if (settled.isFulfilled()) {
        if constexpr (std::is_null_pointer_v<F>) {
            target->follow(settled);
        } else {
            settleWith(target, [&]() -> decltype(auto) {
                return callFulfilled<T>(onFulfilled, settled.value());
            });
        }
    } else if constexpr (std::is_null_pointer_v<R>) {
        target->reject(settled.error());
    } else {
        settleWith(target,
                   [&]() -> decltype(auto) { return callRejected(onRejected, settled.error()); });
    }
}

} // namespace detail
} // namespace QtPromise
