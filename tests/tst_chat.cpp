#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "chat/ZMessageMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "host/ZGlobalConfig.h"
#include "support/CacheName.h"
#include "support/HttpServer.h"
#include "support/Tables.h"

#include <QtTest>

namespace {

QString cached(const QString& address)
{
    return u"res/images/"_s + cacheName(address);
}

/** The path that a download ended with, or "rejected". */
QString outcome(const QtPromise::QPromise<QString>& promise)
{
    QString answer;
    promise.then([&](const QString& path) { answer = path; }).fail([&] { answer = u"rejected"_s; });
    const bool settled = QTest::qWaitFor([&] { return !answer.isEmpty(); }, 20000);
    return settled ? answer : u"never settled"_s;
}

} // namespace

/** What chat lines are made of, and the labels of gifts. */
class tst_chat : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZBubbleConfigMgr& m_bubbles = ZBubbleConfigMgr::getInstance();
    ZDoutuMgr& m_stickers = ZDoutuMgr::getInstance();
    ZMessageMgr& m_messages = ZMessageMgr::getInstance();
    ZQuickInputMessageMgr& m_phrases = ZQuickInputMessageMgr::getInstance();
    ZGiftLabelMgr& m_labels = ZGiftLabelMgr::getInstance();

private Q_SLOTS:
    void init();

    void labelsAndPhrases();
    void welcomeWords();
    void messages();
    void bubbles();
    void bubbleAddresses();
    void stickers();
    void downloads();
};

void tst_chat::init()
{
    ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
    ZDataTableMgr::getInstance()->setTableVersion(EDataTable::BubbleConfig, 35, false);
}

void tst_chat::labelsAndPhrases()
{
    QVERIFY(loadTable<ZGiftLabelMgr>("[['a']]"));
    QCOMPARE(m_labels.getGiftLabelMap().keys(), QStringList(u"a"_s));
    QCOMPARE(m_labels.getInfoById(u"a"_s).id, u"a"_s);
    QCOMPARE(m_labels.getInfoById(u"A"_s).id, QString());
    QVERIFY(loadTable<ZQuickInputMessageMgr>("[['2', 'b'], ['1', 'a']]"));
    m_phrases.getQuickInputMessages().removeFirst();
    QCOMPARE(m_phrases.getQuickInputMessages().size(), 1);
}

void tst_chat::welcomeWords()
{
    ZGroupWelcomelMgr* welcome = ZGroupWelcomelMgr::getInstance();
    QVERIFY(loadTable<ZGroupWelcomelMgr>(u"a b c"_s, "[['Hi', 'Hello', 'Welcome']]"));
    QSet<QString> drawn;
    for (int i = 0; i < 200; ++i)
        drawn.insert(welcome->getRandWelcome());
    QCOMPARE(drawn.size(), 3);
    welcome->clear();
    QCOMPARE(welcome->getWelcomeList(), QVector<QString>());
    QCOMPARE(welcome->getRandWelcome(), QString());
}

void tst_chat::messages()
{
    QVERIFY(loadTable<ZMessageMgr>(
        "[[105, 3, 2, 'r', '早'], [105.0, 7, 4, 's', '晚', 'p', 'http://a']]"));
    QCOMPARE(m_messages.getMessageMap().size(), 1);
    QCOMPARE(m_messages.getMessagelist().size(), 2);
    const ZMessageInfo message = m_messages.getMessageInfoById(u"105"_s);
    QCOMPARE(message.zh_cn, u"晚"_s);
    QCOMPARE(message.jumpUrl, u"http://a"_s);
    QCOMPARE(m_messages.getMessageTabType(u"105"_s), 7);
    QCOMPARE(m_messages.getMessageTabType(u"106"_s), 0);
    m_messages.clear();
    QVERIFY(m_messages.getMessageMap().isEmpty());
    QVERIFY(m_messages.getMessagelist().isEmpty());
}

