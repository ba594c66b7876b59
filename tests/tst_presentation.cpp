#include "host/ZHttpComm.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/ZPCSkinMgr.h"
#include "presentation/ZPublicConfigMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "support/Answers.h"
#include "support/Cases.h"
#include "support/HttpServer.h"
#include "support/LogLines.h"

#include <QTimer>
#include <QtTest>

namespace {

// In an order that lets the rows below end early.
const QString bannerColumns =
    u"id weight landingPage bannerType bannerContent startDate endDate isHalf isLive lpType"_s;
const QString otherColumns = u"id targetObject isCefOpen"_s;
const QString largePath = u"/cms/app/data/bannerConfigInfo"_s;

void setConfig(const QString& key, const QString& value)
{
    ZGlobalConfig::getInstance().setConfig(key, value);
}

QString ids(bool isNew)
{
    QStringList ids;
    for (const ZBannerInfo& banner : ZBannerMgr::getInstance()->getList(isNew))
        ids.append(QString::number(banner.id));
    return ids.join(u' ');
}

} // namespace

class tst_presentation : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    ZBannerMgr* m_banners = ZBannerMgr::getInstance();
    ZOtherBannerMgr* m_others = ZOtherBannerMgr::getInstance();
    ZPCSkinMgr& m_skins = ZPCSkinMgr::getInstance();

    /** The columns are bannerColumns and, from the front, those named. */
    bool loadBanners(const QString& columns, const QByteArray& rows, bool isNew = false)
    {
        return m_banners->loadBannerListTable(tableOf(QString(columns + bannerColumns), rows),
                                              isNew);
    }

