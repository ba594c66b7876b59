#pragma once

#include <QString>

/** The language of the program's own words. What the library tells stays as it is. */
namespace Language {

/**
 * Has the program, and what Qt shows in it, speak a language by its name, such as "zh_CN"; without
 * a name the first of the system's languages that it can. False, and the error told, when it has no
 * translation to the language that is named.
 */
bool use(const QString& name, QString* error);

} // namespace Language
