#include "chat/WordFilter.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "support/Cases.h"
#include "support/LogLines.h"
#include "support/Tables.h"

#include "../bench/LiteralWordFilter.h"
#include "../bench/RandomWordLists.h"

#include <QtTest>

#include <ctime>

namespace {

QString masked(const QStringList& words, const QString& text)
{
    WordFilter filter(words);
    ChatLine line(text);
    filter.mask(line);
    return line.text();
}

/** The line as the masks that were noted tell it; a later one swallows those in its stretch. */
QString retold(const QString& text, const ChatLine& line)
{
    QVector<int> maskOf(text.size(), -1);
    for (int i = 0; i < line.masks().size(); ++i) {
        const Stretch covered = line.masks().at(i).covered;
        if (covered.length == 0)
            return line.text(); // stands between two characters, which are no place to note it
        std::fill_n(maskOf.begin() + covered.start, covered.length, i);
    }
    QString told;
    for (int i = 0; i < text.size(); ++i) {
        if (maskOf.at(i) < 0)
            told += text.at(i);
        else if (line.masks().at(maskOf.at(i)).covered.start == i)
            told += u'*';
    }
    return told;
}

/** Empty when the lines read the same after the words' filter and after the literal procedure. */
QString difference(const QStringList& words, const QStringList& lines)
{
    WordFilter filter(words); // one for all lines, as what it keeps between them must not matter
    for (const QString& text : lines) {
        ChatLine line(text, true);
        filter.mask(line);
        const QString wanted = LiteralWordFilter::mask(words, text);
        if (line.text() != wanted || retold(text, line) != wanted) {
            QString report;
            QDebug(&report) << words << text << "gives" << line.text() << "not" << wanted;
            return report;
        }
    }
    return {};
}

/** All texts of these characters up to the length, the empty one first. */
QStringList allTexts(const QString& characters, int length)
{
    QStringList texts {QString()};
    for (int i = 0; i < texts.size() && texts.at(i).size() < length; ++i) {
        for (const QChar character : characters)
            texts.append(texts.at(i) + character);
    }
    return texts;
}

/** The processor time of masking so many words in one line, each once, in seconds. */
double secondsOf(int count)
{
    QStringList words;
    for (int i = 0; i < count; ++i)
        words += QString(QChar(0x4E00 + i % 0x5000)) + QChar(0x3041 + i / 0x5000);
    WordFilter filter(words);
    const QString text = words.join(u"---"_s);
    const std::clock_t begin = std::clock();
    ChatLine line(text);
    filter.mask(line);
    const std::clock_t end = std::clock();
    return line.text().count(u'*') == count ? double(end - begin) / CLOCKS_PER_SEC : qInf();
}

} // namespace

class tst_wordfilter : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZSensitiveWordsInfoListMgr* m_manager = ZSensitiveWordsInfoListMgr::getInstance();

    static QString table(const QStringList& words)
    {
        QJsonArray rows {QJsonValue()};
        for (const QString& word : words)
            rows.append(QJsonArray {word});
        return tableOf(u"key"_s, rows);
    }

