#include "inspector/window/PageList.h"
#include "server/ContentServer.h"
#include "support/InspectorTest.h"

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
    void everyPageHasItsPicture();
    void serverIsGone();
    void stop();
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
    // From a table to its records.
    Q_EMIT const_cast<QTableView*>(view)->activated(view->model()->index(0, 0));
    QCOMPARE(window().current()->objectName(), u"tables"_s);
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

/** What the views of a page hold. */
static QString textsOf(const Page* page)
{
    QString texts;
    const auto views = page->findChildren<QAbstractItemView*>();
    for (const QAbstractItemView* view : views) {
        const QAbstractItemModel* model = view->model();
        for (int row = 0; model != nullptr && row < model->rowCount(); ++row) {
            for (int column = 0; column < model->columnCount(); ++column)
                texts += model->index(row, column).data().toString() + u'\n';
        }
    }
    return texts;
}

void tst_inspector_window::everyPageHasItsPicture()
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CONFIG_HOME"_s, QDir::currentPath());
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(ZGLOBAL_INSPECTOR), {u"--screenshots"_s, u"pictures"_s});
    QVERIFY(program.waitForFinished(-1));
    QVERIFY2(program.exitCode() == 0, program.readAllStandardError().constData());
    const QMap<QString, QString> shown {{u"overview"_s, u"CS_GiftList"_s},
                                        {u"tables"_s, u"星光皇冠"_s},
                                        {u"gifts"_s, u"星光皇冠"_s},
                                        {u"people"_s, u"平民1"_s},
                                        {u"chat"_s, u"代充金豆"_s},
                                        {u"pages"_s, u"周年回顾"_s},
                                        {u"look"_s, u"帝王"_s},
                                        {u"cache"_s, u"dataTable"_s},
                                        {u"log"_s, u"加载完毕"_s}};
    for (const PageEntry& entry : pageList()) {
        const QString name = QString::fromLatin1(entry.name);
        Page* page = window().page(name);
        const auto scenes = page->scenes();
        QVERIFY(!scenes.isEmpty());
        window().show(name);
        scenes.first().set();
        QTRY_VERIFY2(textsOf(page).contains(shown.value(name, u"?"_s)), entry.name);
        for (const Page::Scene& scene : scenes) {
            for (const QString& palette : {u""_s, u"-dark"_s}) {
                const QImage picture(u"pictures/"_s + scene.name + palette + u".png"_s);
                QVERIFY2(picture.width() >= 1280, qPrintable(scene.name));
            }
        }
    }
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

INSPECTOR_TEST_MAIN(tst_inspector_window)
#include "tst_inspector_window.moc"
