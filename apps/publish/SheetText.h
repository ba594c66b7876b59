#pragma once

#include <QByteArray>
#include <QString>

/** The text of a sheet that was saved as CSV. */
namespace SheetText {

/**
 * Takes the encoding named; without one that of the byte order mark, else UTF-16 where its zeros
 * tell it, else UTF-8, else GB18030, and says which it was. Answers why that cannot be done, or an
 * empty text.
 */
QString decode(const QByteArray& bytes, const QString& named, QString& text, QString& encoding);

} // namespace SheetText
