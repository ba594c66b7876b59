#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZDoutuMgr.h"
#include "chat/ZGroupWelcomelMgr.h"
#include "datatable/DeclaredTable.h"
#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "effect/ZRecreationMgr.h"
#include "gift/ZGiftListMgr.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZPCSkinMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "privilege/ZFansConfigMgr.h"
#include "support/Tables.h"

#include <QtTest>

#include <climits>

#define MANAGER(M, ...)                                                                            \
    {                                                                                              \
        &managerAt(M::getInstance()), [] { managerAt(M::getInstance()).clear(); },                 \
            [&m = managerAt(M::getInstance())](const QString& id, int n) {                         \
                return void(id), void(n), QJsonArray {__VA_ARGS__};                                \
            }                                                                                      \
    }

class tst_interface : public QObject
{
    Q_OBJECT

    struct Manager
    {
        QObject* object;
        std::function<void()> clear;
        std::function<QJsonArray(const QString&, int)> ask;
    };

    ZTestFolder m_folder;
    const Manager* m_manager = nullptr;
    int m_calls = 0;

    /** Those that do more than look a record up by its id; of each kind of answer one. */
    const QVector<Manager> m_managers {
        MANAGER(ZGiftListMgr, m.getGiftInfoById(id).giftId, m.getGiftImagePathById(id),
                m.getGiftAnimationPathByAniName(id, id), m.getGiftBGAndAnimationPathById(id),
                m.isGiftInvalid(id), m.checkGiftValid(id, n, true, true)),
        MANAGER(ZFunLevelMgr, m.getLevelNameByLevel(n, true), m.getLevelByLevelName(id),
                m.getMaxLevel(), m.getLocalFunLevelNumberPathById(n)),
        MANAGER(ZImageFrameInfoListMgr, m.getEffectiveIconAt(n, QTime()),
                m.getEffectiveFlashById(n), m.getEffectiveFramePathById(n)),
        MANAGER(ZBubbleConfigMgr, m.getImagePathAndDownloadById(id).isPending(),
                m.getChatPathById(id)),
        MANAGER(ZDoutuMgr, m.getImagePathAndDownloadById(n, n).isPending(),
                m.getImagePathById(0, n)),
        MANAGER(ZGroupWelcomelMgr, m.getRandWelcome()),
        MANAGER(ZBannerMgr, (m.sortListByWeight(n > 0), m.loadBannerImages(), 0),
                m.getBannerImagePathById(n), m.bannerCefPage(id), m.getMissingImageUrls().size(),
                m.getList(true).size(), m.getList(false).size()),
        MANAGER(ZPCSkinMgr, (m.loadPCSkinImages(), 0), m.getSkinPath(ZPCSkinMgr::E_SkinLocate(n))),
        MANAGER(ZSystemConfigMgr, m.getInfoByDefine(E_SysConfigDefine(n)).id, m.isConfigData(id)),
        MANAGER(ZFansConfigMgr, m.getListByCategory(n).size(),
                m.getInfoByCategoryAndDiamond(n, id).id, m.isHighestTierFans(m.getInfoById(id))),
        MANAGER(ZFlashConfigMgr, m.getFlashPath(id), m.getFailure(id), m.isPresent(id),
                m.getAllFlashName().size()),
        MANAGER(ZRecreationMgr, m.getRecreationIdByTypeKey(recreationType(n)).size(),
                m.getRecreationPlayType(id))};

public Q_SLOTS:
    /** What a slot of the host's may do while a manager loads. */
    void callBack()
    {
        if (++m_calls < 10) // some lookups end in the same signal
            m_manager->ask(u"1"_s, 1), m_manager->clear(), m_manager->ask(u"1"_s, 1);
    }

private:
    QString answers() const
    {
        QJsonArray all;
        for (const int number : {0, 1, -1, INT_MIN, INT_MAX})
            for (const QString& text : {QString(), u"1"_s, u"%1%2\0"_s, QString(1 << 14, u'x')})
                all += m_manager->ask(text, number);
        return textOf(all);
    }

private Q_SLOTS:
    void anyCall_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < m_managers.size(); ++i)
            QTest::newRow(m_managers[i].object->metaObject()->className()) << i;
    }

    void anyCall()
    {
        QFETCH(int, index);
        m_manager = &m_managers[index];
        m_calls = 0;
        const QString nothing = answers();
        const QMetaObject& meta = *m_manager->object->metaObject();
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                connect(m_manager->object, meta.method(i), this,
                        metaObject()->method(metaObject()->indexOfSlot("callBack()")));
        const QByteArray row = "[" + QByteArray("'1',").repeated(99) + "1]";
        const QByteArray rows = "[" + row + ", null, [], " + row + "]";
        const auto tables = ZDataTableMgr::getInstance()->getTableStatuses();
        for (const TableStatus& table : tables + tables) {
            if (table.manager != QLatin1String(meta.className()))
                continue;
            QVERIFY(table.declaration->load(tableOf(columnsOf(*table.declaration), rows)));
            answers();
        }
        m_manager->clear();
        m_manager->clear();
        QCOMPARE(answers(), nothing);
    }
};

QTEST_GUILESS_MAIN(tst_interface)

#include "tst_interface.moc"
