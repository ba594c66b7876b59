#include "datatable/CachePaths.h"

#include "datatable/LogCategories.h"
#include "file/FileNames.h"

#include <QMutex>
#include <QSet>

namespace {

QString cache()
{
    return QStringLiteral("res/");
}

void tellOnce(const QString& text)
{
    static QMutex mutex;
    static QSet<QString> told;
    const QMutexLocker lock(&mutex);
    if (told.contains(text))
        return;
    told.insert(text);
    qCWarning(LogCategories::resource).noquote() << text;
}

} // namespace

bool CachePaths::staysInCache(const QString& path)
{
    return FileNames::staysBelow(path, cache());
}

bool CachePaths::mayBeUsed(const QString& path)
{
    const bool may = !path.startsWith(cache()) || staysInCache(path);
    if (!may)
        tellOnce(QStringLiteral("not used, it leads out of the cache: ") + path);
    return may;
}

QString CachePaths::nameFault(const QString& name)
{
    return FileNames::fault(name);
}

bool CachePaths::mayBeName(const QString& name)
{
    const QString fault = nameFault(name);
    if (!fault.isEmpty())
        tellOnce(QStringLiteral("not used, it %1: %2").arg(fault, name));
    return fault.isEmpty();
}
