#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZMessageMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "host/ZGlobalConfig.h"
#include "support/HttpServer.h"
#include "support/Literals.h"
#include "support/LogLines.h"
#include "support/Tables.h"

#include <QCryptographicHash>
#include <QtTest>

namespace {

const QString labelColumns = u"id alterDateTime giftLabelName startColor endColor"_s;
const QString phraseColumns = u"id item"_s;
const QString messageColumns = u"id randomId zh_cn handleType opt tabType"_s;
const QString bubbleColumns = u"bubbleId bubbleType name descs"_s;
const QString stickerColumns = u"name version group"_s;

QString cached(const QString& address)
{
    const QByteArray digest = QCryptographicHash::hash(address.toUtf8(), QCryptographicHash::Md5);
    return u"res/images/"_s + QString::fromLatin1(digest.toHex().toUpper());
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

    void refusals();
    void labels();
    void phrases();
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

void tst_chat::refusals()
{
    QSignalSpy labels(&m_labels, &ZGiftLabelMgr::sigUpdate);
    QSignalSpy phrases(&m_phrases, &ZQuickInputMessageMgr::sigUpdateFinished);
    QSignalSpy bubbles(&m_bubbles, &ZBubbleConfigMgr::sigBubbleLoadFinish);
    const LogLines log;
    const auto check = [this](const QString& columns, auto load, const TableDeclaration& table) {
        QCOMPARE(requiredFault(m_folder, columns, load, [&] { return table.recordCount(); }), QString());
    };
    check(
        labelColumns, [this](auto& path) { return m_labels.loadListTable(path); },
        ZGiftLabelMgr::declaration());
    check(
        phraseColumns, [this](auto& path) { return m_phrases.loadListTable(path); },
        ZQuickInputMessageMgr::declaration());
    check(
        messageColumns, [this](auto& path) { return m_messages.loadMessageListTable(path); },
        ZMessageMgr::declaration());
    check(
        bubbleColumns, [this](auto& path) { return m_bubbles.loadListTable(path); },
        ZBubbleConfigMgr::declaration());
    check(
        stickerColumns, [this](auto& path) { return m_stickers.loadListTable(path); },
        ZDoutuMgr::declaration());
    // Each has loaded one table, and said nothing of the refused ones.
    QCOMPARE(LogLines::lines(),
             QStringList({u"礼物标签表加载完毕"_s, u"QuickInputMessage加载完毕"_s,
                          u"Message加载完毕"_s, u"BubbleConfig加载完毕"_s, u"Doutu加载完毕"_s}));
    QCOMPARE(labels.count() * 100 + phrases.count() * 10 + bubbles.count(), 111);
}

void tst_chat::labels()
{
    QVERIFY(m_labels.loadListTable(
        tableOf(m_folder, u"endColor startColor giftLabelName alterDateTime id"_s,
                "[['#2', '#1', 'old', 'then', 'a'], ['#4', '#3', 'new', 'now', 'a']]")));
    QCOMPARE(m_labels.getGiftLabelMap().size(), 1);
    const ZGiftLabelInfo label = m_labels.getInfoById(u"a"_s);
    QCOMPARE(label.giftLabelName + label.alterDateTime + label.startColor + label.endColor,
             u"newnow#3#4"_s);
    QCOMPARE(m_labels.getInfoById(u"A"_s).id, QString());
}

void tst_chat::phrases()
{
    QVERIFY(m_phrases.loadListTable(
        tableOf(m_folder, phraseColumns, "[['2', 'b'], ['1', 'a'], null, ['2', 'c']]")));
    QStringList items;
    for (const auto& phrase : qAsConst(m_phrases.getQuickInputMessages()))
        items.append(phrase.id + phrase.item);
    QCOMPARE(items, QStringList({u"2b"_s, u"1a"_s, u"2c"_s}));
    m_phrases.getQuickInputMessages().removeFirst();
    QCOMPARE(m_phrases.getQuickInputMessages().size(), 2);
}

void tst_chat::messages()
{
    QVERIFY(m_messages.loadMessageListTable(
        tableOf(m_folder, messageColumns,
                "[[105, 'r', '早', 2, 'o', 3], ['105', '', 'text id', '2', '', '3'], "
                "[105.0, 's', '晚', 4, 'p', 7]]")));
    QCOMPARE(m_messages.getMessageMap().size(), 2);
    QCOMPARE(m_messages.getMessagelist().size(), 3);
    QCOMPARE(m_messages.getMessagelist().first().zh_cn, u"早"_s);
    const ZMessageInfo message = m_messages.getMessageInfoById(u"105"_s);
    QCOMPARE(message.randomId + message.zh_cn + message.opt + message.jumpUrl, u"s晚p"_s);
    QCOMPARE(message.handleType, 4);
    QCOMPARE(m_messages.getMessageTabType(u"105"_s), 7);
    QCOMPARE(m_messages.getMessageInfoById(u"0"_s).zh_cn, u"text id"_s);
    QCOMPARE(m_messages.getMessageTabType(u"106"_s), 0);
    QVERIFY(m_messages.loadMessageListTable(
        tableOf(m_folder, messageColumns + u" jumpUrl"_s, "[[1, '', '', 0, '', 0, 'http://a']]")));
    QCOMPARE(m_messages.getMessagelist().last().jumpUrl, u"http://a"_s);
    m_messages.clear();
    QVERIFY(m_messages.getMessageMap().isEmpty() && m_messages.getMessagelist().isEmpty());
}

void tst_chat::bubbles()
{
    QVERIFY(m_bubbles.loadListTable(
        tableOf(m_folder, bubbleColumns,
                "[[12, 2, 'old', 'd'], [12, 3, 'new', 'd'], ['12', '2', 'text id']]")));
    QCOMPARE(m_bubbles.getMessageList().size(), 3);
    QCOMPARE(m_bubbles.getMessageList().first().name, u"old"_s);
    QCOMPARE(m_bubbles.getInfoById(u"12"_s).name, u"new"_s);
    QCOMPARE(m_bubbles.getInfoById(u"12"_s).bubbleType, u"3"_s);
    QCOMPARE(m_bubbles.getInfoById(u"0"_s).name, u"text id"_s);
    for (const QString& id : {u"12"_s, u"unknown"_s}) {
        QCOMPARE(m_bubbles.getInfoById(id).borderWidths, u"17"_s);
        QCOMPARE(m_bubbles.getInfoById(id).paddings, u"-10"_s);
    }
    QVERIFY(m_bubbles.loadListTable(tableOf(m_folder, bubbleColumns + u" paddings borderWidths"_s,
                                            "[[1, 1, '', '', '', '20,24']]")));
    QCOMPARE(m_bubbles.getInfoById(u"1"_s).borderWidths, u"20,24"_s);
    QCOMPARE(m_bubbles.getInfoById(u"1"_s).paddings, QString());
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
    QCOMPARE(m_bubbles.getImageUrlById(none) + m_bubbles.getChatUrlById(none)
                 + m_bubbles.getThumbEnableUrlById(none) + m_bubbles.getImagePathById(none)
                 + m_bubbles.getChatPathById(none),
             QString());
    QCOMPARE(m_bubbles.getThumbEnableImagePathById(none), u"_thumb_enable"_s);
}

void tst_chat::stickers()
{
    QVERIFY(m_stickers.loadListTable(
        tableOf(m_folder, stickerColumns,
                "[['first.gif', '3', '2'], ['second.gif', 4, '1'], ['third%1.gif', 'x', '2'], "
                "['none.gif', '1', '-1'], ['zero.gif', '1', 'x']]")));
    QCOMPARE(m_stickers.getMessageMap().keys(), QList<int>({0, 1, 2}));
    const QString address = u"http://img/app/images/doutu/%1?imageView2/0/w/256/h/256&%2"_s;
    QCOMPARE(m_stickers.getImageUrlById(2, 0), address.arg(u"first.gif"_s, u"3"_s));
    QCOMPARE(m_stickers.getImageUrlById(2, 1), address.arg(u"third%1.gif"_s, u"0"_s));
    QCOMPARE(m_stickers.getImageUrlById(0, 0), address.arg(u"zero.gif"_s, u"1"_s));
    QCOMPARE(m_stickers.getImagePathById(2, 0), cached(address.arg(u"first.gif"_s, u"3"_s)));
    for (const auto& place : {qMakePair(2, 2), qMakePair(2, -1), qMakePair(3, 0), qMakePair(-1, 0)})
        QCOMPARE(m_stickers.getImageUrlById(place.first, place.second)
                     + m_stickers.getImagePathById(place.first, place.second),
                 QString());
}

void tst_chat::downloads()
{
    HttpServer server;
    ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, server.baseUrl());
    server.serve(u"/app/images/nineImage/bubble_bg_5.9.png"_s, "background");
    server.serve(u"/app/images/nobility/bubble_small_5.png"_s, "thumbnail");
    server.serve(u"/app/images/doutu/cat.png"_s, "cat");
    QVERIFY(m_stickers.loadListTable(tableOf(m_folder, stickerColumns, "[['cat.png', '1', '5']]")));
    const QString image = m_bubbles.getImagePathById(u"5"_s);
    const QString sticker = m_stickers.getImagePathById(5, 0);
    for (int pass = 0; pass < 2; ++pass) {
        QCOMPARE(outcome(m_bubbles.getImagePathAndDownloadById(u"5"_s)), image);
        QCOMPARE(outcome(m_bubbles.getThumbEnableImagePathAndDownloadById(u"5"_s)),
                 image + u"_thumb_enable"_s);
        QCOMPARE(outcome(m_stickers.getImagePathAndDownloadById(5, 0)), sticker);
    }
    QCOMPARE(server.targets().size(), 3);
    QCOMPARE(WorkFolder::read(image) + WorkFolder::read(image + u"_thumb_enable"_s)
                 + WorkFolder::read(sticker),
             QByteArray("backgroundthumbnailcat"));
    QCOMPARE(outcome(m_bubbles.getImagePathAndDownloadById(u"6"_s)), u"rejected"_s);
    QCOMPARE(outcome(m_stickers.getImagePathAndDownloadById(5, 1)), u"rejected"_s);
}

QTEST_GUILESS_MAIN(tst_chat)

#include "tst_chat.moc"
