#include "publish/FolderLock.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

FolderLock::FolderLock(const QString& folder)
    : m_handle(open(QFile::encodeName(folder).constData(), O_RDONLY | O_CLOEXEC))
{
    if (m_handle >= 0 && flock(m_handle, LOCK_EX | LOCK_NB) == 0)
        return;
    m_error = errno == EWOULDBLOCK
        ? QStringLiteral("%1 is being published by another process; wait until it is done")
        : QStringLiteral("%1 cannot be locked: ") + qt_error_string();
    m_error = m_error.arg(QDir::toNativeSeparators(folder));
}

FolderLock::~FolderLock()
{
    if (m_handle >= 0)
        close(m_handle);
}
#else
FolderLock::FolderLock(const QString&) { }
FolderLock::~FolderLock() = default;
#endif
