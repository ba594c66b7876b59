#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "chat/ZMessageMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "datatable/ZDataTableMgr.h"
#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageCarInfoListMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "decoration/ZMedalMgr.h"
#include "decoration/ZUserStampMgr.h"
#include "decoration/zFunStampMgr.h"
#include "effect/ZActivityAwardEffectMgr.h"
#include "effect/ZAwardEffectMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "effect/ZRecreationMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "gift/ZGiftListMgr.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/ZPCSkinMgr.h"
#include "presentation/ZPublicConfigMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "privilege/ZFansConfigMgr.h"
#include "privilege/ZNobilityListMgr.h"
#include "privilege/zFirstRechargeBox.h"
#include "privilege/zNoblePrivilegeMgr.h"
#include "support/Tables.h"

#include <QtTest>

#include <climits>

namespace {

/** A manager and all its lookups, for one text and one number, joined to one answer. */
struct Manager
{
    QString name;
    QObject* object;
    std::function<void()> clear;
    std::function<QString(const QString&, int)> ask;
};

template <class M, class = void>
struct Clearing
{
    static void clear(M&) { }
};
template <class M>
struct Clearing<M, std::void_t<decltype(std::declval<M&>().clear())>>
{
    static void clear(M& manager) { manager.clear(); }
};

template <class M, class Ask>
Manager managed(M& manager, Ask ask)
{
    return {QString::fromLatin1(M::staticMetaObject.className()), &manager,
            [&] { Clearing<M>::clear(manager); },
            [&, ask](const QString& id, int n) { return ask(manager, id, n); }};
}
template <class M, class Ask>
Manager managed(M* manager, Ask ask)
{
    return managed(*manager, ask);
}

/** "1" for every answer that is not the one of a lookup that finds nothing. */
QString unless(std::initializer_list<bool> empty)
{
    QString answer;
    for (const bool each : empty)
        answer += each ? QString() : u"1"_s;
    return answer;
}

#define ASK [](auto& m, const QString& id, int n) -> QString
// clang-format off
QVector<Manager> managers()
{
    using Time = QTime;
    return {
        managed(ZGiftListMgr::getInstance(), ASK { Q_UNUSED(n)
            m.getGiftImageUrlById(id);
            m.getGiftImagePathById(id);
            return m.getGiftInfoById(id).giftId + m.getGiftNameById(id) + m.getGiftAnimationNameById(id) + m.getGiftAnimationPathById(id)
                + m.getGiftAnimationUrlById(id) + m.getGiftBGAndAnimationPathById(id)
                + m.getGiftBGAndAnimationUrlById(id) + m.getGiftBGAnimationPathById(id)
                + m.getGiftBGAnimationUrlById(id) + m.getGiftBGImageUrlById(id)
                + m.getGiftShowTabIconPathById(id) + m.getGiftShowTabIconUrlById(id)
                + unless({m.getAllAnimationName().isEmpty(), m.isGiftInvalid(id), !m.checkGiftTimeValid(id, n),
                          !m.checkGiftValidForVote(id, n), !m.checkGiftValid(id, n, true, true),
                          !m.checkGiftFamilyEq(id, n), !m.checkShowTabEq(id, n)}); }),
        managed(ZGiftLabelMgr::getInstance(), ASK { Q_UNUSED(n)
            return unless({m.getGiftLabelMap().isEmpty(), (m.getInfoById(id), true)}); }),
        managed(ZFunLevelMgr::getInstance(), ASK {
            m.getLevelNameByLevel(n, true); // has a name for every level
            m.getFunLevelNameById(n);
            return m.getFunLevelFlashUrlById(n) + unless({m.getLevelByLevelName(id) == 0, m.getMaxLevel() == 200, (m.getFunLevelItem(n), true),
                          (m.getLocalFunLevelImagePathById(n), m.getLocalFunLevelNumberPathById(n), true),
                          (m.getFunLevelImagePathById(n), true)}); }),
        managed(ZImageCarInfoListMgr::getInstance(), ASK { Q_UNUSED(n)
            return m.getCarImageUrlById(id) + m.getCarImagePathById(id) + m.getCarAnimationUrlById(id)
                + m.getCarAnimationPathById(id) + unless({m.getImageCarMap().isEmpty(), (m.getInfoById(id), true)}); }),
        managed(ZImageFrameInfoListMgr::getInstance(), ASK { Q_UNUSED(id)
            return m.getEffectiveIconById(n) + m.getEffectiveIconAt(n, Time()) + m.getEffectiveFlashById(n)
                + m.getEffectiveFlashAt(n, Time(0, 0)) + m.getFramePathById(n) + m.getFrameUrlById(n)
                + m.getEffectiveFramePathById(n) + m.getEffectiveFrameUrlById(n)
                + unless({m.getInfoById(n).headFrameId == 0, !m.getCurrentPeriodStartTime(n).isValid()}); }),
        managed(ZMedalMgr::getInstance(), ASK { Q_UNUSED(n)
            m.getMedalImageUrlById(id);
            m.getMedalImagePathById(id);
            m.getShouHuMedalImagePathById(id);
            return m.getMedalNameById(id) + m.getMedalDynamicUrlById(id) + m.getMedalInfoById(id)
                + unless({m.getMedalJsonInfoById(id).isEmpty()}); }),
        managed(ZUserStampMgr::getInstance(), ASK { Q_UNUSED(n)
            return m.getStampImageUrlById(id) + m.getStampImagePathById(id) + unless({(m.getInfoById(id), true)}); }),
        managed(zFunStampMgr::getInstance(), ASK { Q_UNUSED(n)
            return m.getFunStampImageUrlById(id) + m.getFunStampImagePathById(id) + unless({(m.getInfoById(id), true)}); }),
        managed(ZBubbleConfigMgr::getInstance(), ASK { Q_UNUSED(n)
            m.getImagePathAndDownloadById(id);
            m.getThumbEnableImagePathAndDownloadById(id);
            m.getImageUrlById(id);
            m.getChatUrlById(id);
            m.getThumbEnableUrlById(id);
            m.getImagePathById(id);
            m.getChatPathById(id);
            m.getThumbEnableImagePathById(id);
            return unless({m.getMessageList().isEmpty()}); }),
        managed(ZDoutuMgr::getInstance(), ASK { Q_UNUSED(id)
            m.getImagePathAndDownloadById(n, n);
            return m.getImageUrlById(n, n) + m.getImageUrlById(0, n) + m.getImagePathById(n, n)
                + unless({m.getMessageMap().isEmpty()}); }),
        managed(ZGroupWelcomelMgr::getInstance(), ASK { Q_UNUSED(id) Q_UNUSED(n)
            return m.getRandWelcome() + unless({m.getWelcomeList().isEmpty()}); }),
        managed(ZMessageMgr::getInstance(), ASK { Q_UNUSED(n)
            return unless({m.getMessagelist().isEmpty(), (m.getMessageInfoById(id), m.getMessageTabType(id), true)}); }),
        managed(ZQuickInputMessageMgr::getInstance(), ASK { Q_UNUSED(id) Q_UNUSED(n)
            return unless({m.getQuickInputMessages().isEmpty()}); }),
        managed(ZSensitiveWordsInfoListMgr::getInstance(), ASK { Q_UNUSED(n)
            return unless({m.sensitiveWordsCheck(id) == id, m.explainSensitiveWords(id).isEmpty(),
                           m.getSensitiveWordsMap().isEmpty(), m.getNewSensitiveWordsMap().isEmpty()}); }),
        managed(ZBannerMgr::getInstance(), ASK {
            m.sortListByWeight(n > 0);
            m.loadBannerImages();
            return m.getBannerImageUrlById(n) + m.getBannerImagePathById(n) + m.bannerCefPage(id)
                + unless({m.getMissingImageUrls().isEmpty(), m.getList(true).isEmpty(), m.getList(false).isEmpty()}); }),
        managed(ZOtherBannerMgr::getInstance(), ASK { Q_UNUSED(n)
            return m.otherBannerCefPage(id) + unless({m.getList().isEmpty(), !m.otherBannerIsByCef(id)}); }),
        managed(ZPCSkinMgr::getInstance(), ASK { Q_UNUSED(id)
            m.loadPCSkinImages();
            m.getSkinPath(ZPCSkinMgr::E_SkinLocate(n));
            return m.getSkinUrl(ZPCSkinMgr::E_SkinLocate(n)); }),
        managed(ZPublicConfigMgr::getInstance(), ASK {
            m.getInfoByDefine(ZPublicConfigMgr::EPublicConfitType(n));
            return unless({(m.getInfoById(id), true)}); }),
        managed(ZSystemConfigMgr::getInstance(), ASK {
            return unless({(m.getInfoById(id), m.getInfoByDefine(E_SysConfigDefine(n)), true), !m.isConfigData(id)}); }),
        managed(zH5WebConfigMgr::getInstance(), ASK {
            return m.getURLByDefine(E_H5WebConfigDefine(n)) + m.getAppURLByDefine(E_H5WebConfigDefine(n), id); }),
        managed(ZFansConfigMgr::getInstance(), ASK {
            const zFansInfo info = m.getInfoById(id);
            return unless({m.getListByCategory(n).isEmpty(), (m.getInfoByCategoryAndDiamond(n, id), true),
                           (m.isHighestTierFans(info), true)}); }),
        managed(ZNobilityListMgr::getInstance(), ASK {
            return unless({m.getListNobleId().isEmpty(), !m.isExclusiveCar(id), !m.isLogoHeadFrame(id),
                           (m.getNobleConsumeInfoById(n), m.getNobleConfigInfoById(id), true)}); }),
        managed(zNoblePrivilegeMgr::getInstance(), ASK { Q_UNUSED(n)
            return m.getIconUrlById(id) + m.getIconPathById(id)
                + unless({m.getList().isEmpty(), (m.getInfoById(id), true)}); }),
        managed(zFirstRechargeBox::getInstance(), ASK { Q_UNUSED(n)
            return m.getPictureUrlById(id) + m.getPicturePathById(id)
                + unless({m.getList().isEmpty(), (m.getInfoById(id), true)}); }),
        managed(ZActivityAwardEffectMgr::getInstance(), ASK { Q_UNUSED(n)
            return unless({(m.getInfoById(id), true)}); }),
        managed(ZAwardEffectMgr::getInstance(), ASK { Q_UNUSED(n)
            return m.getIconUrlById(id) + unless({(m.getInfoById(id), true)}); }),
        managed(ZFlashConfigMgr::getInstance(), ASK { Q_UNUSED(n)
            m.getFlashPath(id);
            m.getFlashUrl(id);
            return m.getFailure(id) + unless({m.getAllFlashName().isEmpty(), !m.isPresent(id)}); }),
        managed(ZRecreationMgr::getInstance(), ASK {
            return m.getRecreationPlayType(id) + m.getRecreationAnimationNameById(id)
                + m.getRecreationAnimationPathById(id) + m.getRecreationAnimationUrlById(id)
                + m.getRecreationImageUrlById(id) + m.getRecreationImagePathById(id)
                + unless({m.getRecreationIdByTypeKey(recreationType(n)).isEmpty(),
                          (m.getRecreationInfoById(id), true)}); }),
    };
}
// clang-format on
#undef ASK

/** Whoever calls these managers cannot make them fail. */
class Caller : public QObject
{
    Q_OBJECT

public:
    const Manager* manager = nullptr;
    int calls = 0;

public Q_SLOTS:
    /** What a slot of the host's may do while the manager loads. */
    void callBack()
    {
        if (++calls > 10)
            return; // some lookups end in the same signal
        manager->ask(u"1"_s, 1);
        manager->clear();
        manager->ask(u"1"_s, 1);
    }
};

} // namespace

