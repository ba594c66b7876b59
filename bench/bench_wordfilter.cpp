// The word filter beside the literal procedure: figures for lines and lists of several sizes, or,
// with --compare, a long random run that holds the one to the other.

#include "LiteralWordFilter.h"
#include "RandomWordLists.h"

#include "chat/WordFilter.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "host/ZGlobalConfig.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#ifdef __linux__
#include <malloc.h>
#endif

namespace {

constexpr int lineLength = 40;
constexpr int lineCount = 2000;
constexpr int runs = 7;

void print(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

[[noreturn]] void fail(const QString& why)
{
    print(why + QLatin1Char('\n'));
    std::exit(1);
}

QString fixed(double number, int decimals)
{
    return QString::number(number, 'f', decimals);
}

/** 12,345 */
QString grouped(int number)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(number);
}

/** The median of several runs' processor times, in microseconds. */
template <class Run>
double microseconds(Run&& run, int times = runs)
{
    QVector<double> taken;
    for (int i = 0; i < times; ++i) {
        const std::clock_t begin = std::clock();
        run();
        taken.append(static_cast<double>(std::clock() - begin) * 1e6 / CLOCKS_PER_SEC);
    }
    std::sort(taken.begin(), taken.end());
    return taken.at(times / 2);
}

/** What the process holds on the heap; 0 where the system does not tell. */
qint64 heapBytes()
{
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 33)
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
#else
    return 0;
#endif
}

/** What words and lines are made of: neighbouring characters, the first ones the most frequent. */
struct Script
{
    char16_t first;
    int characters;
    int shortestWord;
    int longestWord;
};
constexpr Script ideographs {0x4E00, 3000, 2, 6};
constexpr Script letters {u'a', 26, 6, 12};

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
        for (int i = 0; i < length; ++i) {
            const double drawn = m_random.generateDouble();
            text += QChar(m_script.first + static_cast<int>(m_script.characters * drawn * drawn));
        }
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
    Script m_script;
    QRandomGenerator m_random {20};
};

QString writeTable(const QTemporaryDir& folder, const QStringList& words)
{
    QJsonArray rows;
    for (const QString& word : words)
        rows.append(QJsonArray {word});
    const QJsonObject table {
        {QStringLiteral("columns"), QJsonArray {QStringLiteral("key")}},
        {QStringLiteral("rows"), rows},
    };
    QFile file(folder.filePath(QStringLiteral("words")));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(table).toJson()) < 0)
        fail(QStringLiteral("cannot write ") + file.fileName());
    return file.fileName();
}

/** The words into the manager, half of them into each list. */
void load(const QStringList& words)
{
    QTemporaryDir folder;
    auto* manager = ZSensitiveWordsInfoListMgr::getInstance();
    const int half = words.size() / 2;
    if (!manager->loadSensitiveWordsInfoListTable(writeTable(folder, words.mid(0, half)))
        || !manager->loadNewSensitiveWordsInfoListTable(writeTable(folder, words.mid(half))))
        fail(QStringLiteral("the lists do not load"));
}

QString literally(QString line)
{
    auto* manager = ZSensitiveWordsInfoListMgr::getInstance();
    for (const ZSensitiveWordsInfo& info : manager->getSensitiveWordsMap())
        line = LiteralWordFilter::mask(info.word, line);
    for (const ZNewSensitiveWordsInfo& info : manager->getNewSensitiveWordsMap())
        line = LiteralWordFilter::mask(info.word, line);
    return line;
}

QString prepared(const QString& line)
{
    return ZSensitiveWordsInfoListMgr::getInstance()->sensitiveWordsCheck(line);
}

/** Lines in which exactly so many masks are set. */
QStringList linesWith(int masks, const QStringList& words, Chat& chat)
{
    QStringList lines;
    while (lines.size() < lineCount) {
        QString line = chat.text(lineLength);
        for (int i = 0; i < masks; ++i) {
            const QString& word = words.at(chat.bounded(0, words.size()));
            line.replace(chat.bounded(0, lineLength - word.size() + 1), word.size(), word);
        }
        if (prepared(line).count(QLatin1Char('*')) == masks)
            lines.append(line);
    }
    return lines;
}

void printLines(const QString& what, const QStringList& words, int masks, Chat& chat)
{
    const QStringList lines = linesWith(masks, words, chat);
    const int literalLines = qBound(3, 20000 / words.size(), 200);
    const double literal = microseconds(
                               [&] {
                                   for (int i = 0; i < literalLines; ++i) {
                                       if (literally(lines.at(i)) != prepared(lines.at(i)))
                                           fail(QStringLiteral("differs on: ") + lines.at(i));
                                   }
                               },
                               3)
        / literalLines;
    const double ours = microseconds([&] {
                            for (const QString& line : lines)
                                prepared(line);
                        })
        / lineCount;
    print(QStringLiteral("| %1 | %2 | %3 ms | %4 µs | %5 |\n")
              .arg(what, masks == 0 ? QStringLiteral("clean") : QStringLiteral("three masks"),
                   fixed(literal / 1000, 2), fixed(ours, 2), grouped(qRound(literal / ours))));
}

