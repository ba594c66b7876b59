#pragma once

#include <QCryptographicHash>
#include <QString>

/** The name of the file that keeps what an address holds. */
inline QString cacheName(const QString& address)
{
    const QByteArray digest = QCryptographicHash::hash(address.toUtf8(), QCryptographicHash::Md5);
    return QString::fromLatin1(digest.toHex().toUpper());
}
