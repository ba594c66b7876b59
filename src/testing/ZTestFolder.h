#pragma once

#include "ZGlobalTestingExport.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A working folder of a test's own, where the library keeps its files: empty and entered when the
 * object is made. When it goes, the folder before is the current one again and nothing stays
 * behind.
 *
 * The current folder is that of the whole process: one object at a time, or one inside the other.
 * A test that cannot have its folder, or cannot write in it, is ended with a message (qFatal).
 */
class ZGLOBALTESTING_EXPORT ZTestFolder
{
public:
    ZTestFolder();
    ~ZTestFolder();
    Q_DISABLE_COPY(ZTestFolder)

    /** Writes a file below the current folder, with the folders on its way; answers its path. */
    static QString write(const QString& path, const QByteArray& bytes);

    /** Empty also for a file that is not there. */
    static QByteArray read(const QString& path);

    /** The files below a folder, hidden ones included, relative to it and sorted. */
    static QStringList files(const QString& folder = QStringLiteral("."));

private:
    QTemporaryDir m_folder;
    QString m_previous;
};
