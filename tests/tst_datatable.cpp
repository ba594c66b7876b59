#include "chat/ZGroupWelcomelMgr.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"
#include "support/CacheName.h"
#include "support/Cases.h"
#include "support/LogLines.h"
#include "support/Patience.h"
#include "support/Tables.h"

#include <QDir>
#include <QTimer>
#include <QtTest>

using Table = EDataTable;

/** Versions, names and the start-up load. */
class tst_datatable : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    ZDataTableMgr* m_tables = nullptr;

    QString pathOf(Table::EDataTableType type)
    {
        return u"res/dataTable/"_s + m_tables->getTableFileName(type);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QDir().mkdir(u"res"_s);
        m_tables = ZDataTableMgr::getInstance();
        QCOMPARE(ZDataTableMgr::getInstance(), m_tables);
        QVERIFY(m_tables->parent() == nullptr);
        QVERIFY(QDir(u"res/screen"_s).exists());
    }

    void init()
    {
        m_tables->clearTables();
        QFile::remove(u"common.ini"_s);
        QDir(u"res/dataTable"_s).removeRecursively();
        ZGlobalConfig::getInstance().setConfig(u"cmsServer"_s, u"http://cms/"_s);
        ZGlobalConfig::getInstance().setConfig(u"ServerType"_s, u"1002"_s);
    }

    void names()
    {
        m_tables->setTableVersion(Table::CS_GiftList, 57, false);
        const QString digest = cacheName(u"http://cms/app/resources/CS_GiftList?57"_s);
        QCOMPARE(m_tables->getTableFileName(Table::CS_GiftList), digest);
        for (const QString& type : {u"7"_s, u"test"_s, QString()}) {
            ZGlobalConfig::getInstance().setConfig(u"ServerType"_s, type);
            QCOMPARE(m_tables->getTableFileName(Table::CS_GiftList),
                     QString(type + u"-"_s + digest));
        }
        ZGlobalConfig::getInstance().setConfig(u"ServerType"_s, u"01002"_s);
        const QStringList names = m_tables->getAllTableName();
        QCOMPARE(names.size(), TableCatalogue::types().size());
        QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), names.size());
        QCOMPARE(names.at(15), digest); // gifts are sixteenth in the catalogue
        QCOMPARE(names.last(), m_tables->getTableFileName(Table::CS_PkRankInfo));
    }

    void refusedVersions()
    {
        const auto negative = static_cast<Table::EDataTableType>(-1);
        QVERIFY(!m_tables->setTableVersion(negative, 1, true));
        QVERIFY(!m_tables->setTableVersion(Table::PCSkin, -1, true));
        QCOMPARE(m_tables->getTableVersion(negative), 0);
        QCOMPARE(m_tables->getTableVersion(Table::PCSkin), 0);
        QVERIFY(m_tables->setTableVersion(Table::PCSkin, 4, false));
        QCOMPARE(m_tables->getTableVersion(Table::PCSkin), 4);
        m_tables->clearTables();
        QCOMPARE(m_tables->getTableVersion(Table::PCSkin), 0);
    }

    void savesAreFolded()
    {
        ZTestFolder::write(u"common.ini"_s, "[Window]\ntitle=直播间\n[TableVersion]\nRetired=9\n");
        QSignalSpy saves(m_tables, &ZDataTableMgr::sigVersionsSaved);
        QVector<int> seen; // writes so far, shortly before and after a second from the last change
        const auto at = [this](int milliseconds, const auto& step) {
            QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, step);
        };
        m_tables->setTableVersion(Table::Message, 3, false);
        m_tables->getTableFileName(Table::Doutu); // gives stickers a version 0
        m_tables->setTableVersion(Table::CS_GiftList, 5, true);
        // Timers run in the order of their ends, however late, so these see what they should.
        at(600, [&] {
            m_tables->setTableVersion(Table::CS_GiftList, 6, true);
            at(600, [&] { m_tables->setTableVersion(Table::CS_GiftList, 6, true); }); // no change
            at(900, [&] { seen.append(saves.size()); });
            at(1300, [&] { seen.append(saves.size()); });
        });
        QTRY_COMPARE(seen.size(), 2);
        QCOMPARE(seen, QVector<int>({0, 1}));
        QCOMPARE(saves.first().first().toBool(), true);
        QCOMPARE(
            ZTestFolder::read(u"common.ini"_s).simplified(),
            QByteArray(
                "[Window] title=直播间 [TableVersion] Retired=9 Doutu=0 Message=3 CS_GiftList=6"));
    }

    void localVersions_data() { Cases::rows("datatable"); }

    void localVersions()
    {
        QFETCH(QString, line);
        ZTestFolder::write(u"common.ini"_s, "[TableVersion]\n" + line.toUtf8() + "\n");
        m_tables->setTableVersion(Table::CS_GiftList, 40, false);
        m_tables->loadLocalVersion();
        QTEST(m_tables->getTableVersion(Table::CS_GiftList), "version");
    }

    void startWithoutFiles()
    {
        const LogLines log;
        QVERIFY(!m_tables->loadAllTables());
        const QString name = m_tables->getTableFileName(Table::GroupWelComeWord);
        QCOMPARE(LogLines::lines(), QStringList {u"群组欢迎言数据表加载失败 "_s + name});
    }

    void brokenGiftTable()
    {
        ZTestFolder::write(pathOf(Table::GroupWelComeWord), tableBytes(u"w"_s, "[['Hi']]"));
        ZTestFolder::write(pathOf(Table::CS_GiftList), tableBytes(u"id"_s, "[]"));
        const LogLines log;
        QVERIFY(!m_tables->loadAllTables());
        QVERIFY(!QFile::exists(pathOf(Table::CS_GiftList)));
        QVERIFY(QFile::exists(pathOf(Table::GroupWelComeWord)));
        QCOMPARE(ZGroupWelcomelMgr::getInstance()->getRandWelcome(), u"Hi"_s);
        QCOMPARE(LogLines::lines().size(), 2);
        QVERIFY(LogLines::lines().last().startsWith(u"礼物数据表加载失败 "_s));
    }

    void fullStart()
    {
        ZTestFolder::write(pathOf(Table::GroupWelComeWord), tableBytes(u"w"_s, "[]"));
        ZTestFolder::write(pathOf(Table::CS_GiftList),
                           tableBytes(columnsOf(ZGiftListMgr::declaration(), false), "[]"));
        ZTestFolder::write(pathOf(Table::FansConfigNew), "not a table");
        const LogLines log;
        QVERIFY(m_tables->loadAllTables());
        const QStringList lines = LogLines::lines();
        QVERIFY(lines.first().startsWith(u"群组欢迎言数据表加载成功 "_s));
        QCOMPARE(lines.last(),
                 u"守护团配置表加载失败 "_s + m_tables->getTableFileName(Table::FansConfigNew));
        QVERIFY(QFile::exists(pathOf(Table::FansConfigNew)));
        QStringList titles;
        for (const QString& line : lines) {
            const int end = line.indexOf(QRegularExpression(u"加载(成功|失败) [0-9A-F]{32}$"_s));
            if (end > 0)
                titles.append(line.left(end));
        }
        QCOMPARE(
            titles.join(u'|'),
            u"群组欢迎言数据表|礼物数据表|Banner数据表|Banner 收展数据表|视频大厅Banner数据表|"
            "NobleConsume贵族费用配置数据表|贵族特权配置表|NobleConfig贵族配置数据表|"
            "CS_PlatFunLevel-主播娱乐等级数据表|座驾数据表|头像边框数据表|盖章数据表|消息表|"
            "勋章数据表|礼物标签表|公共配置表|后台通用配置表|气泡样式配置表|魔法表情配置表|"
            "皮肤配置表|表情包配置表|Flash配置表|H5页面配置表|首充信息表|头像贴活动表|快捷输入表|"
            "守护团配置表"_s);
    }
};

QTEST_GUILESS_MAIN(tst_datatable)

#include "tst_datatable.moc"
