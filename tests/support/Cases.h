#pragma once

#include <QJsonArray>
#include <QStringList>

/**
 * Cases that are data: tests/data/NAME.json has, by test function, a list whose first element names
 * the columns and whose others are the rows. The first column, "case", is the row's tag. A column
 * is of the type that all of its cells have: QString, bool, int, double or else QJsonValue.
 */
namespace Cases {

/** For the data function of a test; answers the tags. */
QStringList rows(const char* file);

/** The text in UTF-8, but a character from U+0080 to U+00FF as that byte. */
QByteArray bytes(const QString& text);

} // namespace Cases
