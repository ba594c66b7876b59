#pragma once

#include <QException>

// Thrown in one library and caught in another: the type must be the same to both, which a hidden
// one is not on every system.
#if defined(Q_OS_WIN)
#define QTPROMISE_EXCEPTION
#else
#define QTPROMISE_EXCEPTION Q_DECL_EXPORT
#endif

namespace QtPromise {

/** For programs to reject with when the work behind a promise was given up on request. */
class QTPROMISE_EXCEPTION QPromiseCanceledException : public QException
{
public:
    void raise() const override { throw *this; }
    QPromiseCanceledException* clone() const override
    {
        return new QPromiseCanceledException(*this);
    }
};

/** The object that should have settled the promise is gone. */
class QTPROMISE_EXCEPTION QPromiseContextException : public QException
{
public:
    void raise() const override { throw *this; }
    QPromiseContextException* clone() const override { return new QPromiseContextException(*this); }
};

/** QPromise::timeout: the time was over first. */
class QTPROMISE_EXCEPTION QPromiseTimeoutException : public QException
{
public:
    void raise() const override { throw *this; }
    QPromiseTimeoutException* clone() const override { return new QPromiseTimeoutException(*this); }
};

/** Rejected without a reason; also a promise that was to be resolved with itself. */
class QTPROMISE_EXCEPTION QPromiseUndefinedException : public QException
{
public:
    void raise() const override { throw *this; }
    QPromiseUndefinedException* clone() const override
    {
        return new QPromiseUndefinedException(*this);
    }
};

} // namespace QtPromise
