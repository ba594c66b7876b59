#include "diff/ContentDiff.h"

#include "content/Content.h"
#include "content/Table.h"
#include "diff/TableDiff.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace {

Change changeOf(bool isBefore, bool isAfter, bool isSame)
{
    if (isBefore && isAfter)
        return isSame ? Change::None : Change::Changed;
    return isAfter ? Change::Added : Change::Removed;
}

/** In a content folder what is called otherwise is no table to any client. */
QStringList tableNames(const Content& content)
{
    QStringList names;
    for (auto table = content.tables.begin(); table != content.tables.end(); ++table) {
        if (content.folder.isEmpty() || Content::isTable(table.key()))
            names.append(table.key());
    }
    return names;
}

void compareTables(const QString& name, const Content& before, const Content& after,
                   TableChange& change)
{
    const bool isBefore = before.tables.contains(name);
    const bool isAfter = after.tables.contains(name);
    const QByteArray old = before.tables.value(name);
    const QByteArray now = after.tables.value(name);
    if (!isBefore && !isAfter)
        return;
    change.kind = changeOf(isBefore, isAfter, old == now);
    const Table oldTable(name, isBefore ? old : now);
    if (isBefore)
        change.errorBefore = oldTable.error();
    const Table newTable(name, isAfter ? now : old);
    if (isAfter)
        change.errorAfter = newTable.error();
    if (change.hasError() || change.kind == Change::None)
        return;
    if (change.kind == Change::Changed)
        TableDiff::compare(oldTable, newTable, change);
    else
        TableDiff::list(newTable, change.kind, change);
}

/** The files of a content folder that are neither tables nor their versions, by their paths. */
QSet<QString> otherFiles(const Content& content)
{
    QSet<QString> paths;
    const QString tables = QStringLiteral("app/resources/");
    for (const QString& file : content.files()) {
        const bool isTable = file.startsWith(tables) && Content::isTable(file.mid(tables.size()));
        if (!isTable && file != QLatin1String("app/versions.json"))
            paths.insert(file);
    }
    return paths;
}

bool areEqual(const QString& left, const QString& right)
{
    QFile one(left);
    QFile other(right);
    if (!one.open(QIODevice::ReadOnly) || !other.open(QIODevice::ReadOnly)
        || one.size() != other.size())
        return false;
    constexpr qint64 block = 1 << 16;
    while (!one.atEnd()) {
        if (one.read(block) != other.read(block))
            return false;
    }
    return true;
}

QVector<FileChange> filesBetween(const Content& before, const Content& after)
{
    QVector<FileChange> changes;
    if (before.folder.isEmpty() || after.folder.isEmpty())
        return changes;
    const QSet<QString> old = otherFiles(before);
    const QSet<QString> now = otherFiles(after);
    QStringList paths = (old + now).values();
    paths.sort();
    for (const QString& path : qAsConst(paths)) {
        const QString oldPath = before.folder + QLatin1Char('/') + path;
        const QString newPath = after.folder + QLatin1Char('/') + path;
        const bool isBefore = old.contains(path);
        const bool isAfter = now.contains(path);
        FileChange change;
        change.kind =
            changeOf(isBefore, isAfter, isBefore && isAfter && areEqual(oldPath, newPath));
        change.path = path;
        change.sizeBefore = isBefore ? QFileInfo(oldPath).size() : 0;
        change.sizeAfter = isAfter ? QFileInfo(newPath).size() : 0;
        if (change.kind != Change::None)
            changes.append(change);
    }
    return changes;
}

/** Gives each file to the first table with a record that names it, or named it. */
void addFiles(QVector<FileChange> files, const Content& before, const Content& after,
              QVector<TableChange>& changes)
{
    for (TableChange& change : changes) {
        if (files.isEmpty())
            return;
        const Table old(change.table, before.tables.value(change.table));
        const Table now(change.table, after.tables.value(change.table));
        const auto oldUsers = TableDiff::users(old);
        const auto newUsers = TableDiff::users(now);
        QVector<FileChange> others;
        for (FileChange& file : files) {
            file.records = newUsers.value(file.path, oldUsers.value(file.path));
            (file.records.isEmpty() ? others : change.files).append(file);
        }
        files = others;
    }
    if (files.isEmpty())
        return;
    TableChange rest;
    rest.files = files;
    changes.append(rest);
}

