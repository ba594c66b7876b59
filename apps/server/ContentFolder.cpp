#include "server/ContentFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

QString ContentFolder::find(const QString& named, QString* error)
{
    const QString installed =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1Char('/')
                        + QStringLiteral(ZGLOBAL_INSTALLED_CONTENT));
    QStringList candidates {named.isEmpty() ? installed : named};
#ifdef ZGLOBAL_SOURCE_CONTENT
    if (named.isEmpty())
        candidates.prepend(QStringLiteral(ZGLOBAL_SOURCE_CONTENT));
#endif
    for (const QString& folder : candidates) {
        if (QFileInfo::exists(folder + QStringLiteral("/app/versions.json")))
            return QDir(folder).absolutePath();
    }
    *error = QStringLiteral("there is no content in %1; name some with --content DIR")
                 .arg(candidates.join(QStringLiteral(" or ")));
    return {};
}
