#pragma once

#include <QStringList>
#include <QStringView>
#include <QVector>

#include <vector>

/**
 * Finds the words that a text could match by their anchors: a few neighbouring characters of the
 * word, of which a match has each at most three places after the one before it.
 *
 * The walk through a text goes on from a character only while some word's anchor begins with what
 * has been met so far. What is found may turn out not to match; what is not found cannot.
 */
class AnchorIndex
{
public:
    static constexpr int maxLength = 6;
    static constexpr int maxDistance = 3;

    /** How many places an anchor's last character can stand behind its first. */
    static constexpr int maxReach = (maxLength - 1) * maxDistance;

    /** Part of a word, which is given by its place in the list. */
    struct Anchor
    {
        int rank;
        int start;
        int length;
    };

    /** What the index knows of an anchor's characters; the same for a few others, seldom. */
    using Key = quint32;
    static Key keyOf(QStringView characters);

    AnchorIndex() = default;
    AnchorIndex(const QStringList& words, const QVector<Anchor>& anchors);

    /**
     * Appends the ranks of the anchors in text that begin at from or later and before to; a rank
     * comes more than once only where its anchors stand apart.
     */
    void find(QStringView text, int from, int to, std::vector<int>& ranks) const;

private:
    struct Entry
    {
        Key key;
        int rank;
    };

    enum Mark {
        GoesOn = 1, ///< an anchor begins with these characters
        Ends = 2,   ///< an anchor consists of them
    };

    quint32 slot(Key key) const { return key >> m_slotShift; }
    int bucket(Key key) const { return static_cast<int>(slot(key) / 32); }
    int markShift(Key key) const { return static_cast<int>(slot(key) % 32 * 2); }

    void setMark(Key key, Mark mark);
    void findBlock(QStringView text, int from, int to, std::vector<int>& ranks) const;
    void findKey(Key key, std::vector<int>& ranks) const;

    int m_slotShift = 24;
    // Two bits for each of 32 slots to a bucket: nine of ten are empty, and all of them are small
    // enough for the processor's cache.
    QVector<quint64> m_marks;
    QVector<int> m_buckets; // where each bucket's entries begin, and where the last one's end
    QVector<Entry> m_entries;
};

Q_DECLARE_TYPEINFO(AnchorIndex::Anchor, Q_PRIMITIVE_TYPE);
