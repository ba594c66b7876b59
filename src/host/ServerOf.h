#pragma once

#include <QString>
#include <QUrl>

/** What of an address tells servers apart: scheme, user information, host and port. */
inline QString serverOf(const QUrl& url)
{
    return url.scheme() + QStringLiteral("://") + url.authority(QUrl::FullyEncoded);
}
