#pragma once

#include <QString>

/** One process at a time. The system itself takes the lock back when its process ends, in whatever
 *  way: nothing stays behind that would keep others out. */
class FolderLock
{
public:
    /** Of a folder that is there; see error(). */
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    Q_DISABLE_COPY(FolderLock)

    /** Why the lock is not held; empty when it is. */
    const QString& error() const { return m_error; }

private:
    int m_handle = -1;
    QString m_error;
};
