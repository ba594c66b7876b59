#pragma once

#include "ZGlobalExport.h"

#include <QScopedPointer>
#include <QString>
#include <QStringList>
#include <QVector>

class WordFilter;

/**
 * Forbidden words as masking takes them, for those who look a list over before it is published. It
 * masks as ZSensitiveWordsInfoListMgr does and touches nothing of what that one holds. Not for two
 * threads at once; the static operations are for any.
 */
class ZGLOBAL_EXPORT WordCheck
{
public:
    enum Kind {
        Plain,   ///< every character stands for itself
        Pattern, ///< some mean something else
        Refused, ///< makes no valid pattern, so it masks nothing
        TooLong, ///< has metacharacters and is longer than such a word may be; masks nothing either
    };

    explicit WordCheck(const QStringList& words);
    ~WordCheck();
    Q_DISABLE_COPY(WordCheck)

    /** The words that mask something in the line, by their places in the list, each once. */
    QVector<int> masking(const QString& line);

    static Kind kindOf(const QString& word);

    /** Whether the word has nothing to be found by, and so is tried on every line. */
    static bool isTriedOnEveryLine(const QString& word);

private:
    QScopedPointer<WordFilter> m_filter;
};
