#include "chat/WordFilter.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace {

/** Counts anchors, a few of them together: good enough to tell rare from frequent. */
class AnchorCounts
{
public:
    explicit AnchorCounts(int words)
    {
        while (m_mask < 4 * words)
            m_mask = 2 * m_mask + 1;
        m_counts.resize(m_mask + 1);
    }
    int& operator[](QStringView anchor)
    {
        return m_counts[static_cast<int>(AnchorIndex::keyOf(anchor) >> 4) & m_mask];
    }

private:
    int m_mask = 1023;
    QVector<int> m_counts;
};

/**
 * Calls use(start, length) for every anchor that the part of the word offers: what stands together
 * of characters that every match has, as long as an anchor can be.
 */
template <class Use>
void forEachAnchor(QStringView word, int from, int to, Use&& use)
{
    for (int start = from; start < to;) {
        int end = start;
        while (end < to && WordPattern::isLiteral(word.at(end)))
            ++end;
        const int length = qMin(end - start, AnchorIndex::maxLength);
        for (; length > 0 && start + length <= end; ++start)
            use(start, length);
        start = end + 1;
    }
}

/** Adds the rarest anchor in a part of the word; false when there is none. */
bool addAnchor(const QString& word, int from, int to, int rank, AnchorCounts& counts,
               QVector<AnchorIndex::Anchor>& anchors)
{
    int fewest = std::numeric_limits<int>::max();
    AnchorIndex::Anchor rarest {rank, 0, 0};
    forEachAnchor(word, from, to, [&](int start, int length) {
        const int count = counts[QStringView(word).mid(start, length)];
        if (count < fewest || (count == fewest && length > rarest.length)) {
            fewest = count;
            rarest = {rank, start, length};
        }
    });
    if (rarest.length > 0)
        anchors.append(rarest);
    return rarest.length > 0;
}

/**
 * Adds one anchor for each of the parts between bars; false unless all have one. Groups or not, a
 * match goes through the whole part after the last bar that it takes.
 */
bool addAnchors(const QString& word, int rank, AnchorCounts& counts,
                QVector<AnchorIndex::Anchor>& anchors)
{
    if (word.contains(QLatin1Char('\\')))
        return false;
    for (int from = 0; from <= word.size();) {
        const int bar = word.indexOf(QLatin1Char('|'), from);
        const int to = bar < 0 ? word.size() : bar;
        if (!addAnchor(word, from, to, rank, counts, anchors))
            return false;
        from = to + 1;
    }
    return true;
}

Stretch nextByEngine(const QRegExp& engine, const QString& text, int from)
{
    const int start = engine.indexIn(text, from);
    return {start, engine.matchedLength()};
}

} // namespace

WordFilter::WordFilter(const QStringList& words)
    : m_words(words)
{
    AnchorCounts counts(words.size());
    for (const QString& word : words) {
        forEachAnchor(word, 0, word.size(), [&](int start, int length) {
            ++counts[QStringView(word).mid(start, length)];
        });
    }
    QVector<AnchorIndex::Anchor> anchors;
    anchors.reserve(words.size());
    for (int rank = 0; rank < words.size(); ++rank) {
        const QString& word = words.at(rank);
        const WordPattern::Kind kind = WordPattern::kindOf(word);
        if (kind == WordPattern::Invalid || kind == WordPattern::TooLong)
            continue;
        if (!addAnchors(word, rank, counts, anchors) && engine(rank).isValid())
            m_unanchored.push_back({rank, everywhere});
    }
    m_index = AnchorIndex(words, anchors);
}

void WordFilter::mask(ChatLine& line)
{
    Due due = m_unanchored;
    for (int piece = 0; piece < line.pieceCount(); ++piece) {
        const auto window = line.pieces(piece, piece, 0, AnchorIndex::maxReach, piece);
        addDue(line, window, line.pieceSize(piece), -1, due);
    }
    std::vector<int> pieces;
    while (!due.empty()) {
        int rank = 0;
        takeFirst(due, rank, pieces);
        apply(rank, pieces, line, due);
    }
}

