#include "file/WholeFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <atomic>

#ifdef Q_OS_WIN
#include <io.h>
#include <qt_windows.h>
#else
#include <cerrno>
#include <cstdio>
#include <unistd.h>
#endif

namespace {

constexpr int maxNames = 1000;

#ifdef Q_OS_WIN
bool reachDisk(const QFile& file)
{
    return FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()))) != 0;
}

/** Absolute and with the prefix that lifts the system's limit of 260 characters. */
std::wstring nativePath(const QString& path)
{
    const QString native = QDir::toNativeSeparators(QDir::cleanPath(QDir().absoluteFilePath(path)));
    const bool share = native.startsWith(QLatin1String("\\\\"));
    return ((share ? QStringLiteral("\\\\?\\UNC") : QStringLiteral("\\\\?\\"))
            + (share ? native.mid(1) : native))
        .toStdWString();
}

bool renameOver(const QString& from, const QString& to)
{
    return MoveFileExW(nativePath(from).c_str(), nativePath(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
        != 0;
}
#else
bool reachDisk(const QFile& file)
{
    int status = 0;
    do {
        status = fsync(file.handle());
    } while (status != 0 && errno == EINTR);
    // Some file systems know no such thing.
    return status == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
}

bool renameOver(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}
#endif

/** Opens a file that nobody else has, in the folder of path. */
bool openTemporary(QFile& file, const QString& path)
{
    static std::atomic<unsigned> count {0};
    const QString start = QFileInfo(path).path() + QLatin1Char('/') + WholeFile::temporaryPrefix()
        + QString::number(QCoreApplication::applicationPid());
    for (int i = 0; i < maxNames; ++i) {
        file.setFileName(QStringLiteral("%1-%2").arg(start, QString::number(++count)));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
            return true;
        // Left behind by a killed process of the same number.
        if (!QFileInfo::exists(file.fileName()))
            break;
    }
    return false;
}

} // namespace

QString WholeFile::temporaryPrefix()
{
    return QStringLiteral(".whole-");
}

QString WholeFile::write(const QString& path, const QByteArray& bytes)
{
    const QFileInfo known(path);
    const bool keepsRights = known.isFile() && !known.isSymLink();
    QString cause;
    QFile file;
    if (keepsRights && !known.isWritable())
        cause = QStringLiteral("is write-protected");
    else if (!openTemporary(file, path))
        cause = file.errorString();
    if (!cause.isEmpty())
        return QStringLiteral("%1: %2").arg(path, cause);
#ifdef Q_OS_UNIX
    // Before anything is in it: others may not read what they could not read before.
    if (keepsRights && file.permissions() != known.permissions()
        && !file.setPermissions(known.permissions()))
        cause = file.errorString();
#endif
    if (cause.isEmpty())
        cause = writeAll(file, bytes);
    if (cause.isEmpty())
        cause = replace(file.fileName(), path);
    if (cause.isEmpty())
        return {};
    file.remove();
    return QStringLiteral("%1: %2").arg(path, cause);
}

QString WholeFile::writeAll(QFile& file, const QByteArray& bytes)
{
    QString cause = writeBlock(file, bytes.constData(), bytes.size());
    if (cause.isEmpty() && (!file.flush() || !reachDisk(file)))
        cause = qt_error_string();
    if (cause.isEmpty())
        return finish(file);
    file.close();
    return cause;
}

QString WholeFile::writeBlock(QFile& file, const char* bytes, qint64 count)
{
    // A disk that fills up takes a part first, and only the next call learns why.
    while (count > 0) {
        const qint64 taken = file.write(bytes, count);
        if (taken <= 0)
            return file.errorString();
        bytes += taken;
        count -= taken;
    }
    return {};
}

QString WholeFile::finish(QFile& file)
{
    const bool flushed = file.flush();
    const QString cause = file.errorString();
    file.close();
    if (flushed && file.error() == QFileDevice::NoError)
        return {};
    return flushed ? file.errorString() : cause;
}

QString WholeFile::replace(const QString& from, const QString& to)
{
    return renameOver(from, to) ? QString() : qt_error_string();
}
