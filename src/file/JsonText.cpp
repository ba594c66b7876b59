#include "file/JsonText.h"

#include <QJsonDocument>

QString JsonText::parse(const QByteArray& text, QJsonObject& object)
{
    QJsonParseError fault;
    const QJsonDocument document = QJsonDocument::fromJson(text, &fault);
    if (fault.error != QJsonParseError::NoError)
        return QStringLiteral("not JSON at byte %1: %2")
            .arg(QString::number(fault.offset), fault.errorString());
    if (!document.isObject())
        return QStringLiteral("not a JSON object");
    object = document.object();
    return {};
}
