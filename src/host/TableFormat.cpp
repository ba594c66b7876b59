#include "host/TableFormat.h"

#include "file/JsonText.h"
#include "host/HostLimits.h"

namespace {

QString parseColumns(const QJsonValue& columns, QHash<QString, int>& header)
{
    if (!columns.isArray())
        return QStringLiteral("\"columns\" is not a list of column names");
    const QJsonArray names = columns.toArray();
    for (int index = 0; index < names.size(); ++index) {
        if (!names.at(index).isString())
            return QStringLiteral("the name of column %1 is not text").arg(index + 1);
        const QString name = names.at(index).toString();
        if (header.contains(name))
            return QStringLiteral("column \"%1\" is named twice").arg(name);
        header.insert(name, index);
    }
    return {};
}

} // namespace

QString TableFormat::parse(const QByteArray& bytes, QHash<QString, int>& header, QJsonArray& rows)
{
    if (bytes.size() > HostLimits::maxTableBytes)
        return QStringLiteral("larger than %1 bytes").arg(HostLimits::maxTableBytes);
    QJsonObject table;
    QHash<QString, int> columns;
    QString error = JsonText::parse(bytes, table);
    if (error.isEmpty())
        error = parseColumns(table.value(QLatin1String("columns")), columns);
    if (!error.isEmpty())
        return error;
    const QJsonValue list = table.value(QLatin1String("rows"));
    if (!list.isArray())
        return QStringLiteral("\"rows\" is not a list");

    header = columns;
    rows = list.toArray();
    return {};
}
