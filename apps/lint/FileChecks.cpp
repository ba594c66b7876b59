#include "content/Content.h"
#include "content/FileUse.h"
#include "content/Table.h"
#include "lint/Archives.h"
#include "lint/ContentChecks.h"
#include "lint/Findings.h"
#include "lint/Wording.h"

#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <algorithm>

namespace {

/** A file that some cell has a client fetch, or would if its row became a record. */
struct WantedFile
{
    Place place; // of the first cell that does
    QString name;
    bool isArchive = false;
    QString version;
    QString description;
    bool isFetched = false;
    int others = 0; // further rows that have it fetched
};

/** By their paths in the content folder. */
using WantedFiles = QMap<QString, WantedFile>;

void addWanted(const Table& table, const Row& row, const ColumnSchema& column, WantedFiles& wanted)
{
    if (!table.counts(row, column) || !column.fits(table.cell(row, column.name)))
        return;
    for (const QString& name : FileUse::namesIn(column, table.text(row, column.name))) {
        // What a faulty name means is not unused for that.
        const bool isFetched =
            row.leftOutFor.isEmpty() && FileUse::nameFault(column, name).isEmpty();
        for (const FileSchema& file : column.files) {
            const QString path = FileUse::pathOf(file, table, row, name);
            const bool isFilm = path.endsWith(QLatin1String(".mp4"));
            const WantedFile known = wanted.value(path);
            if (!known.isFetched)
                wanted.insert(path,
                              {{table.name(), row.number, column.name},
                               name,
                               file.isArchive && !isFilm,
                               table.text(row, file.version),
                               file.description,
                               isFetched});
            else if (isFetched
                     && (known.place.table != table.name() || known.place.row != row.number))
                ++wanted[path].others;
        }
    }
}

WantedFiles wantedBy(const QVector<Table>& tables)
{
    WantedFiles wanted;
    for (const Table& table : tables) {
        if (table.isRefused())
            continue;
        for (const ColumnSchema& column : table.columns()) {
            for (const Row& row : table.rows()) {
                if (!column.files.isEmpty())
                    addWanted(table, row, column, wanted);
            }
        }
    }
    return wanted;
}

void checkArchive(const QString& archive, const QString& path, const WantedFile& wanted,
                  Archives& archives, Findings& findings)
{
    QString description = wanted.description;
    description.replace(QLatin1String("{}"), wanted.name);
    const Archives::Verdict verdict = archives.verdictOn(archive, wanted.version, description);
    if (!verdict.error.isEmpty())
        findings.add(Rule::RefusedArchive, wanted.place,
                     QStringLiteral("a client refuses %1: %2").arg(path, verdict.error));
    else if (!description.isEmpty() && !verdict.hasDescription)
        findings.add(Rule::MissingDescription, wanted.place,
                     QStringLiteral("%1 holds no \"%2\"; a client fetches it again and again, and "
                                    "never plays it")
                         .arg(path, description));
}

void checkMissing(const Content& content, const WantedFiles& wanted, const QStringList& files,
                  Archives& archives, Findings& findings)
{
    const QSet<QString> there(files.begin(), files.end());
    QMap<QString, QString> byLowerCase;
    for (const QString& file : files)
        byLowerCase.insert(file.toLower(), file);
    for (auto file = wanted.begin(); file != wanted.end(); ++file) {
        const QString& path = file.key();
        if (!file->isFetched)
            continue; // other clients may
        if (there.contains(path)) {
            if (file->isArchive)
                checkArchive(content.folder + QLatin1Char('/') + path, path, *file, archives,
                             findings);
            continue;
        }
        const QString other = byLowerCase.value(path.toLower());
        const QString but =
            other.isEmpty() ? QString() : QStringLiteral(", but there is %1").arg(other);
        const QString others = file->others == 0
            ? QString()
            : QStringLiteral(", and nothing for %1 more rows").arg(file->others);
        findings.add(Rule::MissingFile, file->place,
                     QStringLiteral("%1 is not there%2; a client shows nothing in its place%3")
                         .arg(path, but, others));
    }
}

QString folderOf(const QString& path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')) + 1);
}

/** What the tables that no manager reads may name. */
QSet<QString> namesInUnread(const QVector<Table>& tables)
{
    QSet<QString> names;
    for (const Table& table : tables) {
        if (table.reader() != nullptr)
            continue;
        for (const Row& row : table.rows()) {
            for (const QJsonValue& cell : row.cells)
                names.insert(cell.toString());
        }
    }
    return names;
}

/** Whether rows are lost, with whatever they name, for a column that the table lacks. */
bool lacksRows(const Table& table)
{
    return std::any_of(table.rows().begin(), table.rows().end(), [&table](const Row& row) {
        return !row.leftOutFor.isEmpty() && !table.header().contains(row.leftOutFor);
    });
}

/** Where tables name nothing, others may: a content folder can be a part of a web site. */
QSet<QString> foldersOf(const WantedFiles& wanted, const QVector<Table>& tables)
{
    QSet<QString> folders;
    for (auto file = wanted.begin(); file != wanted.end(); ++file)
        folders.insert(folderOf(file.key()));
    for (const Table& table : tables) {
        if (!lacksRows(table))
            continue;
        for (const ColumnSchema& column : table.columns()) {
            for (const FileSchema& file : column.files)
                folders.remove(folderOf(FileUse::pathOf(file, table, {}, {})));
        }
    }
    return folders;
}

void checkUnused(const WantedFiles& wanted, const QVector<Table>& tables, const QStringList& files,
                 Findings& findings)
{
    const QSet<QString> folders = foldersOf(wanted, tables);
    const QSet<QString> named = namesInUnread(tables);
    for (const QString& file : files) {
        const QString folder = folderOf(file);
        const QString name = file.mid(folder.size());
        if (!folders.contains(folder) || wanted.contains(file) || named.contains(name)
            || named.contains(QFileInfo(name).completeBaseName())
            || folder == QLatin1String("app/resources/")
            || file == QLatin1String("app/versions.json"))
            continue;
        findings.add(Rule::UnusedFile, {},
                     QStringLiteral("no table names %1; no client asks for it").arg(file));
    }
}

void checkLetterCase(const QStringList& files, Findings& findings)
{
    QMap<QString, QString> seen;
    for (const QString& file : files) {
        const QString folded = file.toLower();
        if (seen.contains(folded))
            findings.add(Rule::LetterCase, {},
                         QStringLiteral("%1 and %2 differ in letter case only; some systems keep "
                                        "one of them")
                             .arg(seen.value(folded), file));
        seen.insert(folded, file);
    }
}

} // namespace

void ContentChecks::checkFiles(const Content& content, const QVector<Table>& tables,
                               Archives& archives, Findings& findings)
{
    if (content.folder.isEmpty())
        return;
    const QStringList files = content.files();
    const WantedFiles wanted = wantedBy(tables);
    checkMissing(content, wanted, files, archives, findings);
    checkUnused(wanted, tables, files, findings);
    checkLetterCase(files, findings);
}
