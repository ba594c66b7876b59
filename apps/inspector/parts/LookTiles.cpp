#include "inspector/parts/LookTiles.h"

#include "client/ZGlobalClient.h"
#include "effect/ZAwardEffectMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "effect/ZRecreationMgr.h"
#include "inspector/parts/Pictures.h"
#include "privilege/ZNobilityListMgr.h"
#include "privilege/zNoblePrivilegeMgr.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

namespace {

class Words
{
    Q_DECLARE_TR_FUNCTIONS(LookTiles)
};

Moving archive(const QString& name, const QString& folder, const QString& address)
{
    return {name.isEmpty() ? Moving::None : Moving::Archive, name, folder, address};
}

} // namespace

QString LookTiles::comesWith(const QString& rank)
{
    const stNobleConfig config = ZNobilityListMgr::getInstance()->getNobleConfigInfoById(rank);
    QStringList words;
    if (!config.chatSkinList.isEmpty())
        words.append(Words::tr("bubbles %1").arg(config.chatSkinList));
    if (!config.headFrameId.isEmpty())
        words.append(Words::tr("head frame %1").arg(config.headFrameId));
    if (!config.exclusiveCar.isEmpty())
        words.append(config.customCar ? Words::tr("cars %1...").arg(config.exclusiveCar)
                                      : Words::tr("car %1").arg(config.exclusiveCar));
    return words.join(QStringLiteral("; "));
}

QString LookTiles::stateOf(const QString& flash)
{
    if (ZGlobalClient::hasFlash(flash))
        return Words::tr("there");
    const QString failure = ZFlashConfigMgr::getInstance().getFailure(flash);
    return failure.isEmpty() ? Words::tr("missing") : failure;
}

Tile LookTiles::award(const QString& id)
{
    ZAwardEffectMgr& awards = ZAwardEffectMgr::getInstance();
    const ZAwardEffectInfo award = awards.getInfoById(id);
    Tile tile;
    tile.address = awards.getIconUrlById(id);
    tile.path = Pictures::pathOf(tile.address);
    tile.title = award.name;
    tile.below = award.flash;
    if (!ZFlashConfigMgr::getInstance().getMessageMap().contains(award.flash))
        tile.fault = Words::tr("no such flash");
    return tile;
}

Tile LookTiles::recreation(const QString& id)
{
    ZRecreationMgr& recreation = ZRecreationMgr::getInstance();
    Tile tile;
    tile.address = recreation.getRecreationImageUrlById(id);
    tile.path = recreation.getRecreationImagePathById(id);
    tile.title = recreation.getRecreationInfoById(id).name;
    const QVector<QPair<recreationType, QString>> kinds {{E_RecreationGame, Words::tr("game")},
                                                         {E_RecreationMagic, Words::tr("magic")},
                                                         {E_RecreationWish, Words::tr("wish")}};
    for (const auto& kind : kinds) {
        if (recreation.getRecreationIdByTypeKey(kind.first).contains(id))
            tile.below = QStringLiteral("%1, %2").arg(id, kind.second);
    }
    if (tile.below.isEmpty()) {
        tile.below = id;
        tile.fault = Words::tr("of no kind");
    }
    return tile;
}

Tile LookTiles::privilege(const QString& id, int rank)
{
    zNoblePrivilegeMgr& manager = zNoblePrivilegeMgr::getInstance();
    const zNoblePrivilegeInfo privilege = manager.getInfoById(id);
    const int needed = privilege.nobleId.toInt();
    Tile tile;
    tile.path = manager.getIconPathById(id);
    tile.address = manager.getIconUrlById(id);
    tile.title = privilege.name;
    tile.below = Words::tr("from %1").arg(
        ZNobilityListMgr::getInstance()->getNobleConsumeInfoById(needed).nobleName);
    if (!privilege.isOpen)
        tile.fault = Words::tr("not offered");
    else if (rank > 0 && rank < needed)
        tile.fault = Words::tr("not yet");
    return tile;
}

Moving LookTiles::flash(const QString& name)
{
    ZFlashConfigMgr& manager = ZFlashConfigMgr::getInstance();
    return archive(name, manager.getFlashPath(name), manager.getFlashUrl(name));
}

Moving LookTiles::awardFlash(const QString& id)
{
    return flash(ZAwardEffectMgr::getInstance().getInfoById(id).flash);
}

Moving LookTiles::recreationAnimation(const QString& id)
{
    ZRecreationMgr& manager = ZRecreationMgr::getInstance();
    return archive(manager.getRecreationAnimationNameById(id),
                   manager.getRecreationAnimationPathById(id),
                   manager.getRecreationAnimationUrlById(id));
}
