#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QString>

namespace CellText {

/** A cell as its file has it, on one line; empty for none. */
inline QString of(const QJsonValue& cell)
{
    if (cell.isUndefined())
        return {};
    const QByteArray list = QJsonDocument(QJsonArray {cell}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

/** Whether a cell says as much as none. */
inline bool isEmpty(const QJsonValue& cell)
{
    return cell.isNull() || cell.isUndefined() || cell == QJsonValue(QString())
        || cell == QJsonValue(0) || cell == QJsonValue(false);
}

} // namespace CellText
