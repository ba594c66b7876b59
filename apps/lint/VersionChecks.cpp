#include "content/Content.h"
#include "content/Table.h"
#include "datatable/TableCatalogue.h"
#include "lint/ContentChecks.h"
#include "lint/Findings.h"
#include "lint/Wording.h"

#include <QJsonObject>

namespace {

QStringList versionedTables()
{
    QStringList names;
    for (const EDataTable::EDataTableType type : TableCatalogue::types())
        names.append(TableCatalogue::name(type));
    return names;
}

QString insteadOf(const QString& name, const QStringList& names)
{
    const QString bare = name.section(QLatin1Char('.'), 0, 0);
    const QString near = names.contains(bare) ? bare : Wording::nearest(name, names);
    return near.isEmpty() ? QString() : QStringLiteral("; there is %1").arg(near);
}

/** What a client takes: a whole number from 0 on. */
int versionOf(const QJsonObject& versions, const QString& table)
{
    return versions.value(table).toInt(-1);
}

/** What becomes of a table whose version nobody learns. */
const QLatin1String unversioned("a client without the table fetches it as version 0, and no client "
                                "ever asks again");

void checkNumbers(const QJsonObject& versions, Findings& findings)
{
    const QStringList names = versionedTables();
    for (auto version = versions.begin(); version != versions.end(); ++version) {
        const Place place {version.key(), 0, QString()};
        if (!names.contains(version.key()))
            findings.add(Rule::UnknownTable, place,
                         QStringLiteral("versions.json names a table that no client asks for%1")
                             .arg(insteadOf(version.key(), names)));
        else if (versionOf(versions, version.key()) < 0)
            findings.add(Rule::BadVersion, place,
                         QStringLiteral("the version %1 is no whole number from 0 on; ")
                                 .arg(Wording::shown(version.value()))
                             + unversioned);
    }
}

void checkTables(const Content& content, const QJsonObject& versions, Findings& findings)
{
    for (const QString& name : versionedTables()) {
        const Place place {name, 0, QString()};
        const bool isThere = content.tables.contains(name);
        if (isThere && !versions.contains(name))
            findings.add(Rule::MissingVersion, place,
                         QStringLiteral("versions.json has no version of it; ") + unversioned);
        if (!isThere && versionOf(versions, name) >= 0 && !content.folder.isEmpty())
            findings.add(Rule::MissingTable, place,
                         QStringLiteral("app/resources/%1 is not there; a client has no such "
                                        "table%2")
                             .arg(name, Table::startUpNote(tableEntry(name))));
    }
}

} // namespace

void ContentChecks::checkVersions(const Content& content, const QVector<Table>& tables,
                                  Findings& findings)
{
    const QStringList names = Content::tableNames();
    for (const Table& table : tables) {
        if (!names.contains(table.name()))
            findings.add(Rule::UnknownTable, {table.name(), 0, QString()},
                         QStringLiteral("no client asks for a table of this name%1")
                             .arg(insteadOf(table.name(), names)));
    }
    const Place file {QStringLiteral("versions.json"), 0, QString()};
    const QString effect = QStringLiteral("; no client learns of anything new");
    if (!content.versions) {
        if (!content.folder.isEmpty())
            findings.add(Rule::BadVersions, file,
                         QStringLiteral("app/versions.json is not there") + effect);
        return;
    }
    QString error;
    const auto versions = content.versionNumbers(&error);
    if (!versions) {
        findings.add(Rule::BadVersions, file, error + effect);
        return;
    }
    checkNumbers(*versions, findings);
    checkTables(content, *versions, findings);
}

void ContentChecks::checkChanges(const Content& content, const Content& published,
                                 Findings& findings)
{
    const auto now = content.versionNumbers();
    const auto before = published.versionNumbers();
    if (!now || !before)
        return;
    for (const QString& name : versionedTables()) {
        const int version = versionOf(*now, name);
        const int old = versionOf(*before, name);
        if (version < 0 || old < 0 || !content.tables.contains(name))
            continue;
        const Place place {name, 0, QString()};
        const bool changed = content.tables.value(name) != published.tables.value(name);
        if (version < old)
            findings.add(Rule::LoweredVersion, place,
                         QStringLiteral("version %1 is published, %2 is lower; caches and clients "
                                        "may still hold what was version %2 then")
                             .arg(QString::number(old), QString::number(version)));
        else if (version == old && changed)
            findings.add(Rule::SameVersion, place,
                         QStringLiteral("the table is not the published one, and its version is "
                                        "still %1; clients that have it never ask again")
                             .arg(version));
        else if (version > old && !changed)
            findings.add(Rule::NeedlessVersion, place,
                         QStringLiteral("the table is the published one, and its version went from "
                                        "%1 to %2; every client fetches it anew")
                             .arg(QString::number(old), QString::number(version)));
    }
}
