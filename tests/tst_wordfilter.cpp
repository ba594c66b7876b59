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

/** The processor time of masking so many words in one line, each once. */
std::clock_t timeOf(int count)
{
    QStringList words;
    for (int i = 0; i < count; ++i)
        words += QString(QChar(0x4E00 + i % 0x5000)) + QChar(0x3041 + i / 0x5000);
    WordFilter filter(words);
    ChatLine line(words.join(u"---"_s));
    const std::clock_t begin = std::clock();
    filter.mask(line);
    return line.text().count(u'*') == count ? std::clock() - begin : 0;
}

} // namespace

class tst_wordfilter : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
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
        QCOMPARE(masked({u"abcdefgh"_s, u"abcdefxx"_s}, before + u"--abcdefgh"_s),
                 before + u"--*"_s);
        // The word's own asterisk is within reach.
        QCOMPARE(masked({piece, u"ab"_s}, before + u"aab"_s + piece + u"b--ab"_s),
                 before + u"a**b--*"_s);
    }

    void agreesOnRandomCases()
    {
        for (quint32 seed = 1; seed <= 6000; ++seed) {
            RandomWordLists random(seed);
            random.next(seed % 2 == 0 ? 12 : 1, 10); // alone, no word is hidden by another
            const QString found = difference(random.words, random.lines);
            QVERIFY2(found.isEmpty(), qPrintable(u"seed %1: %2"_s.arg(seed).arg(found)));
        }
    }

    void agreesOnLongTexts()
    {
        const QString text = u"abcdefgh abc.d.e..fg-h "_s.repeated(1100);
        for (const QString& word : {u"a"_s, u"abcdefgh"_s, u"^a"_s, QString(), u"a|bc"_s}) {
            const QStringList words {word, u"g-"_s, u"h*"_s, u"*a"_s};
            QVERIFY2(difference(words, {text, text + text}).isEmpty(), qPrintable(word));
        }
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
        QCOMPARE(LogLines::count(u"left out, 65 characters where 64 are the most: \"c.d"_s), 1);
        QCOMPARE(LogLines::count(tooLong), 0); // shortened

        QStringList many;
        for (int i = 0; i < 2000; ++i)
            many += QString(QChar(0x4E00 + i)) + u".x"_s;
        WordFilter byNumber(many);
        ChatLine line(many.join(u"---"_s));
        byNumber.mask(line);
        QCOMPARE(line.text().count(u'*'), many.size());
        const int kept = byNumber.keptEngines() * (3 + 4);
        QVERIFY2(kept > 0 && kept <= WordFilter::maxKeptCharacters,
                 qPrintable(QString::number(kept)));

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
            least = qMin(least, double(timeOf(80000)) / qMin(timeOf(5000), timeOf(5000)));
        QVERIFY2(least > 0 && least < 40, qPrintable(QString::number(least)));
    }

    void appliesTheMapsInTheirOwnOrder()
    {
        const auto check = [this](const QStringList& older, const QStringList& newer) {
            m_manager->loadSensitiveWordsInfoListTable(table(older));
            m_manager->loadNewSensitiveWordsInfoListTable(table(newer));
            return m_manager->sensitiveWordsCheck(u"a xyzb"_s);
        };
        // Within a list in the order of its map, which differs from run to run.
        const auto inMapOrder = [](const auto& map) {
            return LiteralWordFilter::mask(map.keys(), u"a xyzb"_s);
        };
        const QString older = check({u"xyz"_s, u"ab"_s}, {});
        QCOMPARE(older, inMapOrder(m_manager->getSensitiveWordsMap()));
        const QString newer = check({}, {u"xyz"_s, u"ab"_s});
        QCOMPARE(newer, inMapOrder(m_manager->getNewSensitiveWordsMap()));
        QCOMPARE(check({u"ab"_s}, {u"xyz"_s}), u"a *b"_s);
        QCOMPARE(check({u"xyz"_s}, {u"ab"_s}), u"*"_s);

        QString told;
        for (const stWordMask& mask : m_manager->explainSensitiveWords(u"xyz 12 a xyzb ab"_s))
            told += u"%1 %2 %3+%4; "_s.arg(mask.list == stWordMask::OlderList ? u"old"_s : u"new"_s,
                                           mask.word, QString::number(mask.start),
                                           QString::number(mask.length));
        QCOMPARE(told, u"old xyz 0+3; old xyz 9+3; new ab 7+6; new ab 14+2; "_s);
    }

    void followsEveryLoad()
    {
        const auto checked = [this] { return m_manager->sensitiveWordsCheck(u"one two"_s); };
        QVERIFY(m_manager->loadSensitiveWordsInfoListTable(table({u"one"_s, u"one"_s})));
        QVERIFY(m_manager->loadNewSensitiveWordsInfoListTable(table({u"two"_s})));
        QCOMPARE(m_manager->getSensitiveWordsMap().keys(), QStringList {u"one"_s});
        QVERIFY(!m_manager->loadSensitiveWordsInfoListTable(tableOf(u"word"_s, QJsonArray())));
        QVERIFY(!m_manager->loadNewSensitiveWordsInfoListTable(u"missing"_s));
        QCOMPARE(checked(), u"* *"_s);
        m_manager->clear();
        QCOMPARE(checked(), u"one *"_s);

        // A cell that is no text is the empty word.
        QVERIFY(
            m_manager->loadNewSensitiveWordsInfoListTable(tableOf(u"key"_s, QByteArray("[[7]]"))));
        QCOMPARE(checked(), u"*o*n*e* *t*w*o*"_s);
        QCOMPARE(ZSensitiveWordsInfoListMgr::newDeclaration().recordCount(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_wordfilter)
#include "tst_wordfilter.moc"
