#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QObject>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace QtPromise {
namespace detail {

/**
 * The way into one thread. Jobs posted here, from any thread, run one at a time and in the order
 * posted, each from an event of its own, so that a job may run a nested event loop. When the thread
 * ends, jobs that are left and jobs that still come are dropped unrun.
 *
 * The jobs are kept here and Qt only carries a wake-up: a mutex of the standard library is one that
 * the thread sanitizer understands.
 */
class Mailbox
{
public:
    using Job = std::function<void()>;

    /** The calling thread's own; made at the first call. */
    static const std::shared_ptr<Mailbox>& current()
    {
        thread_local const Owner owner;
        return owner.mailbox;
    }

    void post(Job job)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_receiver != nullptr) {
            m_jobs.push_back(std::move(job));
            QCoreApplication::postEvent(m_receiver.get(), new QEvent(QEvent::User));
        }
    }

    /** An object that lives as long as the thread does, to hang timers on. Own thread only. */
    QObject* context() const { return m_receiver.get(); }

private:
    struct Receiver : QObject
    {
        explicit Receiver(Mailbox& owner)
            : mailbox(owner)
        {
        }

        bool event(QEvent* event) override
        {
            if (event->type() != QEvent::User) {
                return QObject::event(event);
            }
            mailbox.runNext();
            return true;
        }

        Mailbox& mailbox;
    };

    struct Owner
    {
        Owner() { mailbox->m_receiver = std::make_unique<Receiver>(*mailbox); }
        ~Owner() { mailbox->close(); }
        Q_DISABLE_COPY_MOVE(Owner)

        const std::shared_ptr<Mailbox> mailbox = std::make_shared<Mailbox>();
    };

    void runNext()
    {
        Job job;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }

    // What goes here is destroyed outside the lock: a dropped job may hold anything.
    void close()
    {
        std::unique_ptr<Receiver> receiver;
        std::deque<Job> jobs;
        const std::lock_guard<std::mutex> lock(m_mutex);
        receiver.swap(m_receiver);
        jobs.swap(m_jobs);
    }

    std::mutex m_mutex;
    std::unique_ptr<Receiver> m_receiver;
    std::deque<Job> m_jobs;
};

/**
 * An event loop of the calling thread that any thread can end, also before it runs and after it is
 * gone. It is ended by an event of its own, behind the jobs that were posted to the thread before,
 * and an event that it did not get to is dropped with it.
 */
class WaitingLoop
{
public:
    WaitingLoop() { m_link->loop = &m_loop; }
    ~WaitingLoop()
    {
        const std::lock_guard<std::mutex> lock(m_link->mutex);
        m_link->loop = nullptr;
    }
    Q_DISABLE_COPY_MOVE(WaitingLoop)

    void exec() { m_loop.exec(); }

    /** A function that ends the loop; what it holds is nothing but the way there. */
    auto ender() const
    {
        return [link = m_link] {
            const std::lock_guard<std::mutex> lock(link->mutex);
            if (link->loop != nullptr) {
                QCoreApplication::postEvent(link->loop, new QEvent(QEvent::Quit));
            }
        };
    }

private:
    struct Link
    {
        std::mutex mutex;
        QEventLoop* loop = nullptr;
    };

    QEventLoop m_loop;
    const std::shared_ptr<Link> m_link = std::make_shared<Link>();
};

} // namespace detail
} // namespace QtPromise
