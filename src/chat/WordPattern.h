#pragma once

#include <QString>

/** Part of a text; an empty one is a place between two characters. A start of -1 is none at all. */
struct Stretch
{
    int start = -1;
    int length = 0;
};

/**
 * What a forbidden word matches, word by word.
 *
 * A word's pattern is its characters with [^word]{0,2} between two neighbours, for the classic
 * engine. Nothing is escaped, so a character that means something to the engine changes the
 * pattern.
 */
namespace WordPattern {

enum Kind {
    Ordinary, ///< every character stands for itself: next() finds what the engine would
    Special,  ///< only the engine knows
    Invalid,  ///< the engine refuses the pattern, so nothing ever matches
    TooLong,  ///< would be special, but costs more than a word may: matches nothing either
};

/**
 * The longest special word. A pattern holds the whole word once for each of its characters, so
 * that memory and time to compile it grow with the square of the length, and the time to match it
 * can grow even faster.
 */
constexpr int maxSpecialLength = 64;

/** Special words may still turn out to be refused by the engine. */
Kind kindOf(const QString& word);

/**
 * The length of the longest match there can be, where matching looks at nothing but the characters
 * matched; 0 where it depends on the rest of the line.
 */
int longestMatch(const QString& word);

/**
 * Whether the character, outside the pattern's classes, stands for itself: it is then part of every
 * match, unless the word holds a bar or a backslash.
 */
bool isLiteral(QChar character);

QString of(const QString& word);

/** An ordinary word's leftmost match that begins at from or later. */
Stretch next(const QString& word, const QString& text, int from);

} // namespace WordPattern
