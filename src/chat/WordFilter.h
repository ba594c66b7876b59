#pragma once

#include "chat/AnchorIndex.h"
#include "chat/ChatLine.h"

#include <QHash>
#include <QRegExp>
#include <QStringList>

#include <vector>

/**
 * A list of words, prepared for masking.
 *
 * Masks as if every word's pattern were run over the line in the order of the list, each on what
 * the ones before it left, but looks only at the words that could match. See docs/word-filter.md.
 *
 * Not for two threads at once, masking included: engines are compiled on first need and kept.
 */
class WordFilter
{
public:
    WordFilter() = default;
    explicit WordFilter(const QStringList& words);

    const QStringList& words() const { return m_words; }

    void mask(ChatLine& line);

private:
    /** Words by their place in the list, the first at the front; a heap. */
    using Due = std::vector<int>;

    void addDue(const QString& text, int from, int to, int after, Due& due) const;
    void apply(int rank, ChatLine& line, Due& due);
    QRegExp& engine(int rank);

    QStringList m_words;
    AnchorIndex m_index;
    Due m_unanchored; // what could match any text
    QHash<int, QRegExp> m_engines;
};
