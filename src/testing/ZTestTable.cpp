#include "testing/ZTestTable.h"

#include <QJsonDocument>

namespace {

QJsonArray inOrder(const QStringList& columns, QJsonObject cells)
{
    QJsonArray row;
    for (const QString& column : columns)
        row.append(cells.contains(column) ? cells.take(column) : QJsonValue());
    if (!cells.isEmpty())
        qFatal("no column for %s", qPrintable(cells.keys().join(QLatin1Char(' '))));
    return row;
}

} // namespace

QByteArray ZTestTable::bytes(const QStringList& columns, const QVector<QJsonValue>& rows)
{
    QJsonArray elements;
    for (const QJsonValue& row : rows)
        elements.append(row.isObject() ? inOrder(columns, row.toObject()) : row);
    const QJsonObject table {{QStringLiteral("columns"), QJsonArray::fromStringList(columns)},
                             {QStringLiteral("rows"), elements}};
    return QJsonDocument(table).toJson(QJsonDocument::Compact);
}
