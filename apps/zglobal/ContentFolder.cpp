#include "ContentFolder.h"

#include "CommandLine.h"
#include "Failure.h"
#include "Literals.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

QString ContentFolder::find(const QCommandLineParser& line)
{
    const QString option = CommandLine::contentOption().names().constFirst();
    const QString installed =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1Char('/')
                        + QStringLiteral(ZGLOBAL_INSTALLED_CONTENT));
    const QStringList candidates = line.isSet(option)
        ? QStringList {line.value(option)}
        : QStringList {QStringLiteral(ZGLOBAL_SOURCE_CONTENT), installed};
    for (const QString& folder : candidates) {
        if (QFileInfo::exists(folder + u"/app/versions.json"_s))
            return QDir(folder).absolutePath();
    }
    throw Failure {u"there is no content in %1; name some with --content DIR"_s.arg(
        candidates.join(u" or "_s))};
}
