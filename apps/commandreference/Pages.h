#pragma once

#include "command/CommandLine.h"

/**
 * What is installed beside the program, off the declarations of its commands. Each fills in the
 * marks of a pattern, such as "@tables@".
 */
namespace Pages {

/** The manual page, for man. */
QString manual(QString pattern, const QList<Command>& commands);

QString bashCompletion(QString pattern, const QList<Command>& commands);
QString zshCompletion(QString pattern, const QList<Command>& commands);

} // namespace Pages
