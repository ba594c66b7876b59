#include "datatable/ZDataTableMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "support/LogLines.h"
#include "support/Patience.h"
#include "support/Tables.h"
#include "testing/ZTestServer.h"

#include <QThreadPool>
#include <QtTest>

#include <numeric>

namespace {

const QString url = u"/app/logo/flash/"_s;

/** A tar archive of one file. */
QByteArray archive(const QByteArray& name, const QByteArray& body)
{
    const auto padded = [](const QByteArray& bytes, int size) {
        return bytes.leftJustified(size, '\0');
    };
    const QByteArray head = padded(name, 100) + padded("0000644", 8) + padded("0000000", 8)
        + padded("0000000", 8)
        + padded(QByteArray::number(body.size(), 8).rightJustified(11, '0'), 12)
        + padded("00000000000", 12) + "        0" + QByteArray(100, '\0') + padded("ustar", 6)
        + "00";
    QByteArray block = padded(head, 512);
    const int sum = std::accumulate(block.cbegin(), block.cend(), 0);
    block.replace(148, 8, padded(QByteArray::number(sum, 8).rightJustified(6, '0'), 7) + ' ');
    return block + padded(body, 512) + QByteArray(1024, '\0');
}

} // namespace

class tst_flash : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;
    ZTestServer m_server;
    ZFlashConfigMgr& m_flashes = ZFlashConfigMgr::getInstance();
    QSignalSpy m_complete {&m_flashes, &ZFlashConfigMgr::sigDownloadFlash};

    void load(const QByteArray& rows)
    {
        QVERIFY(loadTable<ZFlashConfigMgr>(u"flashVersion flashName flashPrevDownload"_s, rows));
    }

private Q_SLOTS:
    void init()
    {
        QVERIFY(QDir(u"res/flash"_s).exists());
        ZGlobalConfig::getInstance().setConfig(u"ZZResServer"_s, m_server.baseUrl());
        ZDataTableMgr::getInstance()->setTableVersion(EDataTable::FlashConfig, 4, false);
        m_complete.clear();
    }

    void recordsAndAddresses()
    {
        load("[['11', 'zoo'], ['12', 'abc', '2'], [9, 'number']]");
        QCOMPARE(m_flashes.getAllFlashName(),
                 QStringList({u"abc_12"_s, u"number_0"_s, u"zoo_11"_s}));
        QCOMPARE(m_flashes.getMessageMap().value(u"abc"_s).flashPrevDownload, 2);
        QCOMPARE(m_flashes.getFlashPath(u"abc"_s), u"res/flash/abc_12"_s);
        QCOMPARE(m_flashes.getFlashPath(u"other"_s), u"res/flash/other_"_s);
        QCOMPARE(m_flashes.getFlashPath(QString()), QString());
        QCOMPARE(m_flashes.getFlashUrl(u"abc"_s), m_server.baseUrl() + url + u"abc?12"_s);
        QCOMPARE(m_flashes.getFlashUrl(u"other"_s), m_server.baseUrl() + url + u"other"_s);
        QCOMPARE(m_flashes.getFlashUrl(QString()), QString());
    }

    void downloads()
    {
        load("[['12', 'abc'], ['3', 'gone'], ['1', 'here']]");
        ZTestFolder::write(u"res/flash/here_1/here.flajson"_s, "{}");
        m_server.serve(url + u"abc"_s, archive("abc.flajson", "{}"));
        QSignalSpy finished(ZHttpComm::getInstance(), &ZHttpComm::sigRequestFinished);
        const LogLines log;
        for (int call = 0; call < 3; ++call)
            m_flashes.loadFlash();
        QTRY_VERIFY(QFile::exists(u"res/flash/abc_12/abc.flajson"_s) && finished.size() == 2);
        QThreadPool::globalInstance()->waitForDone();
        QCOMPARE(m_server.targets(), QStringList({url + u"abc?12"_s, url + u"gone?3"_s}));
        QCOMPARE(LogLines::lines(), QStringList {u"开始下载flash 4"_s});
        QCOMPARE(
            ZTestFolder::files(u"res/flash"_s),
            QStringList({u"abc_12/abc.flajson"_s, u"abc_12/abc_12"_s, u"here_1/here.flajson"_s}));
        QCOMPARE(m_complete.size(), 0);

        m_server.serve(url + u"gone"_s, archive("gone.flajson", "{}"));
        m_flashes.loadFlash();
        QTRY_VERIFY(QFile::exists(u"res/flash/gone_3/gone.flajson"_s));
        QCOMPARE(m_server.targets().mid(2), QStringList {url + u"gone?3"_s});
        QCOMPARE(m_complete.size(), 0);

        m_flashes.loadFlash();
        QTRY_COMPARE(m_complete.size(), 1);
        QCOMPARE(m_server.targets().size(), 3);
        QCOMPARE(LogLines::lines().mid(2),
                 QStringList({u"开始下载flash 4"_s, u"下载FlashConfig完成"_s}));
    }

    void dropsWhatCameTooLate()
    {
        load("[['5', 'late']]");
        m_server.serve(url + u"late"_s, archive("late.flajson", "{}"));
        m_server.hold(url + u"late"_s);
        m_flashes.loadFlash();
        QTRY_COMPARE(m_server.held(), 1);
        ZDataTableMgr::getInstance()->setTableVersion(EDataTable::FlashConfig, 5, false);
        QSignalSpy finished(ZHttpComm::getInstance(), &ZHttpComm::sigRequestFinished);
        m_server.release(url + u"late"_s);
        QTRY_COMPARE(finished.size(), 1);
        QCoreApplication::processEvents(); // the promise's handlers come after the signal
        QVERIFY(!QFile::exists(u"res/flash/late_5"_s));
    }
};

QTEST_GUILESS_MAIN(tst_flash)
#include "tst_flash.moc"
