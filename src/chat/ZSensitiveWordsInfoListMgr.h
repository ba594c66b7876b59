#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QObject>
#include <QScopedPointer>
#include <QSharedPointer>
#include <QString>
#include <QVector>

class WordFilter;

/** A forbidden word of the older list, exactly as its cell has it. */
struct ZSensitiveWordsInfo
{
    QString word;
};

/** A forbidden word of the newer list, exactly as its cell has it. */
struct ZNewSensitiveWordsInfo
{
    QString word;
};

/** A mask that sensitiveWordsCheck sets, and the part of the original text that it covers. */
struct stWordMask
{
    enum EList {
        OlderList,
        NewerList,
    };

    QString word;
    EList list = OlderList;
    int start = 0;  ///< in the original text, counted in UTF-16 units
    int length = 0; ///< 0 where a pattern that matches nothing puts an asterisk between characters
};

/**
 * The two lists of words that chat lines may not contain, from tables ChatFilterWordKey (older) and
 * NewChatFilterWordKey (newer), by word, and the masking of a line against both.
 *
 * A cell that is no text is the empty word, which is kept like any other. Loading prepares the
 * words, so a line costs what its length and the few words that could match it cost, however long
 * the lists are; docs/word-filter.md has the rule and how it is kept to.
 *
 * A word with a metacharacter, which is any of ^$.|()[\- here, has at most 64 characters (UTF-16
 * units): a longer one stays in its map but is left out of masking, and loading names it in a
 * warning, by its first 32. Other words may have any length. Patterns are compiled when their words
 * are first due and kept while the words of those kept have up to 4,096 characters together,
 * counting four more for each; the one not used for longest goes. Lines have no bound: each is
 * masked completely, and its time grows in proportion to its length.
 */
class ZGLOBAL_EXPORT ZSensitiveWordsInfoListMgr : public QObject
{
    Q_OBJECT

public:
    ~ZSensitiveWordsInfoListMgr() override;

    static ZSensitiveWordsInfoListMgr* getInstance();
    static const TableDeclaration& declaration();    ///< the older list
    static const TableDeclaration& newDeclaration(); ///< the newer list

    /** The older list. */
    bool loadSensitiveWordsInfoListTable(const QString& path);
    /** The newer list. */
    bool loadNewSensitiveWordsInfoListTable(const QString& path);

    /** Empties the older list only; the newer one goes when its own loader replaces it. */
    void clear();

    /** The order of iteration is the order in which masking applies the words. */
    const QHash<QString, ZSensitiveWordsInfo>& getSensitiveWordsMap();
    const QHash<QString, ZNewSensitiveWordsInfo>& getNewSensitiveWordsMap();

    /**
     * The text with every match of every word replaced by one asterisk, whatever its length.
     *
     * Between two characters of a word up to two others may stand that are not of the word: "abc"
     * masks "a..b c" and leaves "abbc". Letter case counts. A word is a pattern fragment, not
     * escaped: "a.c" masks "axc", and what makes no valid pattern masks nothing. The words apply
     * one after the other, the older list first, each to what the ones before it left.
     */
    QString sensitiveWordsCheck(QString text);

    /**
     * The masks that sensitiveWordsCheck(text) sets, in the order of setting them. A mask that
     * swallows earlier asterisks covers what they cover too.
     */
    QVector<stWordMask> explainSensitiveWords(const QString& text);

protected:
    explicit ZSensitiveWordsInfoListMgr(QObject* parent);

    static QSharedPointer<ZSensitiveWordsInfoListMgr> m_instance;

private:
    void prepare();

    QHash<QString, ZSensitiveWordsInfo> m_words;
    QHash<QString, ZNewSensitiveWordsInfo> m_newWords;
    QScopedPointer<WordFilter> m_filter; // both lists, the older one first
};
