#include "host/TableFormat.h"

#include "host/HostLimits.h"

#include <QJsonDocument>
#include <QJsonObject>

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
    QJsonParseError json;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &json);
    if (json.error != QJsonParseError::NoError)
        return QStringLiteral("not JSON at byte %1: %2")
            .arg(QString::number(json.offset), json.errorString());
    if (!document.isObject())
        return QStringLiteral("not a JSON object");

    const QJsonObject table = document.object();
    QHash<QString, int> columns;
    QString error = parseColumns(table.value(QLatin1String("columns")), columns);
    if (!error.isEmpty())
        return error;
    const QJsonValue list = table.value(QLatin1String("rows"));
    if (!list.isArray())
        return QStringLiteral("\"rows\" is not a list");

    header = columns;
    rows = list.toArray();
    return {};
}
