#include "host/ZHttpComm.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/ZPCSkinMgr.h"
#include "presentation/ZPublicConfigMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "support/Answers.h"
#include "support/Cases.h"
#include "support/LogLines.h"
#include "support/Patience.h"
#include "testing/ZTestServer.h"

#include <QTimer>
#include <QtTest>

namespace {

// In an order that lets the rows below end early.
const QString bannerColumns =
    u"id weight landingPage bannerType bannerContent startDate endDate isHalf isLive lpType"_s;
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
    ZTestFolder m_folder;
    ZBannerMgr* m_banners = ZBannerMgr::getInstance();
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
        ZDataTableMgr::getInstance()->setTableVersion(EDataTable::PCSkin, 17, false);
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
        QCOMPARE(m_banners->getBannerMap().size(), 5);
        const ZBannerInfo later = m_banners->getBannerMap().value(1);
        QVERIFY(later.weight == 3 && later.reserved == -1);
        QCOMPARE(m_banners->getList(false).last().weight, 5);
        QVERIFY(loadBanners(QString(), "[[8]]"));
        QCOMPARE(ids(false), u"8"_s);
        QCOMPARE(ids(true), u"9 1"_s);
        QVERIFY(m_banners->getBannerMap().contains(2));
    }

    void bannerPagesOfTheService()
    {
        ZTestServer server;
        setConfig(u"H5Server"_s, server.baseUrl() + u'/');
        setConfig(u"userId"_s, u"10001"_s);
        setConfig(u"sessionId"_s, u"a+b&c%2B="_s);
        QVERIFY(loadBanners(u"isCefOpen "_s, "[[1, 1, 1, 'https://a.example.com/kept']]"));
        m_banners->clear();
        const auto serve = [&server](QByteArray banners) {
            server.serve(largePath, "{\"data\": [" + banners.replace('\'', '"') + "]}");
        };
        serve("7, {}, {'isCefOpen': true, 'landingPage': 'https://a/s1'}, "
              "{'isCefOpen': 2, 'landingPage': 'https://a/s2'}, {'isCefOpen': 1, "
              "'landingPage': ''}, {'isCefOpen': 1, 'landingPage': ' https://a/s3'}, "
              "{'isCefOpen': 1, 'landingPage': 'https://a/'}");
        QVERIFY(m_banners->bannerIsByCef(u"q/kept"_s) && !m_banners->bannerIsByCef(u"/"_s));
        QVERIFY(loadBanners(QString(), "[]"));
        QTRY_VERIFY(m_banners->bannerIsByCef(u"/"_s));
        QCOMPARE(m_banners->bannerCefPage(u"q/s1/s2/s3"_s), u"https://a/"_s);
        const QString query = u"?userId=10001&sessionId=a%2Bb%26c%252B%3D&product=pc_anchor"_s;
        QCOMPARE(server.targets().last(), QString(largePath + query));

        server.fail(largePath, 500);
        QVERIFY(loadBanners(QString(), "[]"));
        QVERIFY2(!m_banners->bannerIsByCef(u"/"_s), "emptied when the question is sent");
        QTRY_COMPARE(server.requests(largePath), 3);
        serve("{'isCefOpen': 1, 'landingPage': 'http://a/s4'}");
        QVERIFY(loadBanners(QString(), "[]"));
        QTRY_VERIFY(m_banners->bannerIsByCef(u"q/s4"_s));
        QVERIFY(!m_banners->bannerIsByCef(u"/"_s));
    }

    void bannerImages()
    {
        ZTestServer server;
        setConfig(u"ImageResServer"_s, server.baseUrl());
        server.serve(u"/two.png"_s, "picture");
        QSignalSpy done(m_banners, &ZBannerMgr::sigDownloadImages);
        QVERIFY(loadBanners(QString(), "[[1, 1, '', 1, '/one.png'], [3, 1, '', 3, '/three.png']]"));
        QVERIFY(loadBanners(QString(), "[[2, 1, '', 2, '/two.png'], [4, 1, '', 1, '/gone.png']]",
                            true));
        const QString address = m_banners->getBannerImageUrlById(2);
        QCOMPARE(address, server.baseUrl() + u"/two.png"_s);
        QCOMPARE(m_banners->getBannerImageUrlById(5), QString());
        QCOMPARE(m_banners->getBannerImagePathById(5), QString());
        const QString path = m_banners->getBannerImagePathById(2);
        QCOMPARE(path, u"res/images/"_s + cacheName(address));
        ZTestFolder::write(m_banners->getBannerImagePathById(1), "there");

        m_banners->loadBannerImages();
        QVERIFY2(done.isEmpty(), "announced before the pictures are there");
        QTRY_COMPARE(done.size(), 1);
        QCOMPARE(ZTestFolder::read(path), QByteArray("picture"));
        QCOMPARE(server.requests(u"/gone.png"_s), 1);
        ZTestFolder::write(m_banners->getBannerImagePathById(4), "there");
        m_banners->loadBannerImages();
        QCOMPARE(done.size(), 2);
        QCOMPARE(server.targets().size(), 2);
    }

    void skinDownload()
    {
        const LogLines log;
        ZTestServer server;
        setConfig(u"ImageResServer"_s, server.baseUrl());
        QVERIFY(loadTable<ZPCSkinMgr>(u"id version"_s, "[['6', '2'], ['7', '3'], null]"));
        const QString address = m_skins.getSkinUrl(ZPCSkinMgr::E_SkinTop);
        QCOMPARE(address, server.baseUrl() + u"/app/images/pcskin/7_1_3"_s);
        const QString top = m_skins.getSkinPath(ZPCSkinMgr::E_SkinTop);
        QCOMPARE(top, u"res/skin//"_s + cacheName(address));
        const QString whole = m_skins.getSkinPath(ZPCSkinMgr::E_SkinAll);
        server.serve(u"/app/images/pcskin/7_0_3"_s, "whole");
        server.serve(u"/app/images/pcskin/7_1_3"_s, QByteArray());
        QVERIFY(QFileInfo(u"res/skin"_s).isDir());
        ZTestFolder::write(whole, "earlier and longer");
        ZTestFolder::write(top, "earlier");

        QSignalSpy done(&m_skins, &ZPCSkinMgr::sigDownloadImages);
        // Timers run in the order of their ends, however late: the second call puts the download
        // off.
        int begunEarly = -1;
        m_skins.loadPCSkinImages();
        QTimer::singleShot(500, Qt::PreciseTimer, this, [this] { m_skins.loadPCSkinImages(); });
        QTimer::singleShot(1200, Qt::PreciseTimer, this,
                           [&] { begunEarly = log.count(u"开始下载皮肤"_s); });
        QTRY_COMPARE(done.size(), 1);
        QCOMPARE(begunEarly, 0);
        QCOMPARE(server.targets().size(), 2);
        QCOMPARE(log.lines().filter(u"皮肤"_s),
                 QStringList({u"开始下载皮肤 17"_s, u"下载皮肤图片完成 17"_s}));
        QCOMPARE(ZTestFolder::read(whole), QByteArray("whole"));
        QCOMPARE(ZTestFolder::read(top), QByteArray("earlier"));
    }

    void skinFailures_data() { Cases::rows("presentation"); }

    void skinFailures()
    {
        QFETCH(QString, columns);
        QFETCH(QString, top);
        const bool isSkin = !top.isEmpty();
        const LogLines log;
        ZTestServer server;
        setConfig(u"ImageResServer"_s, server.baseUrl());
        server.serve(u"/app/images/pcskin/_1_3"_s, top.toUtf8());
        QVERIFY(loadTable<ZPCSkinMgr>(columns, "[['6', '2'], ['', '3']]"));
        QSignalSpy done(&m_skins, &ZPCSkinMgr::sigDownloadImages);
        QSignalSpy answers(ZHttpComm::getInstance(), &ZHttpComm::sigRequestFinished);
        m_skins.loadPCSkinImages();
        QTRY_VERIFY(isSkin ? answers.size() == 2 : done.size() == 1);
        QCoreApplication::processEvents(); // runs what follows the answers
        QCOMPARE(done.size(), isSkin ? 0 : 1);
        QCOMPARE(ZTestFolder::read(m_skins.getSkinPath(ZPCSkinMgr::E_SkinTop)), top.toUtf8());
        QCOMPARE(m_skins.getSkinUrl(ZPCSkinMgr::E_SkinAll).isEmpty(), !isSkin);
        QTEST(log.lines().filter(u"皮肤"_s).join(u' '), "lines");
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
                 Z_ANSWER(ZBannerMgr, bannerCefPage),
                 Z_ANSWER(ZBannerMgr, bannerIsByCef),
                 Z_ANSWER(ZOtherBannerMgr, otherBannerCefPage),
                 Z_ANSWER(ZOtherBannerMgr, otherBannerIsByCef),
                 Z_ANSWER(zH5WebConfigMgr, getURLByDefine),
                 Z_ANSWER(zH5WebConfigMgr, getAppURLByDefine)})
            .check(lines.toArray());
    }
};

QTEST_GUILESS_MAIN(tst_presentation)

#include "tst_presentation.moc"
