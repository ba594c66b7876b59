#include "host/RetryPolicy.h"

#include <QLocale>
#include <QRandomGenerator>

#include <cmath>

int RetryPolicy::pauseBefore(int retry, qint64 retryAfter) const
{
    if (retry > count || retryAfter > maxRetryAfter)
        return -1;
    const double share = within * std::exp2(retry - 1) / (std::exp2(count) - 1);
    const double part = 0.5 + QRandomGenerator::global()->bounded(0.5);
    return static_cast<int>(retryAfter) + static_cast<int>(share * part);
}

qint64 RetryPolicy::retryAfter(const QByteArray& header, const QDateTime& now)
{
    bool isNumber = false;
    const qint64 seconds = header.trimmed().toUInt(&isNumber);
    if (isNumber)
        return seconds * 1000;
    QDateTime date = QLocale::c().toDateTime(QString::fromLatin1(header.trimmed()),
                                             QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
    date.setTimeSpec(Qt::UTC);
    return date.isValid() ? qMax(0LL, now.msecsTo(date)) : 0;
}
