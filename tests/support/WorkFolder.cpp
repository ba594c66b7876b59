#include "support/WorkFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QJsonDocument>

WorkFolder::WorkFolder()
    : m_previous(QDir::currentPath())
{
    QDir::setCurrent(m_folder.path());
}

WorkFolder::~WorkFolder()
{
    QDir::setCurrent(m_previous);
}

QString WorkFolder::write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

QByteArray WorkFolder::read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray WorkFolder::table(const QStringList& columns, const QVector<QJsonValue>& rows)
{
    QJsonArray array;
    for (const QJsonValue& row : rows)
        array.append(row);
    return QJsonDocument(
               QJsonObject {{QStringLiteral("columns"), QJsonArray::fromStringList(columns)},
                            {QStringLiteral("rows"), array}})
        .toJson(QJsonDocument::Compact);
}

QStringList WorkFolder::files(const QString& folder)
{
    QStringList found;
    QDirIterator walk(QDir(folder).absolutePath(), QDir::Files | QDir::Hidden,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        found.append(QDir(folder).relativeFilePath(walk.next()));
    found.sort();
    return found;
}
