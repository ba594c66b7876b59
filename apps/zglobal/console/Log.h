#pragma once

#include <QString>
#include <QStringList>

/** Where the library's log lines go. Any thread. */
namespace Log {

/** From now on lines are told on the error stream: all of them, or only warnings and worse. */
void install(bool verbose);

/** Every line since the last call of restart(). */
QStringList lines();
void restart();

/** Turns the event loop until a line holds this text; false when that takes too long. */
bool waitFor(const QString& text, int milliseconds);

} // namespace Log
