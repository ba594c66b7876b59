#pragma once

#include <QString>
#include <QStringList>

/**
 * The program's two streams, always in UTF-8. Data goes to standard output, everything else to the
 * error stream. Any thread, but for setManner().
 */
namespace Terminal {

enum Style { Plain, Bold, Faint, Good, Bad };

/** How the program speaks, as its user wants it. */
struct Manner
{
    bool quiet = false; ///< of what is no data, errors only
    bool plain = false; ///< on a terminal too as into a pipe: no style, no progress, nothing cut
};
void setManner(Manner manner);
bool isQuiet();

/** A line on standard output, out at once. */
void print(const QString& line);

/** Whether all that was printed has come through. */
bool isPrinted();

/** A line on the error stream; a progress bar that stands there is wiped first. Not when quiet. */
void tell(const QString& line);

/** The same for what has gone wrong: also when quiet. */
void complain(const QString& line);

/** Text on the error stream as it is, without a line end. */
void draw(const QString& text);

/** Whether the error stream is read by a person who wants to see something move. */
bool isErrorTerminal();

/** How many columns the terminal has that shows standard output; 0, for any number, where it is
 *  read by a program or is to be plain. COLUMNS of the environment goes before the terminal's own
 *  word. */
int width();

/** The same of the error stream; 80 where that is no terminal. */
int errorWidth();

/** The text in a style when standard output is a terminal, else unchanged. */
QString styled(Style style, const QString& text);

/** How many columns the text takes: two for each Chinese character. */
int columns(const QString& text);

/** The text with something seen in place of each character that a terminal would obey: controls,
 *  line ends, and what turns the direction of all that follows. */
QString legible(QString text);

/** The text with spaces up to this many columns. */
QString padded(const QString& text, int width);

/** The text cut to this many columns, its end replaced by "…" when it is longer. */
QString cut(const QString& text, int width);

/** The text in lines of at most this many columns, parted at spaces and only where there is none
 *  inside of a word; 0 leaves it in one. Never empty. */
QStringList wrapped(const QString& text, int width);

} // namespace Terminal
