#include "publish/Release.h"

#include <QJsonArray>

QJsonObject JournalEntry::toJson() const
{
    QJsonArray changes;
    for (const VersionChange& change : tables) {
        QJsonObject object {{QStringLiteral("table"), change.table},
                            {QStringLiteral("to"), change.to}};
        if (change.from)
            object.insert(QStringLiteral("from"), *change.from);
        changes.append(object);
    }
    QJsonObject object {{QStringLiteral("release"), release},
                        {QStringLiteral("time"), time.toUTC().toString(Qt::ISODate)},
                        {QStringLiteral("action"), action},
                        {QStringLiteral("tables"), changes},
                        {QStringLiteral("addedFiles"), addedFiles},
                        {QStringLiteral("changedFiles"), changedFiles},
                        {QStringLiteral("removedFiles"), removedFiles}};
    if (restored > 0)
        object.insert(QStringLiteral("restored"), restored);
    return object;
}

JournalEntry JournalEntry::fromJson(const QJsonObject& object)
{
    JournalEntry entry;
    entry.release = object.value(QLatin1String("release")).toInt();
    entry.time = QDateTime::fromString(object.value(QLatin1String("time")).toString(), Qt::ISODate);
    entry.action = object.value(QLatin1String("action")).toString();
    entry.restored = object.value(QLatin1String("restored")).toInt();
    const QJsonArray changes = object.value(QLatin1String("tables")).toArray();
    for (const QJsonValue& value : changes) {
        const QJsonObject change = value.toObject();
        VersionChange read {change.value(QLatin1String("table")).toString(), std::nullopt,
                            change.value(QLatin1String("to")).toInt()};
        if (change.contains(QLatin1String("from")))
            read.from = change.value(QLatin1String("from")).toInt();
        entry.tables.append(read);
    }
    entry.addedFiles = object.value(QLatin1String("addedFiles")).toInt();
    entry.changedFiles = object.value(QLatin1String("changedFiles")).toInt();
    entry.removedFiles = object.value(QLatin1String("removedFiles")).toInt();
    return entry;
}
