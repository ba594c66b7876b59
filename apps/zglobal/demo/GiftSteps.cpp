#include "demo/Demo.h"
#include "demo/Steps.h"

#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Wait.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"

#include <QDateTime>
#include <QFile>

void Steps::giftsOnSale(Demo& demo)
{
    constexpr int shown = 12;
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    TextTable table({u"gift"_s, u"name"_s, u">price"_s, u"animation folder, picture address"_s});
    QStringList pictures;
    int onSale = 0;
    int withAnimation = 0;
    const QVector<ZGiftInfo> all = gifts->getGiftList();
    for (const ZGiftInfo& gift : all) {
        if (!gifts->checkGiftValid(gift.giftId, now, true, true))
            continue;
        ++onSale;
        // The first gifts of the table are the cheap ones, which have no animation.
        if (gift.animationName.isEmpty() || ++withAnimation > shown)
            continue;
        table.add({gift.giftId, gift.giftName, QString::number(gift.price),
                   gifts->getGiftAnimationPathById(gift.giftId)});
        pictures.append(demo.shortened(gifts->getGiftImageUrlById(gift.giftId)));
    }
    QStringList lines = table.lines();
    for (int i = 0; i < pictures.size(); ++i)
        lines.insert(2 * i + 2, u"       "_s + pictures.at(i));
    demo.say(lines);
    demo.say(u"... and %1 more."_s.arg(onSale - pictures.size()));
    demo.expect(onSale > shown && onSale < all.size() && withAnimation > shown,
                u"%1 of %2 gifts may be sent now"_s.arg(QString::number(onSale),
                                                        QString::number(all.size())));
}

void Steps::giftPicture(Demo& demo)
{
    const QString id = u"G1014"_s;
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const QString path = gifts->getGiftImagePathById(id);
    const QString address = gifts->getGiftImageUrlById(id);
    const auto download = settled(ZDataTableMgr::getInstance()->downloadFile(path, address, true));
    demo.say(u"%1 of %2"_s.arg(demo.shortened(address), gifts->getGiftNameById(id)));
    demo.say(u"is stored as %1"_s.arg(path));
    QFile stored(path);
    QFile published(demo.content() + u"/app/logo/gift/"_s + id);
    const bool same = stored.open(QIODevice::ReadOnly) && published.open(QIODevice::ReadOnly)
        && stored.size() > 0 && stored.readAll() == published.readAll();
    demo.expect(download.ok && download.value == path && same,
                u"the picture is there, %1, byte for byte"_s.arg(Readable::size(stored.size())));
    const int before = demo.server().requests();
    const auto again = settled(ZDataTableMgr::getInstance()->downloadFile(path, address, true));
    demo.expect(again.ok && demo.server().requests() == before,
                u"asked for again, it is taken from the disk"_s);
}
