#include "publish/Disk.h"

#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr qint64 blockSize = 1 << 20;
const QFileDevice::Permissions forReading =
    QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
const QFileDevice::Permissions forEntering =
    QFileDevice::WriteOwner | QFileDevice::ExeOwner | QFileDevice::ExeGroup | QFileDevice::ExeOther;

QString failed(const QString& path, const QString& cause)
{
    return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), cause);
}

std::filesystem::path nativePath(const QString& path)
{
#ifdef Q_OS_WIN
    return path.toStdWString();
#else
    return QFile::encodeName(path).toStdString();
#endif
}

#ifdef Q_OS_UNIX
/** A file, or the names in a folder; with everything on its volume where that is asked for. */
QString reachDisk(const QString& path, bool withVolume)
{
    const int handle = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    int status = handle;
    while (handle >= 0) {
#ifdef Q_OS_LINUX
        status = withVolume ? syncfs(handle) : fsync(handle);
#else
        Q_UNUSED(withVolume)
        status = fsync(handle);
#endif
        if (status == 0 || errno != EINTR)
            break;
    }
    // Some file systems know no such thing.
    const bool reached = status >= 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
    const QString cause = qt_error_string();
    if (handle >= 0)
        close(handle);
    return reached ? QString() : failed(path, cause);
}
#else
QString reachDisk(const QString&, bool)
{
    return {};
}
#endif

/** Everything from the source, which may be a file or a buffer. */
QString pour(QIODevice& source, const QString& path, const QDateTime& changed)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return failed(path, file.errorString());
    bool isGood = true;
    while (isGood && !source.atEnd()) {
        const QByteArray block = source.read(blockSize);
        isGood = !block.isEmpty() && file.write(block) == block.size();
    }
    isGood = isGood && file.flush() && file.setFileTime(changed, QFileDevice::FileModificationTime)
        && file.setPermissions(forReading);
    file.close();
    if (isGood && file.error() == QFileDevice::NoError)
        return {};
    return failed(path,
                  file.error() == QFileDevice::NoError ? qt_error_string() : file.errorString());
}

} // namespace

QString Disk::read(const QString& path, QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? QString() : failed(path, file.errorString());
}

QString Disk::write(const QString& path, const QByteArray& bytes, const QDateTime& changed)
{
    QByteArray copy = bytes;
    QBuffer source(&copy);
    source.open(QIODevice::ReadOnly);
    return pour(source, path, changed);
}

QString Disk::copy(const QString& from, const QString& to, const QDateTime& changed)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        return failed(from, source.errorString());
    QString cause = pour(source, to, changed);
    return cause.isEmpty() && source.error() != QFileDevice::NoError
        ? failed(from, source.errorString())
        : cause;
}

QString Disk::link(const QString& from, const QString& to)
{
    std::error_code fault;
    std::filesystem::create_hard_link(nativePath(from), nativePath(to), fault);
    return fault ? copy(from, to, QFileInfo(from).lastModified()) : QString();
}

QString Disk::imitate(const QString& from, const QString& to)
{
#ifdef Q_OS_UNIX
    return QFile::link(QFileInfo(from).absoluteFilePath(), to) ? QString()
                                                               : failed(to, qt_error_string());
#else
    return copy(from, to, QFileInfo(from).lastModified());
#endif
}

QString Disk::makeFolder(const QString& path)
{
    if (QFileInfo(path).isDir())
        return {};
    const QString above = QFileInfo(path).path();
    QString cause = above == path ? QString() : makeFolder(above);
    if (!cause.isEmpty())
        return cause;
    return QDir().mkdir(path) && QFile::setPermissions(path, forReading | forEntering)
        ? QString()
        : failed(path, qt_error_string());
}

QString Disk::settle(const QString& folder)
{
    QString cause = reachDisk(folder, true);
#ifndef Q_OS_LINUX
    QDirIterator walk(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                      QDirIterator::Subdirectories);
    while (cause.isEmpty() && walk.hasNext())
        cause = reachDisk(walk.next(), false);
#endif
    return cause;
}

QString Disk::settleNames(const QString& folder)
{
    return reachDisk(folder, false);
}

QString Disk::rename(const QString& from, const QString& to)
{
    std::error_code fault;
    std::filesystem::rename(nativePath(from), nativePath(to), fault);
    return fault ? failed(to, QString::fromStdString(fault.message())) : QString();
}

QString Disk::lead(const QString& path, const QString& target)
{
#ifdef Q_OS_UNIX
    const QString next =
        QFileInfo(path).path() + QStringLiteral("/.next-") + QFileInfo(path).fileName();
    QFile::remove(next); // left behind by a killed process
    std::error_code fault;
    std::filesystem::create_directory_symlink(nativePath(target), nativePath(next), fault);
    QString cause =
        fault ? failed(next, QString::fromStdString(fault.message())) : rename(next, path);
    if (!cause.isEmpty())
        QFile::remove(next);
    else
        settleNames(QFileInfo(path).path()); // it is done, whatever comes of this
    return cause;
#else
    Q_UNUSED(target)
    return failed(path,
                  QStringLiteral("this system cannot make it lead elsewhere in one step, so "
                                 "nothing can be published here"));
#endif
}

bool Disk::areSame(const QString& left, const QString& right)
{
    QFile a(left);
    QFile b(right);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.size() != b.size())
        return false;
    while (!a.atEnd()) {
        if (a.read(blockSize) != b.read(blockSize))
            return false;
    }
    return a.error() == QFileDevice::NoError && b.error() == QFileDevice::NoError;
}
