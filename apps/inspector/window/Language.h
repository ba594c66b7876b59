#pragma once

#include <QStringList>

/** The language of the program's own words. What the library tells stays as it is. */
namespace Language {

/** The names of those that it has. */
QStringList known();

/**
 * Has the program, and what Qt shows in it, speak a language by its name, such as "zh_CN"; without
 * a name the first of the system's languages that it has. False when it has not the one named.
 */
bool use(const QString& name);

} // namespace Language