private Q_SLOTS:
    void init()
    {
        m_banners->clear();
        setConfig(u"H5Server"_s, QString());
    }

    void bannerLists()
    {
        QVERIFY(loadBanners(u"showPosition "_s,
                            "[['pc_anchor', 1, 5], ['pc_anchor,app', 2, 2], ['PC_ANCHOR', 3, 9], "
                            "['pc_anchor', 4, 2], "
                            "['', 5, 1], [7, 6, 1], ['xpc_anchor2', 7, -1]]"));
        QVERIFY(loadBanners(QString(), "[[9, 7], [1, 3]]", true));
        QCOMPARE(ids(false), u"7 2 4 1"_s);
        QCOMPARE(ids(true), u"9 1"_s);
        m_banners->sortListByWeight(true);
        QCOMPARE(ids(true), u"9 1"_s);
        QCOMPARE(m_banners->getBannerMap().size(), 5);
        QCOMPARE(m_banners->getBannerMap().value(1).weight, 3);
        QCOMPARE(m_banners->getBannerMap().value(1).reserved, -1);
        QCOMPARE(m_banners->getList(false).last().weight, 5);
        QVERIFY(loadBanners(QString(), "[[8]]"));
        QCOMPARE(ids(false), u"8"_s);
        QCOMPARE(ids(true), u"9 1"_s);
        QVERIFY(m_banners->getBannerMap().contains(2));
    }

    void bannerPages_data() { Cases::rows("presentation"); }

    /** The banners' pages stay for good, so every case has a path of its own. */
    void bannerPages()
    {
        QFETCH(QString, page);
        QFETCH(QString, flag);
        QFETCH(QString, url);
        QVERIFY(loadBanners(u"isCefOpen "_s, u"[[%2, 1, 1, '%1']]"_s.arg(page, flag).toUtf8()));
        QTEST(m_banners->bannerIsByCef(url), "embedded");

        const QString rows = u"[null, [1, '%1', %2], [2, 'https://a.example.com/', 1]]"_s;
        QVERIFY(loadTable<ZOtherBannerMgr>(otherColumns, rows.arg(page, flag).toUtf8()));
        QCOMPARE(m_others->getList().size(), 2);
        QTEST(m_others->otherBannerIsByCef(url), "embedded");
        QTEST(m_others->otherBannerCefPage(url) == page.trimmed(), "embedded");
        m_others->clear();
        QVERIFY(m_others->getList().isEmpty() && !m_others->otherBannerIsByCef(url));
    }

    void bannerPagesOutliveClear()
    {
        QVERIFY(loadBanners(u"isCefOpen showPosition "_s,
                            "[[1, 'app', 1, 1, 'https://a.example.com/dropped']]"));
        QCOMPARE(ids(false), QString());
        m_banners->clear();
        QVERIFY(loadBanners(QString(), "[]"));
        QCOMPARE(m_banners->bannerCefPage(u"q/dropped"_s), u"https://a.example.com/dropped"_s);
    }

    void bannerPagesOfTheService()
    {
        HttpServer server;
        setConfig(u"H5Server"_s, server.baseUrl() + u'/');
        setConfig(u"userId"_s, u"10001"_s);
        setConfig(u"sessionId"_s, u"a+b&c%2B="_s);
        server.serve(
            largePath,
            QByteArray("{'data': [7, {}, {'isCefOpen': true, 'landingPage': 'https://a/s1'}, "
                       "{'isCefOpen': 2, 'landingPage': 'https://a/s2'}, {'isCefOpen': 1, "
                       "'landingPage': ''}, {'isCefOpen': 1, 'landingPage': ' https://a/s3'}, "
                       "{'isCefOpen': 1, 'landingPage': 'https://a/'}]}")
                .replace('\'', '"'));
        QVERIFY(!m_banners->bannerIsByCef(u"/"_s));
        QVERIFY(loadBanners(QString(), "[]"));
        QTRY_VERIFY(m_banners->bannerIsByCef(u"/"_s));
        QCOMPARE(m_banners->bannerCefPage(u"q/s1/s2/s3"_s), u"https://a/"_s);
        const QString query = u"?userId=10001&sessionId=a%2Bb%26c%252B%3D&product=pc_anchor"_s;
        QCOMPARE(server.targets(), QStringList(largePath + query));

        server.fail(largePath, 500);
        QVERIFY(loadBanners(QString(), "[]"));
        QVERIFY2(!m_banners->bannerIsByCef(u"/"_s), "emptied when the question is sent");
        QTRY_COMPARE(server.requests(largePath), 2);
        server.serve(largePath,
                     QByteArray("{'data': [{'isCefOpen': 1, 'landingPage': 'http://a/s4'}]}")
                         .replace('\'', '"'));
        QVERIFY(loadBanners(QString(), "[]"));
        QTRY_VERIFY(m_banners->bannerIsByCef(u"q/s4"_s));
        QVERIFY(!m_banners->bannerIsByCef(u"/"_s));
    }

    void bannerImages()
    {
        HttpServer server;
        setConfig(u"ImageResServer"_s, server.baseUrl());
        server.serve(u"/two.png"_s, "picture");
        QSignalSpy done(m_banners, &ZBannerMgr::sigDownloadImages);
        QVERIFY(loadBanners(QString(), "[[1, 1, '', 1, '/one.png'], [3, 1, '', 3, '/three.png']]"));
        QVERIFY(loadBanners(QString(), "[[2, 1, '', 2, '/two.png'], [4, 1, '', 1, '/gone.png']]",
                            true));
        QCOMPARE(m_banners->getBannerImageUrlById(3), server.baseUrl() + u"/three.png"_s);
        QCOMPARE(m_banners->getBannerImageUrlById(5), QString());
        QCOMPARE(m_banners->getBannerImagePathById(5), QString());
        const QString path = m_banners->getBannerImagePathById(2);
        QCOMPARE(path, u"res/images/"_s + cacheName(server.baseUrl() + u"/two.png"_s));
        WorkFolder::write(m_banners->getBannerImagePathById(1), "there");

        m_banners->loadBannerImages();
        QVERIFY2(done.isEmpty(), "announced before the pictures are there");
        QTRY_COMPARE(done.size(), 1);
        QCOMPARE(WorkFolder::read(path), QByteArray("picture"));
        QStringList targets = server.targets();
        targets.sort();
        QCOMPARE(targets, QStringList({u"/gone.png"_s, u"/two.png"_s}));
        WorkFolder::write(m_banners->getBannerImagePathById(4), "there");
        m_banners->loadBannerImages();
        QCOMPARE(done.size(), 2);
        QCOMPARE(server.targets().size(), 2);
    }

    void skinDownload()
    {
        const LogLines log;
        HttpServer server;
        setConfig(u"ImageResServer"_s, server.baseUrl());
        ZDataTableMgr::getInstance()->setTableVersion(EDataTable::PCSkin, 17, false);
        QVERIFY(loadTable<ZPCSkinMgr>(u"id version"_s, "[['6', '2'], ['7', '3'], null]"));
        const QString address = m_skins.getSkinUrl(ZPCSkinMgr::E_SkinTop);
        QCOMPARE(address, server.baseUrl() + u"/app/images/pcskin/7_1_3"_s);
        const QString top = m_skins.getSkinPath(ZPCSkinMgr::E_SkinTop);
        QCOMPARE(top, u"res/skin//"_s + cacheName(address));
        const QString whole = m_skins.getSkinPath(ZPCSkinMgr::E_SkinAll);
        server.serve(u"/app/images/pcskin/7_0_3"_s, "whole");
        server.serve(u"/app/images/pcskin/7_1_3"_s, QByteArray());
        QVERIFY(QFileInfo(u"res/skin"_s).isDir());
        WorkFolder::write(whole, "earlier and longer");
        WorkFolder::write(top, "earlier");

        QSignalSpy done(&m_skins, &ZPCSkinMgr::sigDownloadImages);
        // Timers run in the order of their ends, however late: the second call puts the download
        // off.
        int begunEarly = -1;
        m_skins.loadPCSkinImages();
        QTimer::singleShot(500, Qt::PreciseTimer, this, [this] { m_skins.loadPCSkinImages(); });
        QTimer::singleShot(1200, Qt::PreciseTimer, this,
                           [&] { begunEarly = log.count(u"开始下载皮肤"_s); });
        QTRY_COMPARE_WITH_TIMEOUT(done.size(), 1, 20000);
        QCOMPARE(begunEarly, 0);
        QCOMPARE(server.targets().size(), 2);
        QCOMPARE(log.lines().filter(u"皮肤"_s),
                 QStringList({u"开始下载皮肤 17"_s, u"下载皮肤图片完成 17"_s}));
        QCOMPARE(WorkFolder::read(whole), QByteArray("whole"));
        QCOMPARE(WorkFolder::read(top), QByteArray("earlier"));
    }

    void skinFailures_data() { Cases::rows("presentation"); }

    void skinFailures()
    {
        QFETCH(QString, columns);
        QFETCH(bool, isSkin);
        const LogLines log;
        HttpServer server;
        setConfig(u"ImageResServer"_s, server.baseUrl());
        server.serve(u"/app/images/pcskin/_1_3"_s, "top");
        QVERIFY(loadTable<ZPCSkinMgr>(columns, "[['6', '2'], ['', '3']]"));
        QSignalSpy done(&m_skins, &ZPCSkinMgr::sigDownloadImages);
        QSignalSpy answers(ZHttpComm::getInstance(), &ZHttpComm::sigRequestFinished);
        m_skins.loadPCSkinImages();
        QTRY_VERIFY(isSkin ? answers.size() == 2 : done.size() == 1);
        QCoreApplication::processEvents(); // runs what follows the answers
        const QByteArray top = WorkFolder::read(m_skins.getSkinPath(ZPCSkinMgr::E_SkinTop));
        QCOMPARE(top, QByteArray(isSkin ? "top" : ""));
        QCOMPARE(m_skins.getSkinUrl(ZPCSkinMgr::E_SkinAll).isEmpty(), !isSkin);
        QCOMPARE(done.size(), isSkin ? 0 : 1);
        QCOMPARE(server.targets().size(), isSkin ? 2 : 0);
        QCOMPARE(log.lines().filter(u"皮肤"_s).size(), 1);
        QCOMPARE(log.count(u"皮肤不存在"_s), isSkin ? 0 : 1);
    }

    void answers_data() { Cases::rows("presentation"); }

    void answers()
    {
        QFETCH(QJsonValue, lines);
        Answers({{u"published"_s,
                  Answers::of(&ZPublicConfigMgr::getInfoById, &ZPublicConfigInfo::value)},
                 {u"published as"_s,
                  Answers::of(&ZPublicConfigMgr::getInfoByDefine, &ZPublicConfigInfo::value)},
                 {u"setting"_s,
                  Answers::of(&ZSystemConfigMgr::getInfoByDefine, &ZSystemConfigInfo::configValue)},
                 Z_ANSWER(ZSystemConfigMgr, isConfigData),
                 Z_ANSWER(zH5WebConfigMgr, getURLByDefine),
                 Z_ANSWER(zH5WebConfigMgr, getAppURLByDefine)})
            .check(lines.toArray());
    }
};

QTEST_GUILESS_MAIN(tst_presentation)

#include "tst_presentation.moc"
