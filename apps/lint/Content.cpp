#include "lint/Content.h"

#include "datatable/TableCatalogue.h"
#include "datatable/TableList.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

QString readFile(const QString& path, QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    if (file.error() == QFileDevice::NoError)
        return {};
    return QStringLiteral("%1 cannot be read: %2")
        .arg(QDir::toNativeSeparators(path), file.errorString());
}

/** Compressed files stand beside those that they are made of. */
QStringList plainFiles(const QDir& folder)
{
    QStringList names = folder.entryList(QDir::Files, QDir::Name);
    names.erase(
        std::remove_if(names.begin(), names.end(),
                       [](const QString& name) { return name.endsWith(QLatin1String(".gz")); }),
        names.end());
    return names;
}

QString readTables(const QDir& folder, const QStringList& names, Content& content)
{
    for (const QString& name : names) {
        QByteArray bytes;
        QString fault = readFile(folder.filePath(name), bytes);
        if (!fault.isEmpty())
            return fault;
        content.tables.insert(name.section(QLatin1Char('.'), 0, 0), bytes);
    }
    return {};
}

QString readVersions(const QString& path, Content& content)
{
    content.versions = QByteArray();
    return readFile(path, *content.versions);
}

QString readContentFolder(const QDir& folder, Content& content)
{
    if (!content.folder.isEmpty())
        return QStringLiteral("%1 is a second content folder")
            .arg(QDir::toNativeSeparators(folder.path()));
    content.folder = folder.absolutePath();
    const QDir tables(folder.filePath(QStringLiteral("app/resources")));
    QString fault = readTables(tables, plainFiles(tables), content);
    const QString versions = folder.filePath(QStringLiteral("app/versions.json"));
    if (!fault.isEmpty() || !QFileInfo::exists(versions))
        return fault;
    return readVersions(versions, content);
}

} // namespace

QString Content::read(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("%1 is not there").arg(QDir::toNativeSeparators(path));
    if (info.isFile() && info.fileName() == QLatin1String("versions.json"))
        return readVersions(path, *this);
    if (info.isFile())
        return readTables(info.dir(), {info.fileName()}, *this);
    const QDir place(path);
    if (place.exists(QStringLiteral("app/resources")))
        return readContentFolder(place, *this);
    QStringList names;
    for (const QString& name : plainFiles(place)) {
        if (isTable(name.section(QLatin1Char('.'), 0, 0)))
            names.append(name);
    }
    if (names.isEmpty())
        return QStringLiteral("%1 holds no table").arg(QDir::toNativeSeparators(path));
    return readTables(place, names, *this);
}

QStringList Content::files() const
{
    QStringList files;
    const QDir root(folder);
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(root.relativeFilePath(walk.next()));
    files.sort();
    return files;
}

QStringList Content::tableNames()
{
    QStringList names;
    for (const EDataTable::EDataTableType type : TableCatalogue::types())
        names.append(TableCatalogue::name(type));
    for (const TableEntry& entry : tableList()) {
        const QString name = QString::fromLatin1(entry.reader.table);
        if (!names.contains(name))
            names.append(name);
    }
    return names;
}

bool Content::isTable(const QString& name)
{
    return tableNames().contains(name);
}
