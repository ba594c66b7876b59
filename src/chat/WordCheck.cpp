#include "chat/WordCheck.h"

#include "chat/WordFilter.h"
#include "chat/WordPattern.h"

WordCheck::WordCheck(const QStringList& words)
    : m_filter(new WordFilter(words))
{
}

WordCheck::~WordCheck() = default;

QVector<int> WordCheck::masking(const QString& line)
{
    ChatLine traced(line, true);
    m_filter->mask(traced);
    QVector<int> words;
    for (const ChatLine::Mask& mask : traced.masks()) {
        if (!words.contains(mask.rank))
            words.append(mask.rank);
    }
    return words;
}

WordCheck::Kind WordCheck::kindOf(const QString& word)
{
    switch (WordPattern::kindOf(word)) {
    case WordPattern::Ordinary:
        return Plain;
    case WordPattern::Invalid:
        return Refused;
    case WordPattern::TooLong:
        return TooLong;
    case WordPattern::Special:
        break;
    }
    return QRegExp(WordPattern::of(word)).isValid() ? Pattern : Refused;
}

bool WordCheck::isTriedOnEveryLine(const QString& word)
{
    return WordFilter({word}).triesEveryLine();
}
