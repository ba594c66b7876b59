#include "diff/TextChange.h"

#include <QStringList>

#include <algorithm>

namespace {

/** Beyond this many pairs of words two texts are taken as different from end to end. */
constexpr qint64 mostPairs = 4'000'000;
/** What both have between two differences is read more easily as a part of them. */
constexpr int shortestCommon = 2;

bool isOfWord(QChar character)
{
    const auto script = character.script();
    return character.isLetterOrNumber() && script != QChar::Script_Han
        && script != QChar::Script_Hiragana && script != QChar::Script_Katakana
        && script != QChar::Script_Thai;
}

/** Whether a reader sees one thing that goes on here. */
bool goesOn(QChar before, QChar character)
{
    return (isOfWord(before) && isOfWord(character)) || character.isLowSurrogate()
        || character.isMark() || character == QChar(0x200D) || before == QChar(0x200D);
}

QStringList wordsOf(const QString& text)
{
    QStringList words;
    for (int i = 0; i < text.size(); ++i) {
        if (i > 0 && goesOn(text.at(i - 1), text.at(i)))
            words.last() += text.at(i);
        else
            words.append(text.at(i));
    }
    return words;
}

void append(QVector<Stretch>& stretches, Change kind, const QString& text)
{
    if (text.isEmpty())
        return;
    if (!stretches.isEmpty() && stretches.constLast().kind == kind)
        stretches.last().text += text;
    else
        stretches.append({kind, text});
}

/** For each pair of places how many words both have from there on. */
class Common
{
public:
    Common(const QStringList& before, const QStringList& after)
        : m_width(after.size() + 1)
        , m_counts((before.size() + 1) * m_width)
    {
        for (int i = static_cast<int>(before.size()) - 1; i >= 0; --i) {
            for (int j = static_cast<int>(after.size()) - 1; j >= 0; --j)
                m_counts[i * m_width + j] = before.at(i) == after.at(j)
                    ? at(i + 1, j + 1) + 1
                    : std::max(at(i + 1, j), at(i, j + 1));
        }
    }
    int at(int i, int j) const { return m_counts.at(i * m_width + j); }

private:
    int m_width;
    QVector<int> m_counts;
};

void appendMiddle(QVector<Stretch>& stretches, const QStringList& before, const QStringList& after)
{
    int i = 0;
    int j = 0;
    if (static_cast<qint64>(before.size()) * after.size() <= mostPairs) {
        const Common common(before, after);
        while (i < before.size() && j < after.size()) {
            if (before.at(i) == after.at(j)) {
                append(stretches, Change::None, before.at(i++));
                ++j;
            } else if (common.at(i + 1, j) >= common.at(i, j + 1)) {
                append(stretches, Change::Removed, before.at(i++));
            } else {
                append(stretches, Change::Added, after.at(j++));
            }
        }
    }
    append(stretches, Change::Removed, QStringList(before.mid(i)).join(QString()));
    append(stretches, Change::Added, QStringList(after.mid(j)).join(QString()));
}

/** Each run of differences as one removed and one added text. */
QVector<Stretch> readable(const QVector<Stretch>& stretches)
{
    QVector<Stretch> result;
    QString removed;
    QString added;
    for (int i = 0; i < stretches.size(); ++i) {
        const Stretch& stretch = stretches.at(i);
        const bool isBetween = i > 0 && i + 1 < stretches.size();
        if (stretch.kind == Change::None && isBetween && stretch.text.size() < shortestCommon) {
            removed += stretch.text;
            added += stretch.text;
        } else if (stretch.kind == Change::None) {
            append(result, Change::Removed, removed);
            append(result, Change::Added, added);
            removed.clear();
            added.clear();
            append(result, Change::None, stretch.text);
        } else {
            (stretch.kind == Change::Removed ? removed : added) += stretch.text;
        }
    }
    append(result, Change::Removed, removed);
    append(result, Change::Added, added);
    return result;
}

} // namespace

QVector<Stretch> TextChange::between(const QString& before, const QString& after)
{
    QStringList old = wordsOf(before);
    QStringList now = wordsOf(after);
    QString end;
    QVector<Stretch> stretches;
    while (!old.isEmpty() && !now.isEmpty() && old.constLast() == now.constLast()) {
        end.prepend(old.takeLast());
        now.removeLast();
    }
    int same = 0;
    while (same < old.size() && same < now.size() && old.at(same) == now.at(same))
        append(stretches, Change::None, old.at(same++));
    appendMiddle(stretches, old.mid(same), now.mid(same));
    append(stretches, Change::None, end);
    return readable(stretches);
}

QVector<Stretch> TextChange::shortened(QVector<Stretch> stretches, int context)
{
    const QChar ellipsis(0x2026);
    for (int i = 0; i < stretches.size(); ++i) {
        QString& text = stretches[i].text;
        const bool isFirst = i == 0;
        const bool isLast = i + 1 == stretches.size();
        const int kept = context * (isFirst || isLast ? 1 : 2);
        if (stretches.at(i).kind != Change::None || text.size() <= kept + 1)
            continue;
        // One less, where half a character would be left.
        int first = isFirst ? 0 : context;
        int last = isLast ? 0 : context;
        first -= first > 0 && text.at(first - 1).isHighSurrogate() ? 1 : 0;
        last -= last > 0 && text.at(text.size() - last).isLowSurrogate() ? 1 : 0;
        text = text.left(first) + ellipsis + text.right(last);
    }
    return stretches;
}
