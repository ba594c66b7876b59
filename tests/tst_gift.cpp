#include "gift/ZGiftListMgr.h"
#include "support/Answers.h"
#include "support/Cases.h"

#include <QDateTime>
#include <QtTest>

namespace {

qint64 seconds(const QString& date)
{
    return QDateTime::fromString(date, u"yyyy-MM-dd HH:mm:ss"_s).toSecsSinceEpoch();
}

} // namespace

class tst_gift : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    ZGiftListMgr* m_gifts = ZGiftListMgr::getInstance();
    const QString m_version = QString::number(seconds(u"2026-01-02 03:04:05"_s));

    /** Loads valid gifts that are on sale in the first half of 2026, but for the stated cells. */
    bool load(const QByteArray& gifts)
    {
        QJsonArray rows = jsonOf(gifts);
        for (QJsonValueRef row : rows) {
            QJsonObject gift {{u"valid"_s, true},
                              {u"isVisible"_s, true},
                              {u"startTime"_s, u"2026-01-01 00:00:00"_s},
                              {u"endTime"_s, u"2026-06-30 23:59:59"_s},
                              {u"alterDateTime"_s, u"2026-01-02 03:04:05"_s}};
            const QJsonObject cells = row.toObject();
            for (auto cell = cells.begin(); cell != cells.end(); ++cell)
                gift.insert(cell.key(), cell.value());
            row = gift;
        }
        return loadTable<ZGiftListMgr>(QJsonDocument(rows).toJson());
    }

private Q_SLOTS:
    void init()
    {
        m_gifts->clear();
        ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
    }

    void rows()
    {
        QVERIFY(load("[{'giftId': 'a', 'price': 1}, {'giftId': 'off', 'valid': false}, "
                     "{'giftId': 'number', 'valid': 1}, {'giftId': 'text', 'valid': 'true'}, "
                     "{'giftId': 'b'}, {'giftId': 'a', 'price': 3, 'startTime': '2026/01/01'}]"));
        QStringList ids;
        for (const ZGiftInfo& info : m_gifts->getGiftList())
            ids.append(info.giftId);
        QCOMPARE(ids, QStringList({u"a"_s, u"b"_s, u"a"_s}));
        QCOMPARE(m_gifts->getGiftMap().size(), 2);
        QCOMPARE(m_gifts->getGiftInfoById(u"a"_s).price, 3);
        QCOMPARE(m_gifts->getGiftInfoById(u"a"_s).startTime, QDateTime().toSecsSinceEpoch());
        QCOMPARE(m_gifts->getGiftList().first().startTime, seconds(u"2026-01-01 00:00:00"_s));
        QCOMPARE(m_gifts->getGiftInfoById(u"A"_s).giftId, QString());
        QCOMPARE(m_gifts->getGiftInfoById(u"b"_s).alterDateTime, m_version);
    }

    void specialCells_data() { Cases::rows("gift"); }

    void specialCells()
    {
        QFETCH(QString, column);
        QFETCH(QJsonValue, cell);
        QFETCH(QJsonValue, area);
        const QJsonArray gifts {QJsonObject {{u"giftId"_s, u"g"_s}, {column, cell}}};
        QVERIFY(load(QJsonDocument(gifts).toJson()));
        const ZGiftInfo info = m_gifts->getGiftInfoById(u"g"_s);
        QTEST(info.animScaleRate, "scale");
        int sides[4];
        info.pcIconGeo.getRect(sides, sides + 1, sides + 2, sides + 3);
        QCOMPARE(QJsonArray({sides[0], sides[1], sides[2], sides[3]}), area.toArray());
        QTEST(info.showGiftPanelType, "panel");
        QCOMPARE(info.clientParam, column == u"clientParam"_s ? cell.toString() : QString());
    }

    void animationNames_data() { Cases::rows("gift"); }

    void animationNames()
    {
        QFETCH(QString, name);
        QFETCH(QString, pcName);
        const QString gifts =
            u"[{'giftId': 'g', 'animationName': '%1', 'pcAnimationName': '%2'}]"_s;
        QVERIFY(load(gifts.arg(name, pcName).toUtf8()));
        QTEST(m_gifts->getGiftAnimationNameById(u"g"_s), "expected");
        QCOMPARE(m_gifts->getGiftInfoById(u"g"_s).isPcAnimation, !pcName.isEmpty());
    }

    void validity_data() { Cases::rows("gift"); }

    void validity()
    {
        QFETCH(QString, id);
        QFETCH(QString, date);
        QVERIFY(load("[{'giftId': 'plain'}, {'giftId': 'hidden', 'isVisible': false}, "
                     "{'giftId': 'Annual2024G20', 'isVisible': false}, "
                     "{'giftId': 'annual2024g20', 'isVisible': false}, "
                     "{'giftId': 'at1', 'giftDisplayLocation': 1}, "
                     "{'giftId': 'at2', 'giftDisplayLocation': 2}, "
                     "{'giftId': 'at3', 'giftDisplayLocation': 3}, {'giftId': ''}]"));
        const qint64 time = seconds(date);
        QTEST(m_gifts->checkGiftTimeValid(id, time), "onSale");
        QTEST(m_gifts->checkGiftValidForVote(id, time), "onSale");
        QTEST(m_gifts->checkGiftValid(id, time, false, true), "visible");
        QTEST(m_gifts->checkGiftValid(id, time, true, false), "inPanel");
    }

    void answers_data() { Cases::rows("gift"); }

    void answers()
    {
        QFETCH(QJsonValue, lines);
        const QString text = textOf(lines).replace(u"VERSION"_s, m_version);
        Answers({Z_ANSWER(ZGiftListMgr, checkGiftFamilyEq),
                 Z_ANSWER(ZGiftListMgr, checkShowTabEq),
                 Z_ANSWER(ZGiftListMgr, getAllAnimationName),
                 Z_ANSWER(ZGiftListMgr, getGiftAnimationPathByAniName),
                 Z_ANSWER(ZGiftListMgr, getGiftAnimationPathById),
                 Z_ANSWER(ZGiftListMgr, getGiftAnimationUrlByAniName),
                 Z_ANSWER(ZGiftListMgr, getGiftAnimationUrlById),
                 Z_ANSWER(ZGiftListMgr, getGiftBGAndAnimationPathById),
                 Z_ANSWER(ZGiftListMgr, getGiftBGAnimationPathById),
                 Z_ANSWER(ZGiftListMgr, getGiftBGAnimationUrlById),
                 Z_ANSWER(ZGiftListMgr, getGiftBGImageUrlById),
                 Z_ANSWER(ZGiftListMgr, getGiftImagePathById),
                 Z_ANSWER(ZGiftListMgr, getGiftImageUrlById),
                 Z_ANSWER(ZGiftListMgr, getGiftShowTabIconPathById),
                 Z_ANSWER(ZGiftListMgr, getGiftShowTabIconUrlById),
                 {u"labelStartTime"_s,
                  Answers::of(&ZGiftListMgr::getGiftInfoById, &ZGiftInfo::labelStartTime)},
                 {u"maxGiftGroup"_s,
                  Answers::of(&ZGiftListMgr::getGiftInfoById, &ZGiftInfo::maxGiftGroup)},
                 {u"animScaleRate"_s,
                  Answers::of(&ZGiftListMgr::getGiftInfoById, &ZGiftInfo::animScaleRate)}})
            .check(QJsonDocument::fromJson(text.toUtf8()).array());
    }
};

QTEST_GUILESS_MAIN(tst_gift)

#include "tst_gift.moc"
