#pragma once

#include "support/WorkFolder.h"

#include <QJsonDocument>

#include <functional>

/**
 * Writes a table file: the columns' names between spaces, the rows as the text of a JSON array with
 * apostrophes for its quotes.
 */
inline QString tableOf(WorkFolder& folder, const QString& columns, QByteArray rows)
{
    const QJsonDocument parsed = QJsonDocument::fromJson(rows.replace('\'', '"'));
    if (!parsed.isArray())
        qFatal("no array of rows: %s", rows.constData());
    QVector<QJsonValue> elements;
    for (const auto& element : parsed.array())
        elements.append(element);
    return folder.writeTable(columns.split(QLatin1Char(' ')), elements);
}

/**
 * What is wrong with a loader that should load a table of these columns, with one row and a null,
 * and refuse it without any one of them, keeping its record; empty when nothing is.
 */
inline QString requiredFault(WorkFolder& folder, const QString& columns,
                             const std::function<bool(const QString&)>& load,
                             const std::function<int()>& recordCount)
{
    if (!load(tableOf(folder, columns, "[[], null]")) || recordCount() != 1)
        return QStringLiteral("does not load the whole table");
    for (const QString& column : columns.split(QLatin1Char(' '))) {
        QStringList others = columns.split(QLatin1Char(' '));
        others.removeOne(column);
        if (load(folder.writeTable(others, {})))
            return QStringLiteral("takes a table without ") + column;
    }
    if (load(QStringLiteral("no such file")))
        return QStringLiteral("takes a file that is not there");
    return recordCount() == 1 ? QString() : QStringLiteral("loses its record");
}