private Q_SLOTS:
    void rule_data() { Cases::rows("wordfilter"); }

    void rule()
    {
        QFETCH(QJsonValue, words);
        QFETCH(QString, text);
        const QStringList list = words.toVariant().toStringList();
        QTEST(masked(list, text), "expected");
        QCOMPARE(difference(list, {text}), QString());
    }

    void matchesOverPieces()
    {
        const QString before(ChatLine::pieceLength - 3, u'-');
        const QString piece(ChatLine::pieceLength, u'x');
        const auto check = [](const QStringList& words, const QString& text,
                              const QString& expected) {
            QCOMPARE(masked(words, text), expected);
            QCOMPARE(difference(words, {text}), QString());
        };
        check({u"abcdefgh"_s, u"abcdefxx"_s}, before + u"--abcdefgh"_s, before + u"--*"_s);
        // The word's own asterisk is within reach.
        check({piece, u"ab"_s}, before + u"aab"_s + piece + u"b--ab"_s, before + u"a**b--*"_s);
    }

    void agreesOnRandomCases()
    {
        for (quint32 seed = 1; seed <= 6000; ++seed) {
            RandomWordLists random(seed);
            random.next(12, 10);
            const QString found = difference(random.words, random.lines);
            QVERIFY2(found.isEmpty(),
                     qPrintable(u"seed %1: %2"_s.arg(QString::number(seed), found)));
        }
    }

    // Alone, so that a word skipped where it would have matched is not hidden by another.
    void agreesOnEveryShortPattern()
    {
        const QStringList lines = allTexts(u"ab-["_s, 4);
        const QString all = u"ab^$.|?*+()[]{}-\\"_s;
        for (const QString& word : allTexts(all, 2) + allTexts(u"a.|([-]\\^"_s, 4)) {
            WordFilter filter({word});
            const QRegExp pattern(LiteralWordFilter::pattern(word));
            if (!pattern.isValid()) {
                QVERIFY2(masked({word}, all.repeated(2)) == all.repeated(2), qPrintable(word));
                continue;
            }
            for (int i = qHash(word) % 16; i < lines.size(); i += 16) {
                ChatLine line(lines.at(i));
                filter.mask(line);
                QVERIFY2(line.text() == QString(lines.at(i)).replace(pattern, u"*"_s),
                         qPrintable(word + u" on "_s + lines.at(i)));
            }
        }
    }

    void agreesOnLongTexts_data()
    {
        QTest::addColumn<QString>("word");
        QTest::newRow("one character") << u"a"_s;
        QTest::newRow("longer than an anchor") << u"abcdefgh"_s;
        QTest::newRow("start of the line") << u"^a"_s;
        QTest::newRow("nothing at all") << QString();
        QTest::newRow("alternatives") << u"a|bc"_s;
    }

    void agreesOnLongTexts()
    {
        QFETCH(const QString, word);
        const QString text = u"abcdefgh abc.d.e..fg-h "_s.repeated(1100);
        QCOMPARE(difference({word, u"g-"_s, u"h*"_s, u"*a"_s}, {text, text + text}), QString());
    }

    void bounds()
    {
        const QString longest = u"a."_s + QString(WordPattern::maxSpecialLength - 2, u'b');
        const QString tooLong = u"c."_s + QString(WordPattern::maxSpecialLength - 1, u'd');
        const QString ordinary = tooLong.mid(2);
        QCOMPARE(masked({longest, tooLong}, longest + tooLong), QString(u"*"_s + tooLong));
        QCOMPARE(masked({ordinary.repeated(30)}, ordinary.repeated(30)), u"*"_s); // of four pieces

        const LogLines log;
        QVERIFY(m_manager->loadSensitiveWordsInfoListTable(table({longest, tooLong})));
        QVERIFY(m_manager->loadNewSensitiveWordsInfoListTable(table({longest})));
        QCOMPARE(LogLines::count(u"left out, 65 characters where 64 are the most: \"c.d"_s), 1);
        QCOMPARE(LogLines::count(tooLong), 0); // shortened

        QStringList many;
        for (int i = 0; i < 2000; ++i)
            many += QString(QChar(0x4E00 + i)) + u".x"_s;
        WordFilter byNumber(many);
        ChatLine line(many.join(u"---"_s));
        byNumber.mask(line);
        QCOMPARE(line.text().count(u'*'), many.size());
        QVERIFY(byNumber.keptEngines() > 0);
        QVERIFY2(byNumber.keptEngines() * (3 + 4) <= WordFilter::maxKeptCharacters,
                 qPrintable(QString::number(byNumber.keptEngines())));

        // One letter over and over holds its anchor in hundreds of ways at each place.
        std::vector<int> ranks;
        AnchorIndex({u"aaaaaa"_s}, {{0, 0, 6}}).find(QString(1000, u'a'), 0, 1000, ranks);
        QVERIFY2(ranks.size() <= 1000, qPrintable(QString::number(ranks.size())));
    }

    // Sixteen times the line and the masks: 256 times, were the whole line touched for each.
    void timeGrowsWithTheLine()
    {
        double least = qInf();
        for (int i = 0; i < 5 && least > 40; ++i)
            least = qMin(least, secondsOf(80000) / qMin(secondsOf(5000), secondsOf(5000)));
        QVERIFY2(least < 40, qPrintable(QString::number(least)));
    }

    void appliesTheMapsInTheirOwnOrder()
    {
        const LogLines log;
        RandomWordLists random(7);
        for (int i = 0; i < 60; ++i) {
            random.next(12, 8);
            QVERIFY(m_manager->loadSensitiveWordsInfoListTable(table(random.words)));
            const QStringList older = random.words;
            const QStringList lines = random.lines;
            random.next(12, 8);
            const QStringList newer = random.words + older.mid(0, 3);
            QVERIFY(m_manager->loadNewSensitiveWordsInfoListTable(table(newer)));
            QCOMPARE(m_manager->getSensitiveWordsMap().size(), older.size());
            for (const QString& line : lines + random.lines) {
                QString expected =
                    LiteralWordFilter::mask(m_manager->getSensitiveWordsMap().keys(), line);
                expected =
                    LiteralWordFilter::mask(m_manager->getNewSensitiveWordsMap().keys(), expected);
                QCOMPARE(m_manager->sensitiveWordsCheck(line), expected);
            }
        }
    }

    void followsEveryLoad()
    {
        const LogLines log;
        QVERIFY(m_manager->loadSensitiveWordsInfoListTable(table({u"one"_s, u"one"_s})));
        QVERIFY(m_manager->loadNewSensitiveWordsInfoListTable(table({u"two"_s})));
        QCOMPARE(LogLines::count(u"NewSensitiveWordsInfoList.json加载完毕"_s), 1);
        QCOMPARE(LogLines::count(u"SensitiveWordsInfoList.json加载完毕"_s), 2);
        QCOMPARE(m_manager->getSensitiveWordsMap().keys(), QStringList {u"one"_s});
        QCOMPARE(m_manager->sensitiveWordsCheck(u"one two"_s), u"* *"_s);

        const QString noColumn = tableOf(u"word"_s, QByteArray(QByteArray(QByteArray("[['x']]"))));
        QVERIFY(!m_manager->loadSensitiveWordsInfoListTable(noColumn));
        QVERIFY(!m_manager->loadNewSensitiveWordsInfoListTable(u"missing"_s));
        QCOMPARE(m_manager->sensitiveWordsCheck(u"one two"_s), u"* *"_s);

        m_manager->clear();
        QVERIFY(m_manager->getSensitiveWordsMap().isEmpty());
        QCOMPARE(m_manager->sensitiveWordsCheck(u"one two"_s), u"one *"_s);

        // A cell that is no text is the empty word.
        const QString number = tableOf(u"key"_s, QByteArray("[[7]]"));
        QVERIFY(m_manager->loadNewSensitiveWordsInfoListTable(number));
        QCOMPARE(m_manager->sensitiveWordsCheck(u"two"_s), u"*t*w*o*"_s);
        QCOMPARE(ZSensitiveWordsInfoListMgr::declaration().recordCount(), 0);
        QCOMPARE(ZSensitiveWordsInfoListMgr::newDeclaration().recordCount(), 1);
    }

    void explainsInTermsOfTheOriginal()
    {
        QVERIFY(m_manager->loadSensitiveWordsInfoListTable(table({u"xyz"_s})));
        QVERIFY(m_manager->loadNewSensitiveWordsInfoListTable(table({u"ab"_s})));
        QString told;
        for (const stWordMask& mask : m_manager->explainSensitiveWords(u"xyz 12 a xyzb ab"_s))
            told += u"%1 %2 %3+%4; "_s.arg(mask.list == stWordMask::OlderList ? u"old"_s : u"new"_s,
                                           mask.word, QString::number(mask.start),
                                           QString::number(mask.length));
        QCOMPARE(told, u"old xyz 0+3; old xyz 9+3; new ab 7+6; new ab 14+2; "_s);
    }
};

QTEST_GUILESS_MAIN(tst_wordfilter)
#include "tst_wordfilter.moc"