/** What a character costs in a line of so many, of what everybody types and of words in a row. */
void printLongLine(int length, const QStringList& words, Chat& chat)
{
    QString ofWords;
    while (ofWords.size() < length)
        ofWords += words.at(chat.bounded(0, words.size())) + QLatin1Char(' ');
    const auto perCharacter = [length](const QString& line) {
        return fixed(microseconds([&] { prepared(line); }, 3) / length, 2);
    };
    const QString typed = perCharacter(chat.text(length));
    print(QStringLiteral("| %1 | %2 µs | %3 µs |\n")
              .arg(grouped(length), typed, perCharacter(ofWords.left(length))));
}

void printPreparation(int count, Chat& chat)
{
    QTemporaryDir folder;
    const QString path = writeTable(folder, chat.words(count, 0));
    QHash<QString, ZSensitiveWordsInfo> map;
    const double reading = microseconds([&] {
        QHash<QString, int> header;
        QJsonArray rows;
        if (!ZGlobalConfig::readTableFile(path, header, rows))
            fail(QStringLiteral("the list cannot be read"));
        map.clear();
        for (const QJsonValue& row : rows) {
            const QString word = row.toArray().at(0).toString();
            map.insert(word, {word});
        }
    });
    const double preparing = microseconds([&] { WordFilter(map.keys()); });
    const qint64 before = heapBytes();
    const WordFilter filter(map.keys());
    const double bytes = static_cast<double>(heapBytes() - before) / map.size();
    print(QStringLiteral("| %1 | %2 ms | %3 ms | %4 | %5 |\n")
              .arg(grouped(count), fixed(reading / 1000, 1), fixed(preparing / 1000, 1),
                   fixed(preparing / reading, 2),
                   bytes > 0 ? fixed(bytes, 0) : QStringLiteral("unknown")));
}

void printFigures()
{
    Chat chat(ideographs);
    print(QStringLiteral("| Words | Line of 40 | Literal procedure | Prepared | Times faster |\n"
                         "|---:|---|---:|---:|---:|\n"));
    for (const int count : {100, 1000, 10000, 100000}) {
        const QStringList words = chat.words(count, 0);
        load(words);
        for (const int masks : {0, 3})
            printLines(grouped(count), words, masks, chat);
    }
    const QStringList words = chat.words(10000, 100);
    load(words);
    printLines(QStringLiteral("10,000, 1 % with metacharacters"), words, 0, chat);
    Chat latin(letters);
    QStringList latinWords;
    for (const int count : {1000, 10000, 100000}) {
        latinWords = latin.words(count, 0);
        load(latinWords);
        printLines(grouped(count) + QStringLiteral(" of Latin letters"), latinWords, 0, latin);
    }

    print(QStringLiteral(
        "\n| Length of the line, 100,000 words of Latin letters | Letters | Words in a row |\n"
        "|---:|---:|---:|\n"));
    for (const int length : {1000, 10000, 100000, 1000000})
        printLongLine(length, latinWords, latin);

    print(QStringLiteral(
        "\n| Words | Reading the table | Preparing | Preparing / reading | Bytes a word |\n"
        "|---:|---:|---:|---:|---:|\n"));
    for (const int count : {1000, 10000, 50000, 100000})
        printPreparation(count, chat);
}

/** Random cases for so many seconds; the first that differs is printed and ends the program. */
void compare(int seconds, quint32 seed)
{
    RandomWordLists random(seed);
    qint64 cases = 0;
    qint64 masked = 0;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < seconds * 1000LL) {
        random.next(12, 12);
        WordFilter filter(random.words);
        for (const QString& text : qAsConst(random.lines)) {
            ChatLine line(text);
            filter.mask(line);
            const QString wanted = LiteralWordFilter::mask(random.words, text);
            if (line.text() != wanted) {
                qDebug() << "seed" << seed << "case" << cases << random.words << text << "gives"
                         << line.text() << "instead of" << wanted;
                std::exit(1);
            }
            ++cases;
            masked += wanted != text ? 1 : 0;
        }
    }
    print(QStringLiteral("seed %1: %2 cases compared, %3 of them masked, none differs\n")
              .arg(seed)
              .arg(cases)
              .arg(masked));
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption forSeconds(QStringLiteral("compare"),
                                        QStringLiteral("Compare random cases instead."),
                                        QStringLiteral("seconds"));
    const QCommandLineOption withSeed(QStringLiteral("seed"),
                                      QStringLiteral("The seed of the random cases."),
                                      QStringLiteral("number"), QStringLiteral("1"));
    parser.addOptions({forSeconds, withSeed});
    parser.process(application);
    if (parser.isSet(forSeconds))
        compare(parser.value(forSeconds).toInt(), parser.value(withSeed).toUInt());
    else
        printFigures();
    return 0;
}