void tst_chat::bubbles()
{
    QVERIFY(loadTable<ZBubbleConfigMgr>("[[12, 2, 'old'], [12, 3, 'new']]"));
    QCOMPARE(m_bubbles.getMessageList().size(), 2);
    QCOMPARE(m_bubbles.getMessageList().first().name, u"old"_s);
    QCOMPARE(m_bubbles.getInfoById(u"12"_s).name, u"new"_s);
    QCOMPARE(m_bubbles.getInfoById(u"unknown"_s).borderWidths, u"17"_s);
    QCOMPARE(m_bubbles.getInfoById(u"unknown"_s).paddings, u"-10"_s);
}

void tst_chat::bubbleAddresses()
{
    const QString image =
        u"http://img/app/images/nineImage/bubble_bg_5.9.png?imageMogr2/thumbnail/x44/35"_s;
    const QString chat =
        u"http://img/app/images/nineImage/bubble_chat_5.9.png?imageMogr2/thumbnail/!33.333p/35"_s;
    QCOMPARE(m_bubbles.getImageUrlById(u"5"_s), image);
    QCOMPARE(m_bubbles.getImagePathById(u"5"_s), cached(image));
    QCOMPARE(m_bubbles.getThumbEnableImagePathById(u"5"_s), cached(image) + u"_thumb_enable"_s);
    QCOMPARE(m_bubbles.getChatUrlById(u"5"_s), chat);
    QCOMPARE(m_bubbles.getChatPathById(u"5"_s), cached(chat));
    QCOMPARE(m_bubbles.getThumbEnableUrlById(u"%3"_s),
             u"http://img/app/images/nobility/bubble_small_%3.png?35"_s);
    const QString none;
    QCOMPARE(QStringList({m_bubbles.getImageUrlById(none), m_bubbles.getChatUrlById(none),
                          m_bubbles.getThumbEnableUrlById(none), m_bubbles.getImagePathById(none),
                          m_bubbles.getChatPathById(none)}),
             QStringList({none, none, none, none, none}));
    QCOMPARE(m_bubbles.getThumbEnableImagePathById(none), u"_thumb_enable"_s);
}

void tst_chat::stickers()
{
    QVERIFY(loadTable<ZDoutuMgr>(
        "[['first.gif', '3', '2'], ['second.gif', 4, '1'], ['third%1.gif', 'x', '2'], "
        "['none.gif', '1', '-1'], ['zero.gif', '1', 'x']]"));
    QCOMPARE(m_stickers.getMessageMap().keys(), QList<int>({0, 1, 2}));
    const QString address = u"http://img/app/images/doutu/%1?imageView2/0/w/256/h/256&%2"_s;
    QCOMPARE(m_stickers.getImageUrlById(2, 0), address.arg(u"first.gif"_s, u"3"_s));
    QCOMPARE(m_stickers.getImageUrlById(2, 1), address.arg(u"third%1.gif"_s, u"0"_s));
    QCOMPARE(m_stickers.getImageUrlById(0, 0), address.arg(u"zero.gif"_s, u"1"_s));
    QCOMPARE(m_stickers.getImagePathById(2, 0), cached(address.arg(u"first.gif"_s, u"3"_s)));
    for (const QPoint& place : {QPoint(2, 2), QPoint(2, -1), QPoint(3, 0), QPoint(-1, 0)}) {
        QCOMPARE(m_stickers.getImageUrlById(place.x(), place.y()), QString());
        QCOMPARE(m_stickers.getImagePathById(place.x(), place.y()), QString());
    }
}

void tst_chat::downloads()
{
    HttpServer server;
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
    QCOMPARE(WorkFolder::read(image), QByteArray("background"));
    QCOMPARE(WorkFolder::read(image + u"_thumb_enable"_s), QByteArray("thumbnail"));
    QCOMPARE(WorkFolder::read(sticker), QByteArray("cat"));
    QCOMPARE(outcome(m_bubbles.getImagePathAndDownloadById(u"6"_s)), u"rejected"_s);
    QCOMPARE(outcome(m_stickers.getImagePathAndDownloadById(5, 1)), u"rejected"_s);
}

QTEST_GUILESS_MAIN(tst_chat)

#include "tst_chat.moc"
