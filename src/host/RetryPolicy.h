#pragma once

#include <QByteArray>
#include <QDateTime>

/**
 * When a request that failed is made again.
 *
 * The pauses double from one try to the next, and all of them together take no longer than within.
 * Each is random between a half and the whole of its share: clients that failed in the same moment
 * do not come back in the same moment.
 */
struct RetryPolicy
{
    /** A server that asks for a longer pause is not asked again. */
    static constexpr int maxRetryAfter = 10 * 1000; // milliseconds

    int count = 0;  ///< tries after the first
    int within = 0; ///< milliseconds

    /** The milliseconds to wait before try number retry (1 is the first after the failure), on top
     *  of what the server asked for; -1 for no further try. */
    int pauseBefore(int retry, qint64 retryAfter) const;

    /** The milliseconds that a Retry-After header asks for, in seconds or as a date; 0 for none. */
    static qint64 retryAfter(const QByteArray& header, const QDateTime& now);
};
