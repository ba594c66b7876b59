#pragma once

#include <QString>

/** The content to be published. */
namespace ContentFolder {

/**
 * The full path of the folder named or, where none is, of the example content: of the source tree
 * that the program was built from, else the one installed with it. Empty, and the cause told, when
 * there is no content.
 */
QString find(const QString& named, QString* error);

} // namespace ContentFolder
