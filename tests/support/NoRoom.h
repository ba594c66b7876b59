#pragma once

#include <QByteArray>

#include <csignal>
#include <optional>
#include <sys/mount.h>
#include <sys/resource.h>

/** A disk of 64 KiB on a folder, while it lives; not every user may have one. */
class SmallDisk
{
public:
    explicit SmallDisk(const QByteArray& folder)
        : m_folder(folder)
        , m_mounted(mount("tmpfs", folder.constData(), "tmpfs", 0, "size=64k") == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_mounted)
            umount(m_folder.constData());
    }
    Q_DISABLE_COPY(SmallDisk)

    bool isMounted() const { return m_mounted; }

private:
    QByteArray m_folder;
    bool m_mounted;
};

/** While it lives no file grows beyond these bytes: the write fails, the process goes on. */
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_previous(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit small {bytes, m_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_previous);
    }
    Q_DISABLE_COPY(FileSizeLimit)

private:
    rlimit m_limit {};
    void (*m_previous)(int);
};
