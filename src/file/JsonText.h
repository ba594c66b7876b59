#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/** JSON files hold one object. Any thread. */
namespace JsonText {

/** What the text is instead ("not JSON at byte 3: ..."); empty, and the object set, when it is one.
 */
QString parse(const QByteArray& text, QJsonObject& object);

} // namespace JsonText
