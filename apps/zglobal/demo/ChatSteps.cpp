#include "demo/Demo.h"
#include "demo/Steps.h"

#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "chat/ZMessageMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "command/WordMasks.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "console/Wait.h"

#include <QFileInfo>

namespace {

/** A line as it is typed, and as the room may see it. */
struct ChatLine
{
    QString typed;
    QString masked;
};

/** A picture brought into the cache: told, and checked to be there. */
void showPicture(Demo& demo, const QString& title, const QtPromise::QPromise<QString>& download)
{
    const auto picture = settled(download);
    const bool there = picture.ok && QFileInfo(picture.value).size() > 0;
    demo.expect(there, Terminal::padded(title, 24) + (there ? picture.value : picture.error));
}

} // namespace

void Steps::welcome(Demo& demo)
{
    ZGroupWelcomelMgr* phrases = ZGroupWelcomelMgr::getInstance();
    const QString phrase = phrases->getRandWelcome();
    demo.say(u"“%1”"_s.arg(phrase));
    demo.expect(phrases->getWelcomeList().contains(phrase),
                u"drawn from %1 phrases"_s.arg(phrases->getWelcomeList().size()));
}

void Steps::maskedLines(Demo& demo)
{
    ZSensitiveWordsInfoListMgr* words = ZSensitiveWordsInfoListMgr::getInstance();
    const QVector<ChatLine> lines {
        {u"主播唱得真好听"_s, u"主播唱得真好听"_s},
        {u"代充金豆找我"_s, u"*找我"_s},
        {u"加 群-换.礼物，速来"_s, u"*，速来"_s},
        {u"代。充，金 豆！还能加群换礼物"_s, u"*！还能*"_s},
        {u"代（（（充金豆"_s, u"代（（（充金豆"_s},
    };
    bool asMeant = true;
    for (const ChatLine& line : lines) {
        const QString masked = words->sensitiveWordsCheck(line.typed);
        asMeant = asMeant && masked == line.masked;
        demo.say(Terminal::padded(line.typed, 34) + masked);
        const QStringList masks = WordMasks::explained(line.typed);
        for (const QString& mask : masks)
            demo.say(u"  "_s + mask);
    }
    demo.expect(
        asMeant,
        u"masked against %1 older and %2 newer words; three characters between are too many"_s
            .arg(words->getSensitiveWordsMap().size())
            .arg(words->getNewSensitiveWordsMap().size()));
}

void Steps::messages(Demo& demo)
{
    ZMessageMgr& messages = ZMessageMgr::getInstance();
    const QString text = messages.getMessageInfoById(u"103"_s).zh_cn;
    demo.say(u"message 103: %1"_s.arg(text));
    const QString filled = text.arg(u"小明"_s, u"星光皇冠"_s, u"3"_s);
    demo.say(u"filled in:   %1"_s.arg(filled));
    QStringList phrases;
    const QVector<ZQuickInputMessageInfo> all =
        ZQuickInputMessageMgr::getInstance().getQuickInputMessages();
    for (const ZQuickInputMessageInfo& phrase : all)
        phrases.append(phrase.item);
    demo.say(u"one click:   %1"_s.arg(phrases.mid(0, 6).join(u" | "_s)));
    demo.expect(filled == u"小明 送出 星光皇冠 x3"_s,
                u"one of %1 messages"_s.arg(messages.getMessagelist().size()));
    demo.expect(!phrases.isEmpty(), u"%1 phrases to send with one click"_s.arg(phrases.size()));
}

void Steps::bubblesAndStickers(Demo& demo)
{
    constexpr int cats = 5;
    ZBubbleConfigMgr& bubbles = ZBubbleConfigMgr::getInstance();
    ZDoutuMgr& stickers = ZDoutuMgr::getInstance();
    const QString id = u"7"_s;
    const ZBubbleConfigInfo bubble = bubbles.getInfoById(id);
    demo.say(u"Bubble %1 has borders of %2; the table of stickers has %3 groups."_s.arg(
        bubble.name, bubble.borderWidths, QString::number(stickers.getMessageMap().size())));
    showPicture(demo, u"background"_s, bubbles.getImagePathAndDownloadById(id));
    showPicture(demo, u"thumbnail"_s, bubbles.getThumbEnableImagePathAndDownloadById(id));
    showPicture(demo, u"first sticker of cats"_s, stickers.getImagePathAndDownloadById(cats, 0));
    showPicture(demo, u"second sticker of cats"_s, stickers.getImagePathAndDownloadById(cats, 1));
    const auto none = settled(stickers.getImagePathAndDownloadById(cats, 99));
    demo.expect(!none.ok, u"a sticker that is not there is refused"_s);
}
