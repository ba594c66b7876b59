#include "privilege/ZFansConfigMgr.h"
#include "privilege/ZNobilityListMgr.h"
#include "privilege/zFirstRechargeBox.h"
#include "privilege/zNoblePrivilegeMgr.h"
#include "support/Answers.h"
#include "support/Cases.h"

#include <QDateTime>
#include <QtTest>

/** Ranks of nobility, their privileges, the boxes for a first recharge, and fans tiers. */
class tst_privilege : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;

private Q_SLOTS:
    void answers_data() { Cases::rows("privilege"); }

    void answers()
    {
        QFETCH(QJsonValue, lines);
        ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
        const std::function ranks([] {
            QJsonArray ids;
            for (const int id : ZNobilityListMgr::getInstance()->getListNobleId())
                ids.append(id);
            return ids;
        });
        zFirstRechargeBox& boxes = zFirstRechargeBox::getInstance();
        const std::function boxStarts([&](const QString& id) {
            const qint64 seconds = boxes.getInfoById(id).startTime;
            return QDateTime::fromSecsSinceEpoch(seconds).toString(Qt::ISODate);
        });
        const std::function firstBox([&] { return boxes.getList().first().id; });
        ZFansConfigMgr& fans = ZFansConfigMgr::getInstance();
        const std::function tierFor([&](int category, const QString& diamond) {
            return fans.getInfoByCategoryAndDiamond(category, diamond).id;
        });
        const std::function tiersOf([&](int category) {
            QStringList ids;
            for (const zFansInfo& info : fans.getListByCategory(category))
                ids.append(info.id);
            return ids;
        });
        const std::function isHighest([&](const QString& category, const QString& diamond) {
            zFansInfo info;
            info.category = category;
            info.diamond = diamond;
            return fans.isHighestTierFans(info);
        });
        Answers(
            {{u"ranks with prices"_s, Answers::of(ranks)},
             {u"nobleName"_s,
              Answers::of(&ZNobilityListMgr::getNobleConsumeInfoById,
                          &ZNobleConsumeInfo::nobleName)},
             {u"upgradeReturnDiamond"_s,
              Answers::of(&ZNobilityListMgr::getNobleConsumeInfoById,
                          &ZNobleConsumeInfo::upgradeReturnDiamond)},
             {u"chatSkinList"_s,
              Answers::of(&ZNobilityListMgr::getNobleConfigInfoById, &stNobleConfig::chatSkinList)},
             Z_ANSWER(ZNobilityListMgr, isExclusiveCar),
             Z_ANSWER(ZNobilityListMgr, isLogoHeadFrame),
             {u"isOpen"_s,
              Answers::of(&zNoblePrivilegeMgr::getInfoById, &zNoblePrivilegeInfo::isOpen)},
             Z_ANSWER(zNoblePrivilegeMgr, getIconUrlById),
             Z_ANSWER(zNoblePrivilegeMgr, getIconPathById),
             {u"rewards"_s,
              Answers::of(&zFirstRechargeBox::getInfoById, &zFirstRechargeBoxInfo::rewards)},
             {u"amount"_s,
              Answers::of(&zFirstRechargeBox::getInfoById, &zFirstRechargeBoxInfo::amount)},
             {u"box starts"_s, Answers::of(boxStarts)},
             {u"first box"_s, Answers::of(firstBox)},
             Z_ANSWER(zFirstRechargeBox, getPictureUrlById),
             Z_ANSWER(zFirstRechargeBox, getPicturePathById),
             {u"tier name"_s, Answers::of(&ZFansConfigMgr::getInfoById, &zFansInfo::name)},
             {u"tier for"_s, Answers::of(tierFor)},
             {u"tiers of"_s, Answers::of(tiersOf)},
             {u"isHighest"_s, Answers::of(isHighest)}})
            .check(lines.toArray());
    }
};

QTEST_GUILESS_MAIN(tst_privilege)

#include "tst_privilege.moc"
