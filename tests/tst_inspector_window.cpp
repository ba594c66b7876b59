#include "server/ContentServer.h"
#include "support/InspectorTest.h"
#include "support/Patience.h"

#include <QLineEdit>
#include <QProcess>
#include <QTableView>
#include <QTcpServer>

/** The window as a whole, the overview, and what goes wrong around them. */
class tst_inspector_window : public InspectorTest
{
    Q_OBJECT

private Q_SLOTS:
    void overview();
    void brokenTable();
    void writtenVersion();
    void serverIsGone();
    void stop();
    void endsBySignal();
};

void tst_inspector_window::overview()
{
    const auto* view = find<QTableView>("tables");
    QCOMPARE(view->model()->rowCount(), 34);
    QVERIFY(find<QLabel>("summary")->text().startsWith(u"34 tables, 31 loaded, 0 missing"_s));
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
    auto* box = find<QLineEdit>("search");
    QVERIFY(box->hasFocus());
    QTest::keyClicks(box, u"giftl"_s);
    QCOMPARE(column(*view, 0),
             (QStringList {u"CS_GiftList"_s, u"CS_GiftLabel"_s, u"CS_GameGiftList"_s}));
    QTest::keyClick(box, Qt::Key_Escape);
    QCOMPARE(view->model()->rowCount(), 34);
    // From a table to its records, where the keys go on.
    Q_EMIT const_cast<QTableView*>(view)->activated(view->model()->index(0, 0));
    QCOMPARE(window().current()->objectName(), u"tables"_s);
    QVERIFY(find<QTableView>("records")->hasFocus());
}

void tst_inspector_window::brokenTable()
{
    publish(u"CS_MedalList"_s, "\"medalId\"", "\"medal\"");
    click("update");
    QVERIFY2(failure().contains(u"has no column \"medalId\""_s), qPrintable(failure()));
    publish(u"CS_MedalList"_s, "\"medal\"", "\"medalId\"");
    click("update");
    QCOMPARE(failure(), QString());
}

void tst_inspector_window::writtenVersion()
{
    const auto* view = find<QTableView>("tables");
    auto* model = view->model();
    const int row = column(*view, 0).indexOf(u"Doutu"_s);
    const int requests = host().ownServer()->requests();
    QVERIFY(model->setData(model->index(row, 2), 777));
    waitForTask();
    QVERIFY(host().ownServer()->requests() > requests);
    QCOMPARE(model->index(row, 2).data().toString(), u"777"_s);
    click("update"); // and the service has the last word
    QVERIFY(model->index(row, 2).data().toString() != u"777"_s);
}

void tst_inspector_window::serverIsGone()
{
    host().ownServer()->stop();
    click("update");
    QVERIFY2(failure().contains(u"could not be learnt"_s), qPrintable(failure()));
    QVERIFY(window().findChild<QLabel*>(u"failure"_s)->isVisible());
}

void tst_inspector_window::stop()
{
    QTcpServer silent; // takes connections and says nothing
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    host().open({u"http://127.0.0.1:%1"_s.arg(silent.serverPort()), QDir::currentPath(), {}});
    QTRY_VERIFY(silent.hasPendingConnections());
    QVERIFY(find<QPushButton>("stop")->isEnabled());
    click("stop");
    QVERIFY2(failure().contains(u"cancelled"_s), qPrintable(failure()));
    QVERIFY(!find<QPushButton>("stop")->isEnabled());
}

/** As by closing the window: the folder that it made for itself goes with it. */
void tst_inspector_window::endsBySignal()
{
    const QDir temporary(QDir::currentPath() + u"/temporary"_s);
    QVERIFY(temporary.mkpath(u"."_s));
    const auto folders = [&temporary] { return temporary.entryList({u"zglobal-inspector*"_s}); };
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TMPDIR"_s, temporary.absolutePath());
    environment.insert(u"XDG_CONFIG_HOME"_s, QDir::currentPath());
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(ZGLOBAL_INSPECTOR), QStringList());
    QTRY_COMPARE_WITH_TIMEOUT(folders().size(), 1, patience);
    program.terminate();
    QVERIFY(program.waitForFinished(-1));
    QVERIFY(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0);
    QCOMPARE(folders(), QStringList());
}

INSPECTOR_TEST_MAIN(tst_inspector_window)
#include "tst_inspector_window.moc"