QString counted(int count, const QString& thing)
{
    return QStringLiteral("%1 %2%3").arg(QString::number(count), thing,
                                         count == 1 ? QString() : QStringLiteral("s"));
}

/** As in "2 records added, 1 removed"; empty where there is nothing to count. */
QString countedChanges(const QString& thing, const QMap<Change, int>& counts)
{
    QStringList parts;
    const auto add = [&](Change kind, const QString& what) {
        const int count = counts.value(kind);
        if (count > 0)
            parts.append((parts.isEmpty() ? counted(count, thing) : QString::number(count))
                         + QLatin1Char(' ') + what);
    };
    add(Change::Added, QStringLiteral("added"));
    add(Change::Removed, QStringLiteral("removed"));
    add(Change::Changed, QStringLiteral("changed"));
    return parts.join(QStringLiteral(", "));
}

QStringList countsOf(const QVector<TableChange>& changes)
{
    QStringList unknown;
    QMap<Change, int> records;
    QMap<Change, int> files;
    bool isDifferent = false;
    for (const TableChange& change : changes) {
        isDifferent = isDifferent || change.isDifferent();
        if (change.hasError())
            unknown.append(change.table);
        for (const RecordChange& record : change.records)
            ++records[record.kind];
        for (const FileChange& file : change.files)
            ++files[file.kind];
    }
    QStringList parts {countedChanges(QStringLiteral("record"), records),
                       countedChanges(QStringLiteral("file"), files)};
    parts.removeAll(QString());
    if (!unknown.isEmpty())
        parts.append(unknown.join(QStringLiteral(", ")) + QStringLiteral(" not compared"));
    if (parts.isEmpty())
        parts.append(isDifferent ? QStringLiteral("no record changed")
                                 : QStringLiteral("no difference"));
    return parts;
}

} // namespace

QVector<TableChange> ContentDiff::between(const Content& before, const Content& after)
{
    TableChange versions;
    versions.table = QStringLiteral("versions.json");
    const auto old = before.versionNumbers(&versions.errorBefore);
    const auto now = after.versionNumbers(&versions.errorAfter);
    QStringList names = tableNames(before) + tableNames(after);
    if (old && now)
        names += old->keys() + now->keys();
    names.sort();
    names.removeDuplicates();
    QVector<TableChange> changes;
    for (const QString& name : qAsConst(names)) {
        TableChange change;
        change.table = name;
        if (old && now) {
            change.versionBefore = old->value(name);
            change.versionAfter = now->value(name);
        }
        compareTables(name, before, after, change);
        changes.append(change);
    }
    if (versions.hasError())
        changes.append(versions);
    addFiles(filesBetween(before, after), before, after, changes);
    return changes;
}

QVector<TableChange> ContentDiff::ofTables(const QVector<TableChange>& changes,
                                           const QStringList& names)
{
    QVector<TableChange> chosen;
    std::copy_if(changes.begin(), changes.end(), std::back_inserter(chosen),
                 [&names](const TableChange& change) { return names.contains(change.table); });
    return chosen;
}

QString ContentDiff::summary(const TableChange& change)
{
    return change.hasError() ? QStringLiteral("not compared")
                             : countsOf({change}).join(QStringLiteral("; "));
}

QString ContentDiff::summary(const QVector<TableChange>& changes)
{
    const auto tables = static_cast<int>(
        std::count_if(changes.begin(), changes.end(), [](const TableChange& change) {
            return change.isDifferent() && !change.table.isEmpty();
        }));
    const QString counts = countsOf(changes).join(QStringLiteral("; "));
    return tables == 0 ? counts
                       : counted(tables, QStringLiteral("table")) + QStringLiteral(": ") + counts;
}
