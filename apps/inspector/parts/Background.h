#pragma once

#include <QObject>
#include <QRunnable>
#include <QThreadPool>

#include <memory>
#include <optional>

/**
 * Calls work() in a thread of the pool and then take(result) in the thread of the receiver, unless
 * that has gone meanwhile.
 */
template <class Work, class Take>
void inBackground(QThreadPool& pool, QObject* receiver, Work work, Take take)
{
    auto result = std::make_shared<std::optional<decltype(work())>>();
    auto working =
        std::make_shared<QObject>(); // whose end is told whatever becomes of the receiver
    QObject::connect(
        working.get(), &QObject::destroyed, receiver,
        [result, take] {
            if (result->has_value())
                take(**result);
        },
        Qt::QueuedConnection);
    pool.start(QRunnable::create([result, working, work] { result->emplace(work()); }));
}
