#include "chat/AnchorIndex.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int blockSize = 16;

/** A place in the text to go on from, and the key of the characters met before it. */
struct Step
{
    AnchorIndex::Key key;
    int position;
};

AnchorIndex::Key extended(AnchorIndex::Key key, QChar character)
{
    return (key ^ character.unicode()) * 0x9E3779B1U;
}

/** The most steps that come of a block, and room for those that are written but not kept. */
constexpr int maxSteps()
{
    int steps = blockSize;
    for (int length = 1; length < AnchorIndex::maxLength; ++length)
        steps *= AnchorIndex::maxDistance;
    return steps + AnchorIndex::maxDistance;
}

} // namespace

AnchorIndex::Key AnchorIndex::keyOf(QStringView characters)
{
    Key key = 0;
    for (const QChar character : characters)
        key = extended(key, character);
    return key;
}

AnchorIndex::AnchorIndex(const QStringList& words, const QVector<Anchor>& anchors)
{
    int buckets = 8;
    for (; buckets < anchors.size(); buckets *= 2)
        --m_slotShift;
    // Sized at once: growing would round up to twice the memory.
    m_marks = QVector<quint64>(buckets);
    m_buckets = QVector<int>(buckets + 1);
    m_entries = QVector<Entry>(anchors.size());

    QVector<Entry> unsorted;
    unsorted.reserve(anchors.size());
    for (const Anchor& anchor : anchors) {
        Key key = 0;
        for (int i = 0; i < anchor.length; ++i) {
            if (i > 0)
                setMark(key, GoesOn);
            key = extended(key, words.at(anchor.rank).at(anchor.start + i));
        }
        setMark(key, Ends);
        ++m_buckets[bucket(key)];
        unsorted.append({key, anchor.rank});
    }
    int end = 0;
    for (int& count : m_buckets)
        count = end += count;
    // Each bucket is filled from its end, which leaves its number at its beginning.
    for (const Entry& entry : qAsConst(unsorted))
        m_entries[--m_buckets[bucket(entry.key)]] = entry;
}

void AnchorIndex::find(QStringView text, int from, int to, std::vector<int>& ranks) const
{
    if (m_entries.isEmpty())
        return;
    for (int first = qMax(from, 0); first < to; first += blockSize) {
        const auto known = ranks.size();
        findBlock(text, first, qMin(first + blockSize, to), ranks);
        // One letter over and over is the same anchor in hundreds of ways.
        std::sort(ranks.begin() + known, ranks.end());
        ranks.erase(std::unique(ranks.begin() + known, ranks.end()), ranks.end());
    }
}

void AnchorIndex::setMark(Key key, Mark mark)
{
    m_marks[bucket(key)] |= static_cast<quint64>(mark) << markShift(key);
}

// Whether characters lead on is a toss-up that the processor cannot foresee, so the steps of a
// block are taken together, and kept or overwritten without a branch.
void AnchorIndex::findBlock(QStringView text, int from, int to, std::vector<int>& ranks) const
{
    const QChar* characters = text.data();
    const int size = static_cast<int>(text.size());
    const quint64* marks = m_marks.constData();
    Step buffers[2][maxSteps()];
    Step* steps = buffers[0];
    Step* longer = buffers[1];
    int count = 0;
    for (; from < to; ++from)
        steps[count++] = {0, from};
    for (int length = 1; length <= maxLength; ++length) {
        const quint64 goesOn = length < maxLength ? GoesOn : 0;
        int kept = 0;
        for (int i = 0; i < count; ++i) {
            const int position = steps[i].position;
            const Key key = extended(steps[i].key, characters[position]);
            const quint64 mark = marks[bucket(key)] >> markShift(key);
            if ((mark & Ends) != 0)
                findKey(key, ranks);
            for (int distance = 1; distance <= maxDistance; ++distance)
                longer[kept + distance - 1] = {key, position + distance};
            kept += static_cast<int>(mark & goesOn) * qMin(maxDistance, size - 1 - position);
        }
        count = kept;
        std::swap(steps, longer);
    }
}

void AnchorIndex::findKey(Key key, std::vector<int>& ranks) const
{
    for (int i = m_buckets.at(bucket(key)); i < m_buckets.at(bucket(key) + 1); ++i) {
        const Entry& entry = m_entries.at(i);
        if (entry.key == key && (ranks.empty() || ranks.back() != entry.rank))
            ranks.push_back(entry.rank);
    }
}
