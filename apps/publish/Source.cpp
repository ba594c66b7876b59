#include "publish/Source.h"

#include "content/Table.h"
#include "publish/Disk.h"
#include "publish/SheetTable.h"
#include "publish/SheetText.h"
#include "publish/Versions.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace {

const QLatin1String tableFolder("app/resources");
const QLatin1String versionsPath("app/versions.json");

/** Relative and sorted. Compressed files are made anew, and what a spreadsheet puts beside an open
 *  file is none. */
QStringList filesBelow(const QDir& folder)
{
    QStringList names;
    QDirIterator walk(folder.path(), QDir::Files,
                      QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (walk.hasNext()) {
        const QString path = walk.next();
        const bool isTwin =
            path.endsWith(QLatin1String(".gz")) && QFileInfo::exists(path.chopped(3));
        if (!isTwin && !walk.fileName().startsWith(QLatin1String("~$")))
            names.append(folder.relativeFilePath(path));
    }
    names.sort();
    return names;
}

QString folderOf(const QString& path)
{
    return path.section(QLatin1Char('/'), 0, -2);
}

bool isOfContent(const QString& path)
{
    const QStringList folders {QStringLiteral("app"), QStringLiteral("cms"), QStringLiteral("rn")};
    return folders.contains(path.section(QLatin1Char('/'), 0, 0));
}

} // namespace

QString Source::read(const QString& path, const Content& published, const QString& encoding)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("%1 is not there").arg(QDir::toNativeSeparators(path));
    if (info.isFile())
        return readTable(path, published, encoding);
    for (const QString& name : filesBelow(QDir(info.absoluteFilePath()))) {
        const QString file = QDir::cleanPath(path) + QLatin1Char('/') + name;
        QString fault;
        if (name == versionsPath || name == QLatin1String("versions.json"))
            fault = readVersions(file);
        else if (folderOf(name).isEmpty() || folderOf(name) == tableFolder)
            fault = readTable(file, published, encoding);
        else if (isOfContent(name))
            files.insert(name, file);
        else
            fault = QStringLiteral("%1 is in none of the folders app, cms and rn that clients know")
                        .arg(QDir::toNativeSeparators(file));
        if (!fault.isEmpty())
            return fault;
    }
    return tables.isEmpty() && files.isEmpty()
        ? QStringLiteral("%1 holds nothing to publish").arg(QDir::toNativeSeparators(path))
        : QString();
}

void Source::take(const Content& content)
{
    tables = content.tables;
    versions = content.versions;
    for (const QString& name : content.folder.isEmpty() ? QStringList() : content.files()) {
        if (name != versionsPath && folderOf(name) != tableFolder)
            files.insert(name, content.folder + QLatin1Char('/') + name);
    }
}

QString Source::readVersions(const QString& path)
{
    const QString fault = Disk::read(path, versions.emplace());
    return fault.isEmpty() ? Versions::fault(versions, path) : fault;
}

QString Source::readTable(const QString& path, const Content& published, const QString& encoding)
{
    const QFileInfo info(path);
    const QString table = info.fileName().section(QLatin1Char('.'), 0, 0);
    const QString extension = info.suffix().toLower();
    if (tables.contains(table))
        return QStringLiteral("%1 is a second file for the table %2")
            .arg(QDir::toNativeSeparators(path), table);
    if (extension == QLatin1String("csv") || extension == QLatin1String("tsv"))
        return readSheetFile(path, table, published, encoding);
    if (extension.isEmpty() || extension == QLatin1String("json"))
        return Disk::read(path, tables[table]);
    return QStringLiteral("%1 is no table; save a spreadsheet as CSV, in UTF-8 where it lets you")
        .arg(QDir::toNativeSeparators(path));
}

QString Source::readSheetFile(const QString& path, const QString& table, const Content& published,
                              const QString& encoding)
{
    QByteArray bytes;
    QString fault = Disk::read(path, bytes);
    if (!fault.isEmpty())
        return fault;
    QString text;
    QString taken;
    QVector<Csv::Record> records;
    fault = SheetText::decode(bytes, encoding, text, taken);
    if (fault.isEmpty())
        fault = Csv::parse(text, records);
    if (!fault.isEmpty())
        return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), fault);
    if (taken != QLatin1String("UTF-8") && encoding.isEmpty())
        notes.append(QStringLiteral("%1 is read as %2").arg(QFileInfo(path).fileName(), taken));
    std::optional<Table> before;
    if (published.tables.contains(table))
        before.emplace(table, published.tables.value(table));
    const SheetTable made = readSheet(table, records, before ? &*before : nullptr);
    tables.insert(table, made.bytes);
    sheetRows.insert(table, made.rows);
    faults += made.faults;
    notes += made.notes;
    return {};
}
