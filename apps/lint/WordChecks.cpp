#include "chat/WordCheck.h"
#include "content/Table.h"
#include "lint/ContentChecks.h"
#include "lint/Findings.h"
#include "lint/Wording.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <array>

namespace {

struct Meaning
{
    char16_t character;
    const char* words;
};

constexpr std::array<Meaning, 9> meanings {{{u'^', "stands for the beginning of the line"},
                                            {u'$', "stands for the end of the line"},
                                            {u'.', "stands for any character"},
                                            {u'|', "stands between alternatives"},
                                            {u'(', "begins a group"},
                                            {u')', "ends a group"},
                                            {u'[', "begins a choice of characters"},
                                            {u'\\', "changes what the next character means"},
                                            {u'-', "makes a range of its neighbours in the gaps"}}};

QString meaningIn(const QString& word)
{
    for (const Meaning& meaning : meanings) {
        if (word.contains(QChar(meaning.character)))
            return QStringLiteral("\"%1\" %2")
                .arg(QChar(meaning.character))
                .arg(QLatin1String(meaning.words));
    }
    return {};
}

/** A word of one of the lists, by the first row that has it. */
struct Word
{
    QString text;
    Place place;
};

/** The words that are ones; tells of the others. */
QVector<Word> wordsIn(const QVector<Table>& tables, Findings& findings)
{
    QVector<Word> words;
    QSet<QString> seen;
    for (const Table& table : tables) {
        if (!table.name().endsWith(QLatin1String("ChatFilterWordKey")) || table.isRefused())
            continue;
        const QString column = table.schema().key;
        for (const Row& row : table.rows()) {
            const QString word = table.text(row, column);
            const Place place {table.name(), row.number, column};
            if (word.isEmpty())
                findings.add(Rule::EmptyWord, place,
                             QStringLiteral("the word is empty; a client puts a star between all "
                                            "characters of every line"));
            else if (!seen.contains(word))
                words.append({word, place});
            seen.insert(word);
        }
    }
    return words;
}

void checkPattern(const Word& word, Findings& findings)
{
    switch (WordCheck::kindOf(word.text)) {
    case WordCheck::Plain:
        return;
    case WordCheck::Refused:
        findings.add(Rule::WordWithoutEffect, word.place,
                     QStringLiteral("%1 makes no valid pattern; a client masks nothing for it")
                         .arg(Wording::shown(word.text)));
        return;
    case WordCheck::TooLong:
        findings.add(Rule::WordWithoutEffect, word.place,
                     QStringLiteral("%1 has metacharacters and is too long for such a word; a "
                                    "client masks nothing for it")
                         .arg(Wording::shown(word.text)));
        return;
    case WordCheck::Pattern:
        break;
    }
    if (WordCheck::isTriedOnEveryLine(word.text))
        findings.add(Rule::SlowWord, word.place,
                     QStringLiteral("%1 has no character of its own to be found by; a client tries "
                                    "it on every line")
                         .arg(Wording::shown(word.text)));
    else
        findings.add(Rule::Metacharacter, word.place,
                     QStringLiteral("in %1 %2; a client masks more or other than the word")
                         .arg(Wording::shown(word.text), meaningIn(word.text)));
}

/** The longest part of a word that is a word too; empty when none is. */
QString wordIn(const QString& word, const QHash<QString, int>& all)
{
    for (int length = word.size() - 1; length > 0; --length) {
        for (int start = 0; start + length <= word.size(); ++start) {
            if (all.contains(word.mid(start, length)))
                return word.mid(start, length);
        }
    }
    return {};
}

void checkContained(const QVector<Word>& words, Findings& findings)
{
    constexpr int longest = 100; // the parts of a word grow with the square of its length
    QHash<QString, int> plain;
    for (int i = 0; i < words.size(); ++i) {
        if (WordCheck::kindOf(words.at(i).text) == WordCheck::Plain)
            plain.insert(words.at(i).text, i);
    }
    for (auto word = plain.begin(); word != plain.end(); ++word) {
        const QString other = word.key().size() > longest ? QString() : wordIn(word.key(), plain);
        if (!other.isEmpty())
            findings.add(Rule::ContainedWord, words.at(*word).place,
                         QStringLiteral("%1 holds %2, which masks a part of whatever it would mask")
                             .arg(Wording::shown(word.key()), Wording::shown(other)));
    }
}

void checkPhrases(const QVector<Word>& words, const QStringList& phrases, Findings& findings)
{
    QStringList texts;
    for (const Word& word : words)
        texts.append(word.text);
    WordCheck check(texts);
    QMap<int, QStringList> masked; // phrases by the words' places in the list
    for (const QString& phrase : phrases) {
        for (const int place : check.masking(phrase))
            masked[place].append(phrase);
    }
    for (auto word = masked.begin(); word != masked.end(); ++word) {
        const QString more = word->size() == 1
            ? QString()
            : QStringLiteral(" and in %1 more of such phrases").arg(word->size() - 1);
        findings.add(Rule::EverydayWord, words.at(word.key()).place,
                     QStringLiteral("a client masks %1 in %2%3")
                         .arg(Wording::shown(texts.at(word.key())),
                              Wording::shown(word->constFirst()), more));
    }
}

} // namespace

void ContentChecks::checkWords(const QVector<Table>& tables, const QStringList& phrases,
                               Findings& findings)
{
    const QVector<Word> words = wordsIn(tables, findings);
    for (const Word& word : words)
        checkPattern(word, findings);
    checkContained(words, findings);
    checkPhrases(words, phrases, findings);
}
