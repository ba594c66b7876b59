#include "content/Content.h"

#include "datatable/TableCatalogue.h"
#include "datatable/TableList.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <iterator>

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

QString withoutExtension(const QString& name)
{
    return name.section(QLatin1Char('.'), 0, 0);
}

QString readTable(const QString& path, const QString& name, Content& content)
{
    if (content.tables.contains(name))
        return QStringLiteral("%1 is a second file of the table %2")
            .arg(QDir::toNativeSeparators(path), name);
    QByteArray bytes;
    QString fault = readFile(path, bytes);
    if (fault.isEmpty())
        content.tables.insert(name, bytes);
    return fault;
}

/** As clients ask for them: what is called otherwise is another table, or none. */
QString readPublishedTables(const QDir& folder, Content& content)
{
    for (const QString& name : plainFiles(folder)) {
        QString fault = readTable(folder.filePath(name), name, content);
        if (!fault.isEmpty())
            return fault;
    }
    return {};
}

QString readTableFolder(const QDir& folder, Content& content)
{
    bool holdsTable = false;
    for (const QString& file : plainFiles(folder)) {
        const QString name = withoutExtension(file);
        if (!Content::isTable(name))
            continue;
        holdsTable = true;
        QString fault = readTable(folder.filePath(file), name, content);
        if (!fault.isEmpty())
            return fault;
    }
    return holdsTable
        ? QString()
        : QStringLiteral("%1 holds no table").arg(QDir::toNativeSeparators(folder.path()));
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
    QString fault = readPublishedTables(tables, content);
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
        return readTable(path, withoutExtension(info.fileName()), *this);
    const QDir place(path);
    if (place.exists(QStringLiteral("app/resources")))
        return readContentFolder(place, *this);
    return readTableFolder(place, *this);
}

std::optional<QJsonObject> Content::versionNumbers(QString* error) const
{
    if (!versions)
        return std::nullopt;
    QJsonParseError fault;
    const QJsonDocument document = QJsonDocument::fromJson(*versions, &fault);
    const QJsonValue numbers = document.object().value(QLatin1String("versions"));
    if (numbers.isObject())
        return numbers.toObject();
    if (error != nullptr)
        *error = fault.error == QJsonParseError::NoError
            ? QStringLiteral("the file has no object \"versions\"")
            : QStringLiteral("not JSON at byte %1: %2")
                  .arg(QString::number(fault.offset), fault.errorString());
    return std::nullopt;
}

QStringList Content::files() const
{
    QStringList files;
    const QDir root(folder);
    QDirIterator walk(folder, QDir::Files,
                      QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (walk.hasNext())
        files.append(root.relativeFilePath(walk.next()));
    files.sort();
    const auto isCompressed = [&files](const QString& file) {
        return file.endsWith(QLatin1String(".gz"))
            && std::binary_search(files.cbegin(), files.cend(), file.chopped(3));
    };
    QStringList plain;
    std::remove_copy_if(files.cbegin(), files.cend(), std::back_inserter(plain), isCompressed);
    return plain;
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
