#include "datatable/ZDataTableMgr.h"
#include "effect/ZAwardEffectMgr.h"
#include "effect/ZRecreationMgr.h"
#include "host/ZGlobalConfig.h"
#include "support/Tables.h"

#include <QtTest>

class tst_effect : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZRecreationMgr& m_recreations = ZRecreationMgr::getInstance();

private Q_SLOTS:
    void initTestCase();
    void recreationTypes();
    void recreationAddresses_data();
    void recreationAddresses();
    void awards();
};

void tst_effect::initTestCase()
{
    ZGlobalConfig::getInstance().setConfig(u"ImageResServer"_s, u"http://img"_s);
}

void tst_effect::recreationTypes()
{
    QVERIFY(loadTable<ZRecreationMgr>(
        u"playType id"_s,
        "[['1', 'R1'], null, ['2', 'M1'], ['3', 'W1'], ['4', 'r1'], ['5', 'X1'], "
        "['6', ''], ['7', 'R1'], ['8', 1], ['9']]"));
    const auto ids = [this](int type) {
        return m_recreations.getRecreationIdByTypeKey(recreationType(type)).join(u' ');
    };
    QCOMPARE(ids(1), u"R1 R1"_s);
    QCOMPARE(ids(2), u"M1"_s);
    QCOMPARE(ids(3), u"W1"_s);
    QCOMPARE(ids(0), QString());
    QCOMPARE(ZRecreationMgr::declaration().recordCount(), 5);
    QCOMPARE(m_recreations.getRecreationPlayType(u"R1"_s), u"7"_s);
    QCOMPARE(m_recreations.getRecreationPlayType(u"X1"_s), u"5"_s);

    QVERIFY(loadTable<ZRecreationMgr>(u"name"_s, "[['without id']]"));
    QCOMPARE(m_recreations.getRecreationInfoById(u"M1"_s).id, QString());
    QCOMPARE(ids(2), QString());
}

void tst_effect::recreationAddresses_data()
{
    QTest::addColumn<QString>("flashName");
    QTest::addColumn<QString>("name");
    QTest::newRow("extension") << u"abc.json"_s << u"abc"_s;
    QTest::newRow("two extensions") << u"a.tar.gz"_s << u"a"_s;
    QTest::newRow("no extension") << u"abc"_s << u"abc"_s;
    QTest::newRow("leading dot") << u".abc.json"_s << u".abc.json"_s;
    QTest::newRow("looks like a placeholder") << u"%3.zip"_s << u"%3"_s;
}

void tst_effect::recreationAddresses()
{
    QFETCH(QString, flashName);
    QFETCH(QString, name);
    const QString rows = u"[['R%31', '3', '"_s + flashName + u"']]"_s;
    QVERIFY(loadTable<ZRecreationMgr>(u"id flashVersion flashName"_s, rows.toUtf8()));
    const QString id = u"R%31"_s;
    QCOMPARE(m_recreations.getRecreationAnimationNameById(id), name);
    QCOMPARE(m_recreations.getRecreationAnimationPathById(id),
             QString(u"res/animation//"_s + name + u"_3"_s));
    QCOMPARE(m_recreations.getRecreationAnimationUrlById(id),
             QString(u"http://img/app/logo/magic/"_s + flashName + u"?3"_s));

    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    tables->setTableVersion(EDataTable::RecreationConfigNew, 20, false);
    QCOMPARE(m_recreations.getRecreationImageUrlById(id),
             u"http://img/app/logo/magic/R%31.png?imageView2/0/w/138/h/138&20"_s);
    const QString path = m_recreations.getRecreationImagePathById(id);
    QCOMPARE(path.size(), 11 + 32);
    tables->setTableVersion(EDataTable::RecreationConfigNew, 21, false);
    QVERIFY(m_recreations.getRecreationImagePathById(id) != path);

    for (const QString& unknown : {u"R2"_s, u""_s}) {
        QCOMPARE(m_recreations.getRecreationAnimationNameById(unknown), QString());
        QCOMPARE(m_recreations.getRecreationAnimationPathById(unknown), QString());
        QCOMPARE(m_recreations.getRecreationAnimationUrlById(unknown), QString());
        QCOMPARE(m_recreations.getRecreationImagePathById(unknown), QString());
    }
}

void tst_effect::awards()
{
    ZAwardEffectMgr& awards = ZAwardEffectMgr::getInstance();
    QVERIFY(loadTable<ZAwardEffectMgr>("[{'id': 7, 'icon': '/a.png', 'sort': 90}]"));
    QCOMPARE(awards.getInfoById(u"7"_s).sort, 90);
    QCOMPARE(awards.getIconUrlById(u"7"_s), u"http://img/app/images/activity/effect//a.png"_s);
    QCOMPARE(awards.getIconUrlById(u"8"_s), QString());
}

QTEST_GUILESS_MAIN(tst_effect)

#include "tst_effect.moc"
