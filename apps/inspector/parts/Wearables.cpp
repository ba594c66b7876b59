#include "inspector/parts/Wearables.h"

#include "client/ZGlobalClient.h"
#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageCarInfoListMgr.h"
#include "decoration/ZMedalMgr.h"
#include "decoration/ZUserStampMgr.h"
#include "decoration/zFunStampMgr.h"
#include "inspector/parts/Pictures.h"
#include "why/RawTable.h"
#include "why/Subjects.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>

namespace {

using Wearables::Wearable;

class Words
{
    Q_DECLARE_TR_FUNCTIONS(Wearables)
};

Wearable wearable(const QString& table, const QString& key, const QString& name)
{
    Wearable made;
    made.tile.title = name;
    made.explanation.subject = {QString(), table, key, name};
    made.explanation.holds = true;
    made.explanation.verdict = QStringLiteral("%1 “%2”").arg(key, name);
    made.explanation.origins.append(Why::originOf(Why::statusOf(table)));
    return made;
}

void tell(Wearable& of, const QString& what, const QString& value)
{
    if (!value.isEmpty())
        of.explanation.remarks.append({what, value});
}

void setPicture(Wearable& of, const QString& path, const QString& address)
{
    of.tile.path = path;
    of.tile.address = address;
    of.explanation.resources.append(
        path.isEmpty() ? Why::noResource(Words::tr("picture"), Words::tr("none is named"))
                       : Why::resourceAt(Words::tr("picture"), path, address));
}

QString periodOf(qint64 start, qint64 end)
{
    const auto text = [](qint64 seconds) {
        return seconds == 0 ? QStringLiteral("…")
                            : QDateTime::fromSecsSinceEpoch(seconds).toString(
                                QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    };
    return start == 0 && end == 0 ? QString()
                                  : QStringLiteral("%1 – %2").arg(text(start), text(end));
}

/** Why a thing with a period is not to be had now. */
QString faultNow(qint64 start, qint64 end)
{
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const auto day = [](qint64 seconds) {
        return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd"));
    };
    if (start > now)
        return Words::tr("from %1").arg(day(start));
    return end != 0 && end < now ? Words::tr("until %1").arg(day(end)) : QString();
}

/** The badge of the level's table, which a client takes where it brings none along. */
QString badgeAddress(const stFunLevelItem& item)
{
    QString server = ZGlobalClient::configuration(QStringLiteral("ImageResServer"));
    if (item.bigIconName.isEmpty() || server.isEmpty())
        return {};
    if (!server.endsWith(u'/'))
        server += u'/';
    return server + QStringLiteral("rn/level/funlevel/") + item.bigIconName;
}

} // namespace

Wearables::Wearable Wearables::level(const QString& key)
{
    ZFunLevelMgr* levels = ZFunLevelMgr::getInstance();
    const int level = key.toInt();
    const stFunLevelItem item = levels->getFunLevelItem(level);
    Wearable made =
        wearable(QStringLiteral("CS_PlatFunLevel"), key, levels->getFunLevelNameById(level));
    made.tile.below = Words::tr("from %1").arg(QLocale().toString(item.exp));
    made.tile.badge = key;
    made.tile.badgeStart = QColor(item.levelBackgroundColor);
    made.tile.badgeEnd = QColor(item.levelBackgroundColor);
    // What the client brings along is shown where it has been put into the folder.
    const QString local = levels->getLocalFunLevelImagePathById(level);
    if (QFileInfo(local).isFile())
        setPicture(made, local, QString());
    else
        setPicture(made, Pictures::pathOf(badgeAddress(item)), badgeAddress(item));
    made.explanation.resources.append(
        Why::resourceAt(Words::tr("badge that comes with the client"), local, QString()));
    const QString own = levels->getFunLevelImagePathById(level);
    if (!item.iconName.isEmpty())
        made.explanation.resources.append(
            Why::resourceAt(Words::tr("the level's own"), own, QString()));
    tell(made, Words::tr("the ladder's title"), levels->getFunLevelNameById(level));
    tell(made, Words::tr("the table's title"), levels->getLevelNameByLevel(level, false));
    tell(made, Words::tr("experience"), QLocale().toString(item.exp));
    tell(made, Words::tr("ingots"), QLocale().toString(item.ingots));
    tell(made, Words::tr("car"), item.carId);
    tell(made, Words::tr("badge's animation"), levels->getFunLevelFlashUrlById(level));
    return made;
}

Wearables::Wearable Wearables::medal(const QString& key)
{
    ZMedalMgr* medals = ZMedalMgr::getInstance();
    const ZMedalInfo info = medals->getMedalMap().value(key);
    Wearable made = wearable(QStringLiteral("CS_MedalList"), key, info.name);
    const QString moving = medals->getMedalDynamicUrlById(key);
    made.tile.below = Words::tr("group %1").arg(info.groupId);
    setPicture(made, medals->getMedalImagePathById(key), medals->getMedalImageUrlById(key));
    if (!moving.isEmpty()) {
        made.tile.badge = Words::tr("moves");
        made.tile.badgeStart = QColor(0x30, 0x70, 0xC0);
        made.tile.badgeEnd = QColor(0x70, 0x50, 0xC0);
        made.moving = {Moving::Picture, QFileInfo(info.dynamicUrl).fileName(),
                       Pictures::pathOf(moving), moving};
        made.explanation.resources.append(
            Why::resourceAt(Words::tr("moving picture"), made.moving.path, moving));
    }
    tell(made, Words::tr("description"), info.description);
    tell(made, Words::tr("group, place in it"),
         QStringLiteral("%1, %2").arg(info.groupId).arg(info.groupSort));
    tell(made, Words::tr("size"), info.size);
    return made;
}

Wearables::Wearable Wearables::car(const QString& key)
{
    ZImageCarInfoListMgr* cars = ZImageCarInfoListMgr::getInstance();
    const ZImageCarInfo info = cars->getInfoById(key);
    Wearable made = wearable(QStringLiteral("CS_CarList"), key, info.name);
    const QString price = QLocale().toString(info.price);
    made.tile.below = info.price == 0 ? Words::tr("not sold") : price;
    made.tile.fault = faultNow(info.startTime, info.endTime);
    setPicture(made, cars->getCarImagePathById(key), cars->getCarImageUrlById(key));
    if (!info.animation.isEmpty()) {
        made.moving = {Moving::Archive, info.animation, cars->getCarAnimationPathById(key),
                       cars->getCarAnimationUrlById(key)};
        made.explanation.resources.append(
            Why::resourceAt(Words::tr("animation"), made.moving.path, made.moving.address));
    }
    tell(made, Words::tr("description"), info.description);
    tell(made, Words::tr("price"),
         info.price == 0 ? Words::tr("not sold") : Words::tr("%1 diamonds").arg(price));
    tell(made, Words::tr("on sale"), periodOf(info.startTime, info.endTime));
    return made;
}

Wearables::Wearable Wearables::stamp(const QString& key)
{
    ZUserStampMgr* stamps = ZUserStampMgr::getInstance();
    const ZUserStampInfo info = stamps->getInfoById(key);
    Wearable made = wearable(QStringLiteral("StampName"), key, info.name);
    made.tile.below = Words::tr("%1 s").arg(info.duration);
    setPicture(made, stamps->getStampImagePathById(key), stamps->getStampImageUrlById(key));
    tell(made, Words::tr("stays for"), made.tile.below);
    return made;
}

Wearables::Wearable Wearables::funStamp(const QString& key)
{
    zFunStampMgr& stamps = zFunStampMgr::getInstance();
    const zFunStampInfo info = stamps.getInfoById(key);
    Wearable made = wearable(QStringLiteral("CS_FunStamp"), key, info.name);
    made.tile.below = info.activityId;
    made.tile.fault = faultNow(info.startTime, info.endTime);
    setPicture(made, stamps.getFunStampImagePathById(key), stamps.getFunStampImageUrlById(key));
    tell(made, Words::tr("activity"), info.activityId);
    tell(made, Words::tr("worn"), periodOf(info.startTime, info.endTime));
    return made;
}
