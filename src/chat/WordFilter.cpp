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
        if (WordPattern::kindOf(word) == WordPattern::Invalid)
            continue;
        if (!addAnchors(word, rank, counts, anchors) && engine(rank).isValid())
            m_unanchored.push_back(rank);
    }
    m_index = AnchorIndex(words, anchors);
}

void WordFilter::mask(ChatLine& line)
{
    Due due = m_unanchored;
    addDue(line.text(), 0, line.text().size(), -1, due);
    int done = -1;
    while (!due.empty()) {
        std::pop_heap(due.begin(), due.end(), std::greater<>());
        const int rank = due.back();
        due.pop_back();
        if (rank == done)
            continue;
        done = rank;
        apply(rank, line, due);
    }
}

void WordFilter::addDue(const QString& text, int from, int to, int after, Due& due) const
{
    auto end = due.size();
    m_index.find(text, from, to, due);
    due.erase(std::remove_if(due.begin() + end, due.end(), [&](int rank) { return rank <= after; }),
              due.end());
    while (end < due.size())
        std::push_heap(due.begin(), due.begin() + ++end, std::greater<>());
}

void WordFilter::apply(int rank, ChatLine& line, Due& due)
{
    const QString& word = m_words.at(rank);
    const QRegExp* byEngine =
        WordPattern::kindOf(word) == WordPattern::Ordinary ? nullptr : &engine(rank);
    ChatLine::Stretches found;
    for (int from = 0;;) {
        const Stretch match = byEngine != nullptr ? nextByEngine(*byEngine, line.text(), from)
                                                  : WordPattern::next(word, line.text(), from);
        if (match.start < 0)
            break;
        found.append(match);
        from = match.start + qMax(match.length, 1);
    }
    if (found.isEmpty())
        return;
    line.mask(rank, found);
    int shift = 0;
    for (const Stretch& match : found) {
        // Characters have come closer only across a new asterisk, which is in no anchor itself.
        const int asterisk = match.start + shift;
        addDue(line.text(), asterisk + 1 - AnchorIndex::maxReach, asterisk, rank, due);
        shift += 1 - match.length;
    }
}

QRegExp& WordFilter::engine(int rank)
{
    auto found = m_engines.find(rank);
    if (found == m_engines.end())
        found = m_engines.insert(rank, QRegExp(WordPattern::of(m_words.at(rank))));
    return *found;
}
