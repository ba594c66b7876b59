#include "datatable/CachePaths.h"

#include "file/FileNames.h"

#include <QDebug>
#include <QMutex>
#include <QSet>

namespace {

QString cache()
{
    return QStringLiteral("res/");
}

void tellOnce(const QString& path)
{
    static QMutex mutex;
    static QSet<QString> told;
    const QMutexLocker lock(&mutex);
    if (told.contains(path))
        return;
    told.insert(path);
    qWarning().noquote() << QStringLiteral("not used, it leads out of the cache:") << path;
}

} // namespace

bool CachePaths::staysInCache(const QString& path)
{
    return FileNames::staysBelow(path, cache());
}

bool CachePaths::mayBeUsed(const QString& path)
{
    if (!path.startsWith(cache()) || staysInCache(path))
        return true;
    tellOnce(path);
    return false;
}
