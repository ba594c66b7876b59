#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "chat/ZMessageMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "support/Answers.h"
#include "support/Cases.h"
#include "support/Patience.h"
#include "testing/ZTestServer.h"

#include <QtTest>

#include <cstdlib>

namespace {

/** As a program that uses the library would. */
void seedPhrases()
{
#if QT_VERSION_MAJOR < 6
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    qsrand(7);
    QT_WARNING_POP
#else
    std::srand(7);
#endif
}

/** The path that a download ended with, or "rejected". */
QString outcome(const QtPromise::QPromise<QString>& promise)
{
    QString answer;
    promise.then([&](const QString& path) { answer = path; }).fail([&] { answer = u"rejected"_s; });
    const bool settled = QTest::qWaitFor([&] { return !answer.isEmpty(); }, patience);
    return settled ? answer : u"never settled"_s;
}

} // namespace

/** What chat lines are made of, and the labels of gifts. */
class tst_chat : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    ZBubbleConfigMgr& m_bubbles = ZBubbleConfigMgr::getInstance();
    ZDoutuMgr& m_stickers = ZDoutuMgr::getInstance();
    ZMessageMgr& m_messages = ZMessageMgr::getInstance();

private Q_SLOTS:
    void init() { ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s); }

    void welcomeWords()
    {
        ZGroupWelcomelMgr* welcome = ZGroupWelcomelMgr::getInstance();
        QVERIFY(loadTable<ZGroupWelcomelMgr>(u"a b c"_s, "[['Hi', 'Hello', 'Welcome']]"));
        QStringList drawn[2];
        for (QStringList& phrases : drawn) {
            seedPhrases();
            for (int i = 0; i < 100; ++i)
                phrases.append(welcome->getRandWelcome());
        }
        QCOMPARE(drawn[0], drawn[1]);
        QCOMPARE(drawn[0].removeDuplicates(), 97);
        welcome->clear();
        QCOMPARE(welcome->getWelcomeList(), QVector<QString>());
        QCOMPARE(welcome->getRandWelcome(), QString());
    }

    void answers_data() { Cases::rows("chat"); }

    void answers()
    {
        QFETCH(QJsonValue, lines);
        const std::function phrases([] {
            ZQuickInputMessageMgr::getInstance().getQuickInputMessages().removeFirst();
            return ZQuickInputMessageMgr::getInstance().getQuickInputMessages().size();
        });
        const std::function messages([this] {
            return QJsonArray {m_messages.getMessageMap().size(),
                               m_messages.getMessagelist().size()};
        });
        const std::function clearMessages([this] {
            m_messages.clear();
            return true;
        });
        const std::function bubbles([this] {
            QStringList names;
            for (const ZBubbleConfigInfo& info : m_bubbles.getMessageList())
                names.append(info.name);
            return names;
        });
        const std::function bubble([this](const QString& id) {
            const ZBubbleConfigInfo info = m_bubbles.getInfoById(id);
            return QStringList {info.name, info.borderWidths, info.paddings};
        });
        const std::function groups([this] {
            QJsonArray numbers;
            for (const int group : m_stickers.getMessageMap().keys())
                numbers.append(group);
            return numbers;
        });
        Answers(
            {{u"label"_s, Answers::of(&ZGiftLabelMgr::getInfoById, &ZGiftLabelInfo::id)},
             {u"phrases left without the first"_s, Answers::of(phrases)},
             {u"messages"_s, Answers::of(messages)},
             {u"zh_cn"_s, Answers::of(&ZMessageMgr::getMessageInfoById, &ZMessageInfo::zh_cn)},
             {u"jumpUrl"_s, Answers::of(&ZMessageMgr::getMessageInfoById, &ZMessageInfo::jumpUrl)},
             Z_ANSWER(ZMessageMgr, getMessageTabType),
             {u"clear messages"_s, Answers::of(clearMessages)},
             {u"bubbles"_s, Answers::of(bubbles)},
             {u"bubble"_s, Answers::of(bubble)},
             Z_ANSWER(ZBubbleConfigMgr, getImageUrlById),
             Z_ANSWER(ZBubbleConfigMgr, getChatUrlById),
             Z_ANSWER(ZBubbleConfigMgr, getThumbEnableUrlById),
             Z_ANSWER(ZBubbleConfigMgr, getImagePathById),
             Z_ANSWER(ZBubbleConfigMgr, getChatPathById),
             Z_ANSWER(ZBubbleConfigMgr, getThumbEnableImagePathById),
             {u"sticker groups"_s, Answers::of(groups)},
             {u"getStickerUrl"_s, Answers::of(&ZDoutuMgr::getImageUrlById)},
             {u"getStickerPath"_s, Answers::of(&ZDoutuMgr::getImagePathById)}})
            .check(lines.toArray());
    }

    void downloads()
    {
        ZTestServer server;
        ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, server.baseUrl());
        server.serve(u"/app/images/nineImage/bubble_bg_5.9.png"_s, "background");
        server.serve(u"/app/images/nobility/bubble_small_5.png"_s, "thumbnail");
        server.serve(u"/app/images/doutu/cat.png"_s, "cat");
        QVERIFY(loadTable<ZDoutuMgr>("[['cat.png', '1', '5']]"));
        const QString image = m_bubbles.getImagePathById(u"5"_s);
        const QString sticker = m_stickers.getImagePathById(5, 0);
        for (int pass = 0; pass < 2; ++pass) {
            QCOMPARE(outcome(m_bubbles.getImagePathAndDownloadById(u"5"_s)), image);
            QCOMPARE(outcome(m_bubbles.getThumbEnableImagePathAndDownloadById(u"5"_s)),
                     image + u"_thumb_enable"_s);
            QCOMPARE(outcome(m_stickers.getImagePathAndDownloadById(5, 0)), sticker);
        }
        QCOMPARE(server.targets().size(), 3);
        QCOMPARE(ZTestFolder::read(image), QByteArray("background"));
        QCOMPARE(ZTestFolder::read(image + u"_thumb_enable"_s), QByteArray("thumbnail"));
        QCOMPARE(ZTestFolder::read(sticker), QByteArray("cat"));
        QCOMPARE(outcome(m_bubbles.getImagePathAndDownloadById(u"6"_s)), u"rejected"_s);
        QCOMPARE(outcome(m_stickers.getImagePathAndDownloadById(5, 1)), u"rejected"_s);
    }
};

QTEST_GUILESS_MAIN(tst_chat)

#include "tst_chat.moc"
