#include "file/FileNames.h"
#include "fuzz/Fuzz.h"
#include "host/ZGlobalConfig.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

namespace {

const QDir::Filters everything =
    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

} // namespace

ZGLOBAL_FUZZER
{
    const QTemporaryDir work;
    const QString folder = work.filePath(QStringLiteral("flash/in"));
    QFile archive(folder + QStringLiteral("/abc_12"));
    require(QDir().mkpath(folder) && archive.open(QIODevice::WriteOnly)
                && archive.write(bytes) == bytes.size(),
            "the input is written");
    archive.close();

    const bool unpacked = ZGlobalConfig::unZipFile(archive.fileName(), false);
    int files = 0;
    QDirIterator all(work.path(), everything, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = QDir(work.path()).relativeFilePath(all.next());
        require(!all.fileInfo().isSymLink(), "no links");
        if (path == QLatin1String("flash") || path == QLatin1String("flash/in"))
            continue;
        require(FileNames::staysBelow(path, QStringLiteral("flash/in")), "all stays in the folder");
        require(!path.contains(QLatin1String(".unpack-")), "nothing of the run is left");
        ++files;
    }
    require(unpacked ? files > 1 : files == 1, "all or nothing");
    require(archive.open(QIODevice::ReadOnly) && archive.readAll() == bytes, "the archive is kept");
}
