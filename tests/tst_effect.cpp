#include "effect/ZAwardEffectMgr.h"
#include "effect/ZRecreationMgr.h"
#include "support/Answers.h"
#include "support/Cases.h"

#include <QtTest>

class tst_effect : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;

private Q_SLOTS:
    void answers_data() { Cases::rows("effect"); }

    void answers()
    {
        QFETCH(QJsonValue, lines);
        ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
        const std::function count([] { return ZRecreationMgr::declaration().recordCount(); });
        Answers(
            {Z_ANSWER(ZRecreationMgr, getRecreationIdByTypeKey),
             {u"recordCount"_s, Answers::of(count)},
             Z_ANSWER(ZRecreationMgr, getRecreationPlayType),
             {u"id"_s, Answers::of(&ZRecreationMgr::getRecreationInfoById, &recreationInfo::id)},
             Z_ANSWER(ZRecreationMgr, getRecreationAnimationNameById),
             Z_ANSWER(ZRecreationMgr, getRecreationAnimationPathById),
             Z_ANSWER(ZRecreationMgr, getRecreationAnimationUrlById),
             Z_ANSWER(ZRecreationMgr, getRecreationImageUrlById),
             Z_ANSWER(ZRecreationMgr, getRecreationImagePathById),
             {u"sort"_s, Answers::of(&ZAwardEffectMgr::getInfoById, &ZAwardEffectInfo::sort)},
             Z_ANSWER(ZAwardEffectMgr, getIconUrlById)})
            .check(lines.toArray());
    }
};

QTEST_GUILESS_MAIN(tst_effect)

#include "tst_effect.moc"
