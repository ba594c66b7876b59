#pragma once

#include <QString>

/**
 * The program's two streams, always in UTF-8. Data goes to standard output, everything else to the
 * error stream. Any thread.
 */
namespace Terminal {

enum Style { Plain, Bold, Faint, Good, Bad };

/** A line on standard output, out at once. */
void print(const QString& line);

/** A line on the error stream; a progress bar that stands there is wiped first. */
void tell(const QString& line);

/** Text on the error stream as it is, without a line end. */
void draw(const QString& text);

/** Whether the error stream is read by a person. */
bool isErrorTerminal();

/** The text in a style when standard output is a terminal, else unchanged. */
QString styled(Style style, const QString& text);

/** How many columns the text takes: two for each Chinese character. */
int columns(const QString& text);

/** The text with spaces up to this many columns. */
QString padded(const QString& text, int width);

/** The text cut to this many columns, its end replaced by "…" when it is longer. */
QString cut(const QString& text, int width);

} // namespace Terminal
