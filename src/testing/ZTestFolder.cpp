#include "testing/ZTestFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

ZTestFolder::ZTestFolder()
    : m_previous(QDir::currentPath())
{
    if (!m_folder.isValid() || !QDir::setCurrent(m_folder.path()))
        qFatal("cannot make or enter a folder: %s", qPrintable(m_folder.errorString()));
}

ZTestFolder::~ZTestFolder()
{
    QDir::setCurrent(m_previous);
}

QString ZTestFolder::write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s: %s", qPrintable(path), qPrintable(file.errorString()));
    return path;
}

QByteArray ZTestFolder::read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList ZTestFolder::files(const QString& folder)
{
    QStringList found;
    QDirIterator walk(QDir(folder).absolutePath(), QDir::Files | QDir::Hidden,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        found.append(QDir(folder).relativeFilePath(walk.next()));
    found.sort();
    return found;
}
