#include "Heap.h"
#include "LiteralWordFilter.h"
#include "Measured.h"

#include "chat/WordFilter.h"
#include "host/ZGlobalConfig.h"

#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QSet>

#include <benchmark/benchmark.h>

#include <cmath>
#include <map>
#include <memory>

// A chat line through the word filter, beside the literal procedure, for lists of several sizes;
// and preparing a list, beside reading its table. The size is that of the list, in words.

namespace {

constexpr int lineLength = 40;
constexpr int lineCount = 500;
constexpr int asTheyCome = -1;

/** What words and lines are made of: neighbouring characters, the first ones the most frequent. */
struct Script
{
    char16_t first;
    int characters;
    int shortestWord;
    int longestWord;
    bool zipf; ///< the n-th character is as frequent as 1 / n, else as 1 / sqrt(n)
};
constexpr Script ideographs {0x4E00, 3000, 2, 6, false};
constexpr Script zipfian {0x4E00, 3000, 2, 6, true};
constexpr Script letters {u'a', 26, 6, 12, false};

/** A list of words and lines to be masked. */
struct Subject
{
    const char* name;
    Script script;
    int onePer; ///< one of so many words has a metacharacter; none for 0
    int masks;  ///< set in every line
    QVector<int> sizes;
    int largestLiteral; ///< up to this size the literal procedure is timed too
};

const Subject subjects[] = {
    {"mask_clean", ideographs, 0, 0, {100, 1000, 10000, 100000}, 100000},
    {"mask_three", ideographs, 0, 3, {100, 1000, 10000, 100000}, 10000},
    {"mask_patterns", ideographs, 100, 0, {10000}, 10000},
    {"mask_letters", letters, 0, 0, {1000, 10000, 100000}, 10000},
    {"mask_zipf", zipfian, 0, asTheyCome, {1000, 10000, 100000}, 1000},
};

class Chat
{
public:
    explicit Chat(const Script& script)
        : m_script(script)
    {
    }

    QString text(int length)
    {
        QString text;
        for (int i = 0; i < length; ++i)
            text += QChar(m_script.first + character());
        return text;
    }

    /** Different words, one of onePer (none for 0) with a metacharacter. */
    QStringList words(int count, int onePer)
    {
        static const QString special = QStringLiteral(".-^$([");
        QSet<QString> words;
        while (words.size() < count) {
            QString word = text(bounded(m_script.shortestWord, m_script.longestWord + 1));
            if (onePer > 0 && bounded(0, onePer) == 0)
                word.insert(bounded(0, word.size() + 1), special.at(bounded(0, special.size())));
            words.insert(word);
        }
        return words.values();
    }

    int bounded(int from, int to) { return m_random.bounded(from, to); }

private:
    int character()
    {
        const double drawn = m_random.generateDouble();
        if (!m_script.zipf)
            return static_cast<int>(m_script.characters * drawn * drawn);
        return static_cast<int>(std::pow(m_script.characters + 1, drawn)) - 1;
    }

    Script m_script;
    QRandomGenerator m_random {20};
};

/** A prepared list; once made it stays, as the runs of several lists take turns. */
class List
{
public:
    List(const Subject& subject, int size)
        : m_chat(subject.script)
        , m_words(m_chat.words(size, subject.onePer))
        , m_filter(m_words)
    {
        while (m_lines.size() < lineCount) {
            const QString line = lineWith(qMax(0, subject.masks));
            if (subject.masks == asTheyCome
                || masked(line).count(QLatin1Char('*')) == subject.masks)
                m_lines.append(line);
        }
        if (size > subject.largestLiteral)
            return;
        for (int i = 0; i < qBound(3, 20000 / size, 100); ++i)
            Measured::same(subject.name, masked(m_lines.at(i)), literally(m_lines.at(i)));
    }

    const QStringList& lines() const { return m_lines; }

    QString masked(const QString& text)
    {
        ChatLine line(text);
        m_filter.mask(line);
        return line.text();
    }

