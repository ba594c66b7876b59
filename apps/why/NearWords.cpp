#include "why/NearWords.h"

#include "chat/WordCheck.h"

#include <algorithm>

namespace {

constexpr int mostTold = 5;
constexpr int widestGap = 2; // of what masks
constexpr int nearGap = 8;

QString quoted(const QString& text)
{
    return QStringLiteral("“%1”").arg(text);
}

/** What is wrong with the gap behind one of the word's characters. */
QString gapFault(const QString& word, int behind, const QString& gap)
{
    const auto ofWord = std::find_if(gap.begin(), gap.end(),
                                     [&word](QChar character) { return word.contains(character); });
    const QString place = QStringLiteral("between %1 and %2")
                              .arg(quoted(word.at(behind)), quoted(word.at(behind + 1)));
    if (ofWord != gap.end())
        return QStringLiteral("%1 stands %2, which is of the word itself")
            .arg(quoted(*ofWord), place);
    if (gap.size() > widestGap)
        return QStringLiteral("%1 characters stand %2, where %3 may")
            .arg(QString::number(gap.size()), place, QString::number(widestGap));
    return {};
}

/** The first fault where the word's characters follow one another from a place on; an empty text
 *  where they do not. */
QString faultFrom(const QString& word, const QString& text, int start)
{
    QString fault;
    int position = start;
    for (int i = 0; i + 1 < word.size(); ++i) {
        const int next = static_cast<int>(text.indexOf(word.at(i + 1), position + 1));
        if (next < 0 || next - position - 1 > nearGap)
            return {};
        if (fault.isEmpty())
            fault = gapFault(word, i, text.mid(position + 1, next - position - 1));
        position = next;
    }
    return fault;
}

QString faultOf(const QString& word, const QString& text)
{
    switch (WordCheck::kindOf(word)) {
    case WordCheck::Refused:
        return text.contains(word) ? QStringLiteral("it makes no valid pattern") : QString();
    case WordCheck::TooLong:
        return text.contains(word) ? QStringLiteral("it has metacharacters and is too long")
                                   : QString();
    case WordCheck::Pattern:
        return text.contains(word) ? QStringLiteral("its metacharacters mean something else")
                                   : QString();
    case WordCheck::Plain:
        break;
    }
    QString fault;
    for (int start = -1; fault.isEmpty();) {
        start = static_cast<int>(text.indexOf(word.at(0), start + 1));
        if (start < 0)
            break;
        fault = faultFrom(word, text, start);
    }
    if (fault.isEmpty() && text.contains(word, Qt::CaseInsensitive))
        fault = QStringLiteral("in another letter case");
    return fault;
}

} // namespace

QStringList NearWords::in(const QString& text, const QStringList& words)
{
    QStringList told;
    for (const QString& word : words) {
        const QString fault = word.isEmpty() ? QString() : faultOf(word, text);
        if (!fault.isEmpty() && told.size() < mostTold)
            told.append(QStringLiteral("%1 does not mask: %2").arg(quoted(word), fault));
    }
    told.removeDuplicates();
    return told;
}
