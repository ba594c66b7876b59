#pragma once

#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <QVector>

/**
 * Words and lines of very few different characters, so that matches, overlaps and masks that bring
 * characters together are the rule. A seed gives the same cases everywhere.
 */
class RandomWordLists
{
public:
    explicit RandomWordLists(quint32 seed)
        : m_random(seed)
    {
    }

    /**
     * Up to this many words, short ones rather than long, and lines, all from one alphabet; now and
     * then one more line of some thousand characters.
     */
    void next(int maxWords, int lineCount)
    {
        const QVector<QString> alphabets = characters();
        m_alphabet = alphabets.at(m_random.bounded(alphabets.size()));
        words.clear();
        const int count = m_random.bounded(1, maxWords + 1);
        for (int i = 0; i < count; ++i)
            words.append(
                text(m_random.bounded(40) == 0 ? 0 : m_random.bounded(1, m_random.bounded(2, 9))));
        words.removeDuplicates();
        lines.clear();
        for (int i = 0; i < lineCount; ++i)
            lines.append(text(m_random.bounded(24)));
        if (m_random.bounded(10) == 0)
            lines.append(text(m_random.bounded(3000)));
    }

    QStringList words;
    QStringList lines;

private:
    static QVector<QString> characters()
    {
        return {
            QStringLiteral("ab"),
            QStringLiteral("abc"),
            QStringLiteral("abcde"),
            QStringLiteral("abcdefghij "),
            QStringLiteral("abcdABCD .-*"),
            QStringLiteral("aab.^$("),
            QStringLiteral("aabbc|()."),
            QStringLiteral("aabc-[]^"),
            QStringLiteral("ab\\[.()"),
            QStringLiteral("abcd*+?{}[]()^$.|\\-"),
            QString::fromUtf8("a你好😀😁"),
            QStringLiteral("ab") + QChar(0) + QChar(0xD83D) + QChar(0xDE00) + QChar(0xFFFF),
        };
    }

    QString text(int length)
    {
        QString text;
        for (int i = 0; i < length; ++i)
            text += m_alphabet.at(m_random.bounded(m_alphabet.size()));
        return text;
    }

    QRandomGenerator m_random;
    QString m_alphabet;
};
