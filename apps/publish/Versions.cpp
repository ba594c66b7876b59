#include "publish/Versions.h"

#include "content/Content.h"
#include "datatable/TableCatalogue.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const QLatin1String versionsKey("versions");

/** As good as it can be read: the next one has to be higher. */
int numberIn(const QJsonObject& versions, const QString& table)
{
    constexpr double highest = std::numeric_limits<int>::max();
    const double number = std::ceil(versions.value(table).toVariant().toDouble());
    return static_cast<int>(std::clamp(number, -1.0, highest));
}

QJsonObject versionsIn(const QByteArray& file)
{
    return QJsonDocument::fromJson(file).object().value(versionsKey).toObject();
}

} // namespace

QString Versions::fault(const std::optional<QByteArray>& file, const QString& path)
{
    Content content;
    content.versions = file;
    QString fault;
    content.versionNumbers(&fault);
    return fault.isEmpty() ? fault
                           : QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), fault);
}

QString Versions::raise(const QStringList& tables, const QByteArray& published,
                        const QByteArray& wanted, QByteArray& file, QVector<VersionChange>& changes)
{
    file = published.isEmpty() ? wanted : published;
    QJsonObject whole = QJsonDocument::fromJson(file).object();
    QJsonObject versions = versionsIn(file);
    const QJsonObject before = versionsIn(published);
    const QJsonObject first = versionsIn(wanted);
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        const QString table = TableCatalogue::name(type);
        if (!tables.contains(table))
            continue;
        VersionChange change {table, std::nullopt, 1};
        if (before.contains(table))
            change.from = numberIn(before, table);
        if (change.from == std::numeric_limits<int>::max())
            return QStringLiteral("%1 has the highest version that there is").arg(table);
        if (change.from)
            change.to = std::max(*change.from, 0) + 1;
        else if (first.contains(table))
            change.to = numberIn(first, table);
        changes.append(change);
        if (change.from || !first.contains(table))
            versions.insert(table, change.to);
        else
            versions.insert(table, first.value(table)); // a bad one, too: that is for lint to tell
    }
    if (changes.isEmpty())
        return {};
    whole.insert(versionsKey, versions);
    file = QJsonDocument(whole).toJson();
    return {};
}
