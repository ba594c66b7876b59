#pragma once

#include "chat/AnchorIndex.h"
#include "chat/ChatLine.h"

#include <QCache>
#include <QRegExp>
#include <QStringList>

#include <vector>

/**
 * A list of words, prepared for masking.
 *
 * Masks as if every word's pattern were run over the line in the order of the list, each on what
 * the ones before it left, but looks only at the words that could match, and only where they could.
 * Words of kind WordPattern::TooLong are left out. See docs/word-filter.md.
 *
 * Not for two threads at once, masking included: engines are compiled on need, and kept for a time.
 */
class WordFilter
{
public:
    /** The words whose engines are kept have, together, so many characters, and four more each. */
    static constexpr int maxKeptCharacters = 4096;

    WordFilter() = default;
    explicit WordFilter(const QStringList& words);

    const QStringList& words() const { return m_words; }

    /** Whether there are words that have nothing to be found by. */
    bool triesEveryLine() const { return !m_unanchored.empty(); }

    void mask(ChatLine& line);

    int keptEngines() const { return m_engines.size(); }

private:
    /** A word, by its place in the list, and the piece of the line that its anchor begins in. */
    struct DueWord
    {
        int rank;
        int piece; // everywhere for a word without an anchor

        bool operator>(const DueWord& other) const
        {
            return rank != other.rank ? rank > other.rank : piece > other.piece;
        }
    };
    using Due = std::vector<DueWord>; // a heap, the first word's first piece at the front
    static constexpr int everywhere = -1;

    void addDue(const ChatLine& line, const ChatLine::Window& window, int to, int after,
                Due& due) const;
    static void takeFirst(Due& due, int& rank, std::vector<int>& pieces);
    void apply(int rank, const std::vector<int>& pieces, ChatLine& line, Due& due);
    void apply(int rank, const ChatLine::Window& window, int to, ChatLine& line, Due& due);
    QRegExp& engine(int rank);

    QStringList m_words;
    AnchorIndex m_index;
    Due m_unanchored; // what could match any text
    QCache<int, QRegExp> m_engines {maxKeptCharacters};
};
