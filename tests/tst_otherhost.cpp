#include "chat/ZGroupWelcomelMgr.h"
#include "datatable/ZDataTableMgr.h"
#include "host/zErrorInfo.h"
#include "support/Literals.h"
#include "testing/ZTestFolder.h"

#include <QDir>
#include <QtTest>

/** The library on a host of another make that offers what it has to and nothing else. */
class tst_otherhost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void update()
    {
        ZTestFolder folder;
        QDir().mkpath(u"res/dataTable"_s);
        ZDataTableMgr* tables = ZDataTableMgr::getInstance();
        QStringList outcomes;
        const auto note = [&](const zErrorInfo& error) { outcomes.append(error.message()); };
        tables->updateDataTable(EDataTable::GroupWelComeWord)
            .then([&] { outcomes.append(u"ok"_s); })
            .wait();
        tables->updateDataTable(EDataTable::CS_GiftList).fail(note).wait();
        tables->updateAllDataTable().fail(note).wait();
        tables->downloadFile(u"p"_s, u"other://x?secret"_s, false)
            .then([](const QString&) {})
            .fail(note)
            .wait();
        QCOMPARE(outcomes,
                 QStringList({u"ok"_s, u"静态表下载错误"_s, u"网络不给力，请重试"_s,
                              u"Cannot download other://x"_s}));
        QVERIFY(!tables->loadAllTables());
        QCOMPARE(ZGroupWelcomelMgr::getInstance()->getRandWelcome(), u"Hello"_s);
    }
};

QTEST_GUILESS_MAIN(tst_otherhost)

#include "tst_otherhost.moc"
