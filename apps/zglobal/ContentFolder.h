#pragma once

#include <QCommandLineParser>
#include <QString>

/** The content to be published. */
namespace ContentFolder {

/** The full path of the folder named with --content, or the example content: of the source tree
 * that the program was built from, else the one installed with it. Throws a Failure when there is
 * none. */
QString find(const QCommandLineParser& line);

} // namespace ContentFolder