class tst_interface : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    const QVector<Manager> m_managers = managers();

private Q_SLOTS:
    void anyCall_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < m_managers.size(); ++i)
            QTest::newRow(qPrintable(m_managers.at(i).name)) << i;
    }

    void anyCall()
    {
        QFETCH(int, index);
        const Manager& manager = m_managers.at(index);
        const auto answersNothing = [&] {
            QString all;
            for (const int number : {0, 1, -1, INT_MIN, INT_MAX})
                for (const QString& text : {QString(), u"1"_s, u"%1%2\0"_s, QString(1 << 14, u'x')})
                    all += manager.ask(text, number).left(40);
            return all;
        };
        QCOMPARE(answersNothing(), QString());
        Caller caller;
        caller.manager = &manager;
        const QMetaObject& meta = *manager.object->metaObject();
        const QMetaMethod slot =
            caller.metaObject()->method(caller.metaObject()->indexOfSlot("callBack()"));
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                connect(manager.object, meta.method(i), &caller, slot);
        }
        for (const TableStatus& table : ZDataTableMgr::getInstance()->getTableStatuses()) {
            if (table.manager != manager.name)
                continue;
            const QByteArray row = "[" + QByteArray("'1',").repeated(99) + "1]";
            const QString path =
                tableOf(columnsOf(*table.declaration), "[" + row + ", null, [], " + row + "]");
            for (int load = 0; load < 2; ++load) {
                QVERIFY(table.declaration->load(path));
                answersNothing();
            }
        }
        manager.clear();
        manager.clear();
        // One has no such call, the other empties the older of its lists alone.
        if (manager.name != u"zH5WebConfigMgr"_s && !manager.name.startsWith(u"ZSensitive"_s))
            QCOMPARE(answersNothing(), QString());
    }
};

QTEST_GUILESS_MAIN(tst_interface)

#include "tst_interface.moc"
