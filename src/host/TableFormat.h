#pragma once

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QString>

/** Reading a table file's bytes; see docs/table-format.md. Any thread. */
namespace TableFormat {

/** Why the bytes are no table; empty, and header and rows filled, when they are one. */
QString parse(const QByteArray& bytes, QHash<QString, int>& header, QJsonArray& rows);

} // namespace TableFormat
