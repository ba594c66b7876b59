#include "console/Readable.h"

#include "console/Literals.h"

#include <QDateTime>

QString Readable::size(qint64 bytes)
{
    constexpr qint64 kilo = 1000;
    constexpr qint64 mega = kilo * kilo;
    if (bytes < kilo)
        return u"%1 B"_s.arg(bytes);
    if (bytes < mega)
        return u"%1 KB"_s.arg((bytes + kilo / 2) / kilo);
    return u"%1 MB"_s.arg(static_cast<double>(bytes) / mega, 0, 'f', 1);
}

QString Readable::time(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(u"yyyy-MM-dd HH:mm:ss"_s);
}

QString Readable::yesNo(bool value)
{
    return value ? u"yes"_s : u"no"_s;
}
