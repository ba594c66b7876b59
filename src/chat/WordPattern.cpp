#include "chat/WordPattern.h"

namespace {

// Outside a class these follow a quantifier, begin the pattern or close what nothing opened: an
// error each, unless a backslash before them shifts the classes.
constexpr char16_t refused[] = u"]{}*+?";
constexpr char16_t meaningful[] = u"^$.|()[\\";

template <std::size_t size>
bool isOneOf(const char16_t (&characters)[size], QChar character)
{
    for (std::size_t i = 0; i + 1 < size; ++i) {
        if (characters[i] == character.unicode())
            return true;
    }
    return false;
}

/** Where the ordinary word's match that begins at start ends; -1 when there is none. */
int matchEnd(const QString& word, const QString& text, int start)
{
    const QChar* characters = text.constData();
    const int size = text.size();
    int position = start + 1;
    for (int i = 1; i < word.size(); ++i, ++position) {
        // A gap holds no character of the word, so the first one that is decides.
        const int gapEnd = qMin(position + 2, size);
        while (position < gapEnd && !word.contains(characters[position]))
            ++position;
        if (position >= size || characters[position] != word.at(i))
            return -1;
    }
    return position;
}

} // namespace

WordPattern::Kind WordPattern::kindOf(const QString& word)
{
    const Kind special = word.size() > maxSpecialLength ? TooLong : Special;
    bool ordinary = !word.isEmpty();
    bool invalid = false;
    for (const QChar character : word) {
        if (character == QLatin1Char('\\'))
            return special;
        invalid = invalid || isOneOf(refused, character);
        ordinary = ordinary && character != QLatin1Char('-') && !isOneOf(meaningful, character);
    }
    if (invalid)
        return Invalid;
    return ordinary ? Ordinary : special;
}

bool WordPattern::isLiteral(QChar character)
{
    return !isOneOf(refused, character) && !isOneOf(meaningful, character);
}

int WordPattern::longestMatch(const QString& word)
{
    for (const QChar character : word) {
        if (isOneOf(u"^$\\", character))
            return 0;
    }
    return qMax(0, 3 * word.size() - 2);
}

QString WordPattern::of(const QString& word)
{
    const QString gap = QStringLiteral("[^") + word + QStringLiteral("]{0,2}");
    QString pattern;
    for (int i = 0; i < word.size(); ++i) {
        if (i > 0)
            pattern += gap;
        pattern += word.at(i);
    }
    return pattern;
}

Stretch WordPattern::next(const QString& word, const QString& text, int from)
{
    const QChar first = word.at(0);
    for (int start = from; (start = text.indexOf(first, start)) >= 0; ++start) {
        const int end = matchEnd(word, text, start);
        if (end >= 0)
            return {start, end - start};
    }
    return {};
}
