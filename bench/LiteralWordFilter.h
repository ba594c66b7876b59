#pragma once

#include <QRegExp>
#include <QString>
#include <QStringList>

/**
 * The filter's rule taken literally, a pattern compiled and run for every word: what the prepared
 * form has to agree with, and what its speed is measured against.
 */
namespace LiteralWordFilter {

inline QString pattern(const QString& w)
{
    QString pattern;
    for (int i = 0; i < w.length() - 1; ++i)
        pattern = pattern + w[i] + QStringLiteral("[^") + w + QStringLiteral("]{0,2}");
    if (!w.isEmpty())
        pattern += w[w.length() - 1];
    return pattern;
}

/** The text after one word; each word is given what the one before it left. */
inline QString mask(const QString& word, QString text)
{
    const QRegExp engine(pattern(word), Qt::CaseSensitive, QRegExp::RegExp);
#if QT_VERSION_MAJOR < 6
    return text.replace(engine, QStringLiteral("*"));
#else
    return engine.replaceIn(text, QStringLiteral("*"));
#endif
}

/** The text after all the words, in the order of the list. */
inline QString mask(const QStringList& words, QString text)
{
    for (const QString& word : words)
        text = mask(word, text);
    return text;
}

} // namespace LiteralWordFilter