    QString literally(const QString& text) const { return LiteralWordFilter::mask(m_words, text); }

private:
    QString lineWith(int words)
    {
        QString line = m_chat.text(lineLength);
        for (int i = 0; i < words; ++i) {
            const QString& word = m_words.at(m_chat.bounded(0, m_words.size()));
            line.replace(m_chat.bounded(0, lineLength - word.size() + 1), word.size(), word);
        }
        return line;
    }

    Chat m_chat;
    QStringList m_words;
    WordFilter m_filter;
    QStringList m_lines;
};

List& listOf(const Subject& subject, int size)
{
    static std::map<std::pair<const char*, int>, std::unique_ptr<List>> lists;
    auto& list = lists[{subject.name, size}];
    if (!list)
        list = std::make_unique<List>(subject, size);
    return *list;
}

template <class Mask>
void maskLines(benchmark::State& state, const Subject& subject, int size, Mask mask)
{
    List& list = listOf(subject, size);
    int next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize((list.*mask)(list.lines().at(next)));
        next = (next + 1) % lineCount;
    }
    int masks = 0;
    for (const QString& line : list.lines())
        masks += list.masked(line).count(QLatin1Char('*'));
    state.counters["masks_a_line"] = static_cast<double>(masks) / lineCount;
}

/** One long line of letters; the size is the line's, in characters. */
void maskLongLine(benchmark::State& state, int length)
{
    List& list = listOf(subjects[3], 100000);
    const QString line = Chat(letters).text(length);
    for (auto _ : state)
        benchmark::DoNotOptimize(list.masked(line));
}

QByteArray tableOf(int size)
{
    QJsonArray rows;
    for (const QString& word : Chat(ideographs).words(size, 0))
        rows.append(QJsonArray {word});
    const QJsonObject table {
        {QStringLiteral("columns"), QJsonArray {QStringLiteral("key")}},
        {QStringLiteral("rows"), rows},
    };
    return QJsonDocument(table).toJson();
}

QSet<QString> wordsIn(const QByteArray& table)
{
    QHash<QString, int> header;
    QJsonArray rows;
    if (!ZGlobalConfig::readTableFile(table, header, rows))
        qFatal("the list cannot be read");
    QSet<QString> words;
    for (const auto& row : qAsConst(rows))
        words.insert(row.toArray().at(0).toString());
    return words;
}

/** The words lie in memory as a table leaves them: how they lie is most of what it costs. */
void prepare(benchmark::State& state, int size)
{
    const QStringList words = wordsIn(tableOf(size)).values();
    const auto before = heapInUse();
    {
        const WordFilter filter(words);
        if (const auto after = heapInUse())
            state.counters["heap_per_word"] = (*after - *before) / size;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(WordFilter(words));
}

void readTable(benchmark::State& state, int size)
{
    const QByteArray table = tableOf(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(wordsIn(table));
}

template <class Run>
void add(const char* subject, const char* side, int size, Run run)
{
    benchmark::RegisterBenchmark(qPrintable(Measured::name(subject, side, size)), run);
}

void addAll()
{
    using benchmark::State;
    for (const Subject& subject : subjects) {
        for (const int size : subject.sizes) {
            add(subject.name, "ours", size,
                [&subject, size](State& state) { maskLines(state, subject, size, &List::masked); });
            if (size > subject.largestLiteral)
                continue;
            add(subject.name, "literal", size, [&subject, size](State& state) {
                maskLines(state, subject, size, &List::literally);
            });
        }
    }
    for (const int length : {1000, 100000})
        add("mask_long_line", "ours", length, [=](State& state) { maskLongLine(state, length); });
    for (const int size : {10000, 100000}) {
        add("prepare_words", "ours", size, [=](State& state) { prepare(state, size); });
        add("prepare_words", "table", size, [=](State& state) { readTable(state, size); });
    }
}

} // namespace

int main(int argc, char** argv)
{
    return Measured::run(argc, argv, &addAll);
}