/**
 * Adds the words whose anchors begin in the window, before to, and that stand after this one.
 *
 * Every word has one turn, in the order of the list. A mask may make a match possible for a word
 * that has had its turn; the rule does not go back for it, and taking it up again would mask what
 * the rule leaves. Nor may the word at work be taken up again, for its own asterisks.
 */
void WordFilter::addDue(const ChatLine& line, const ChatLine::Window& window, int to, int after,
                        Due& due) const
{
    std::vector<int> ranks;
    int piece = window.begin.piece;
    for (int begin = -window.begin.offset; begin < to; ++piece) {
        const int end = begin + line.pieceSize(piece);
        ranks.clear();
        m_index.find(window.text, begin, qMin(end, to), ranks);
        std::sort(ranks.begin(), ranks.end());
        ranks.erase(std::unique(ranks.begin(), ranks.end()), ranks.end());
        for (auto rank = std::upper_bound(ranks.begin(), ranks.end(), after); rank != ranks.end();
             ++rank) {
            due.push_back({*rank, piece});
            std::push_heap(due.begin(), due.end(), std::greater<>());
        }
        begin = end;
    }
}

/** Takes the word whose turn it is out of the heap, with all pieces that it is due in. */
void WordFilter::takeFirst(Due& due, int& rank, std::vector<int>& pieces)
{
    rank = due.front().rank;
    pieces.clear();
    do {
        const int piece = due.front().piece;
        if (pieces.empty() || pieces.back() != piece)
            pieces.push_back(piece);
        std::pop_heap(due.begin(), due.end(), std::greater<>());
        due.pop_back();
    } while (!due.empty() && due.front().rank == rank);
}

void WordFilter::apply(int rank, const std::vector<int>& pieces, ChatLine& line, Due& due)
{
    const int longest = WordPattern::longestMatch(m_words.at(rank));
    if (longest == 0 || pieces.front() == everywhere) {
        const auto window = line.pieces(0, line.pieceCount() - 1, 0, 0, 0);
        apply(rank, window, window.text.size() + 1, line, due);
        return;
    }
    // A match may begin in a piece before its anchor's, but not where the word has been at work.
    int done = -1;
    for (auto first = pieces.begin(); first != pieces.end();) {
        auto last = first;
        while (last + 1 != pieces.end()
               && *(last + 1) - *last <= longest / ChatLine::pieceLength + 1)
            ++last;
        const auto window = line.pieces(*first, *last, longest, longest, done + 1);
        int to = window.before;
        for (int piece = *first; piece <= *last; ++piece)
            to += line.pieceSize(piece);
        apply(rank, window, to, line, due);
        done = *last;
        first = last + 1;
    }
}

/** Masks the matches that begin in the window, before to. */
void WordFilter::apply(int rank, const ChatLine::Window& window, int to, ChatLine& line, Due& due)
{
    const QString& word = m_words.at(rank);
    const QRegExp* byEngine =
        WordPattern::kindOf(word) == WordPattern::Ordinary ? nullptr : &engine(rank);
    ChatLine::Stretches found;
    for (int from = 0;;) {
        const Stretch match = byEngine != nullptr ? nextByEngine(*byEngine, window.text, from)
                                                  : WordPattern::next(word, window.text, from);
        if (match.start < 0 || match.start >= to)
            break;
        found.append(match);
        from = match.start + qMax(match.length, 1);
    }
    if (found.isEmpty())
        return;
    constexpr int reach = AnchorIndex::maxReach;
    for (const ChatLine::Place& asterisk : line.mask(rank, window, found)) {
        // Characters have come closer only across a new asterisk, which is in no anchor itself.
        const auto across = line.window(asterisk, asterisk, reach - 1, reach, 0);
        addDue(line, across, across.before, rank, due);
    }
}

QRegExp& WordFilter::engine(int rank)
{
    if (!m_engines.contains(rank)) {
        const QString& word = m_words.at(rank);
        m_engines.insert(rank, new QRegExp(WordPattern::of(word)), word.size() + 4);
    }
    return *m_engines.object(rank);
}
