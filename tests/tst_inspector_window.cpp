#include "inspector/window/PageList.h"
#include "server/ContentServer.h"
#include "support/InspectorTest.h"

#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>
#include <QTableView>
#include <QTcpServer>
#include <QTextBrowser>
#include <QToolButton>

/** The window as a whole, the overview, and what goes wrong around them. */
class tst_inspector_window : public InspectorTest
{
    Q_OBJECT

private Q_SLOTS:
    void overview();
    void brokenTable();
    void brokenTables();
    void writtenVersion();
    void linkAndBack();
    void everyPageByTheKeyboard();
    void everyWidgetByTab();
    void rowsAreCopied();
    void secondUpdate();
    void nextDay();
    void splittersAreKept();
    void serverIsGone();
    void stop();
    void endsBySignal();
    void servers_data();
    void servers();
    void surroundings_data();
    void surroundings();
    void nonsense_data();
    void nonsense();
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

void tst_inspector_window::brokenTables()
{
    const QStringList tables {u"CS_MedalList"_s, u"CS_CarList"_s, u"Doutu"_s};
    const auto* more = window().findChild<QToolButton*>(u"more"_s);
    QVERIFY(!more->isVisible());
    QVector<QByteArray> whole;
    for (const QString& table : tables) {
        whole.append(published(table));
        publish(table, "no table");
    }
    click("update");
    QCOMPARE(more->text(), u"and 2 more"_s);
    const auto* list = window().findChild<QFrame*>(u"failures"_s);
    QTest::mouseClick(const_cast<QToolButton*>(more), Qt::LeftButton);
    QVERIFY(list->isVisible());
    auto* words = list->findChild<QPlainTextEdit*>();
    for (const QString& table : tables)
        QVERIFY2(words->toPlainText().contains(table), qPrintable(words->toPlainText()));
    QCOMPARE(words->verticalScrollBar()->maximum(), 0);
    QTest::keyClick(words, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(words, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), failure());
    QTest::keyClick(words, Qt::Key_Escape);
    QVERIFY(!list->isVisible());
    window().activateWindow(); // which a display that nobody sees leaves to us
    QVERIFY(QTest::qWaitForWindowActive(&window()));
    for (int i = 0; i < tables.size(); ++i)
        publish(tables.at(i), whole.at(i));
    click("update");
    QVERIFY(!more->isVisible());
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
    // While something else is done it waits for its turn.
    const int fetched = host().ownServer()->requests();
    host().tidy();
    QVERIFY(model->setData(model->index(row, 2), 778));
    waitForTask();
    QVERIFY(host().ownServer()->requests() > fetched);
    click("update"); // and the service has the last word
    QVERIFY(model->index(row, 2).data().toString() != u"777"_s);
}

void tst_inspector_window::linkAndBack()
{
    const auto shown = [this] {
        return window().current()->objectName() + u':' + window().current()->opened();
    };
    window().show(u"gifts"_s, u"G1014"_s);
    auto* answer = window().current()->findChild<QTextBrowser*>();
    QTRY_VERIFY(answer->toHtml().contains(u"href=\""_s));
    const QString link = answer->toHtml().section(u"href=\""_s, 1).section(u'"', 0, 0);
    Q_EMIT answer->anchorClicked(QUrl(link));
    QCOMPARE(shown(), u"tables:CS_GiftList/G1014"_s);
    window().show(u"tables"_s, u"Doutu"_s); // another thing on the same page
    QTest::keyClick(&window(), Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(shown(), u"tables:CS_GiftList/G1014"_s);
    QWidget* under = find<QTableView>("records")->viewport();
    QTest::mouseClick(under, Qt::BackButton);
    QCOMPARE(shown(), u"gifts:G1014"_s);
    window().current()->open(u"G1018"_s); // the page has gone on meanwhile
    for (const char* next : {"tables:CS_GiftList/G1014", "tables:Doutu", "tables:Doutu"}) {
        QTest::keyClick(&window(), Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(shown(), QString::fromLatin1(next));
    }
    for (int step = 0; step < 2; ++step)
        QTest::mouseClick(window().findChild<QListWidget*>(u"pages"_s)->viewport(), Qt::BackButton);
    QCOMPARE(shown(), u"gifts:G1018"_s);
    window().show(u"log"_s); // from where nothing lies ahead any more
    QTest::keyClick(&window(), Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(shown(), u"log:"_s);
}

void tst_inspector_window::everyPageByTheKeyboard()
{
    for (int place = 0; place < pageList().size(); ++place) {
        const char* name = pageList().at(place).name;
        QTest::keyClick(&window(), static_cast<Qt::Key>(Qt::Key_1 + place), Qt::ControlModifier);
        QCOMPARE(window().current()->objectName(), QLatin1String(name));
        QTest::keyClick(&window(), Qt::Key_F5);
        QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
        auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY2(box != nullptr && window().current()->isAncestorOf(box), name);
        QTest::keyClicks(box, u"zz \"q:1"_s);
        QCOMPARE(box->text(), u"zz \"q:1"_s);
        QTest::keyClick(box, Qt::Key_Escape);
        QCOMPARE(box->text(), QString());
    }
}

/** Views that are shown now. */
static QVector<QAbstractItemView*> shownViews(const QWidget* page)
{
    QVector<QAbstractItemView*> shown;
    const auto views = page->findChildren<QAbstractItemView*>();
    for (QAbstractItemView* view : views) {
        if (view->isVisible() && qobject_cast<QHeaderView*>(view) == nullptr)
            shown.append(view);
    }
    return shown;
}

void tst_inspector_window::everyWidgetByTab()
{
    onEveryTab([this](const QString& where) {
        const auto views = shownViews(window().current());
        QVERIFY2(!views.isEmpty(), qPrintable(where));
        views.first()->setFocus();
        QSet<const QWidget*> reached;
        for (int press = 0; press < 150; ++press) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            reached.insert(QApplication::focusWidget());
        }
        for (const QAbstractItemView* view : views)
            QVERIFY2(reached.contains(view), qPrintable(where + u": "_s + view->objectName()));
        const auto boxes = window().current()->findChildren<QLineEdit*>();
        for (const QLineEdit* box : boxes) {
            const bool isOwn = box->isVisible() && box->objectName() != u"qt_spinbox_lineedit"_s;
            QVERIFY2(!isOwn || reached.contains(box), qPrintable(where + u": a box"_s));
        }
        QVERIFY2(reached.contains(window().findChild<QListWidget*>(u"pages"_s)), qPrintable(where));
    });
}

void tst_inspector_window::rowsAreCopied()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    onEveryTab([this, clipboard](const QString& where) {
        const auto views = shownViews(window().current());
        for (QAbstractItemView* view : views) {
            if (view->model()->rowCount() == 0)
                continue;
            const QString input = where + u": "_s + view->objectName();
            view->setFocus();
            view->setCurrentIndex({});
            view->clearSelection();
            clipboard->setText(u"before"_s);
            QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
            QVERIFY2(clipboard->text() == u"before"_s, qPrintable(input));
            view->setCurrentIndex(view->model()->index(0, 0));
            QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
            QVERIFY2(clipboard->text() != u"before"_s, qPrintable(input));
            QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
            const auto json = QJsonDocument::fromJson(clipboard->text().toUtf8()).array();
            QVERIFY2(json.size() == 1 && !json.first().toObject().isEmpty(), qPrintable(input));
        }
    });
}

void tst_inspector_window::secondUpdate()
{
    const QSignalSpy tasks(&host(), &ClientHost::sigTask);
    host().update();
    host().update();
    host().reload();
    host().tidy();
    QCOMPARE(host().task(), u"Updating"_s);
    waitForTask();
    QCOMPARE(tasks.size(), 2); // its begin and its end
    QCOMPARE(failure(), QString());
}

void tst_inspector_window::nextDay()
{
    window().show(u"chat"_s);
    window().resize(1111, 777);
    restart();
    QCOMPARE(window().current()->objectName(), u"chat"_s);
    QCOMPARE(window().size(), QSize(1111, 777));
    restart([] {
        QSettings().setValue(u"window/geometry"_s, u"large"_s);
        QSettings().setValue(u"window/page"_s, u"a page of a later version"_s);
    });
    QCOMPARE(window().current()->objectName(), u"overview"_s);
    QCOMPARE(window().size(), QSize(1280, 800));
}

void tst_inspector_window::splittersAreKept()
{
    const auto sizes = [this](const char* page) {
        window().show(QLatin1String(page));
        return find<QSplitter>(page)->sizes();
    };
    const QStringList pages {u"gifts"_s, u"tables"_s, u"pages"_s, u"chat"_s};
    QVector<QList<int>> before;
    for (const QString& page : pages)
        before.append(sizes(qPrintable(page)));
    window().show(u"gifts"_s);
    QWidget* handle = find<QSplitter>("gifts")->handle(1);
    QTest::mousePress(handle, Qt::LeftButton);
    const QPoint to = handle->rect().center() - QPoint(150, 0);
    QMouseEvent move(QEvent::MouseMove, to, handle->mapToGlobal(to), Qt::LeftButton, Qt::LeftButton,
                     {});
    QCoreApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, to);
    const QList<int> wanted {before.at(0).at(0) - 150, before.at(0).at(1) + 150};
    QCOMPARE(sizes("gifts"), wanted);
    restart();
    QCOMPARE(sizes("gifts"), wanted);
    restart([&pages] { // of a later version, or by another hand
        const QStringList kept {u"200, wide"_s, u"200, 300"_s, u"0, 0"_s, u"-3, 9999999999"_s};
        for (int i = 0; i < pages.size(); ++i)
            QSettings().setValue(u"splitters/"_s + pages.at(i), kept.at(i).split(u", "_s));
    });
    for (int i = 0; i < pages.size(); ++i)
        QVERIFY2(sizes(qPrintable(pages.at(i))) == before.at(i), qPrintable(pages.at(i)));
    restart([] {
        const QByteArray damaged = "[splitters]\ngifts=@Variant(\\0\\x1\0[[\n=\xff\xfe";
        ZTestFolder::write(QSettings().fileName(), damaged);
    });
    QCOMPARE(sizes("gifts"), before.at(0));
}

void tst_inspector_window::serverIsGone()
{
    for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
        if (status.kind >= 0)
            publish(status.table, published(status.table));
    }
    const QString summary = find<QLabel>("summary")->text();
    const auto dies = connect(&host(), &ClientHost::sigProgress, this, [this](int finished) {
        if (finished > 2)
            host().ownServer()->stop();
    });
    click("update");
    disconnect(dies);
    QVERIFY2(!failure().isEmpty(), qPrintable(failure()));
    QCOMPARE(find<QLabel>("summary")->text().section(u',', 0, 0), summary.section(u',', 0, 0));
    QCOMPARE(summary.section(u',', -1), find<QLabel>("summary")->text().section(u',', -1));
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
    auto* stop = window().findChild<QPushButton*>(u"stop"_s);
    window().show(u"log"_s); // it is found wherever one is
    QVERIFY(stop->isVisible() && stop->isEnabled());
    QTest::mouseClick(stop, Qt::LeftButton);
    waitForTask();
    QVERIFY2(failure().contains(u"cancelled"_s), qPrintable(failure()));
    QVERIFY(!stop->isVisible());
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
    QTRY_COMPARE(folders().size(), 1);
    program.terminate();
    QVERIFY(program.waitForFinished(-1));
    QVERIFY(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0);
    QCOMPARE(folders(), QStringList());
}

void tst_inspector_window::servers_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("works");
    QTest::newRow("slashes") << u"http://127.0.0.1:%1///"_s << true;
    QTest::newRow("folder") << u"http://127.0.0.1:%1/nowhere"_s << false;
    QTest::newRow("another protocol") << u"https://127.0.0.1:%1"_s << false;
    QTest::newRow("no protocol of ours") << u"gopher://127.0.0.1:%1"_s << false;
    QTest::newRow("no protocol") << u"127.0.0.1:%1"_s << false;
    QTest::newRow("words") << u"the test server %1"_s << false;
    QTest::newRow("port beyond all") << u"http://127.0.0.1:9%1"_s << false;
}

void tst_inspector_window::servers()
{
    QFETCH(const QString, address);
    QFETCH(const bool, works);
    ContentServer server;
    QString error;
    QVERIFY2(server.start(site(), 0, &error), qPrintable(error));
    const QString folder = QFileInfo(site()).path() + u'/' + QLatin1String(QTest::currentDataTag());
    host().open({address.arg(server.baseUrl().section(u':', -1)), folder, {}});
    waitForTask();
    QVERIFY2(failure().isEmpty() == works, qPrintable(failure()));
    QVERIFY2(works || failure().contains(address.section(u'%', 0, 0)), qPrintable(failure()));
    QVERIFY(find<QPushButton>("update")->isEnabled());
    QCOMPARE(works, find<QLabel>("summary")->text().startsWith(u"34 tables, 31 loaded"_s));
}

void tst_inspector_window::surroundings_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("told");
    QTest::newRow("folder is a file") << u"/file"_s << u""_s << u"%1/file cannot be entered"_s;
    QTest::newRow("empty content")
        << u"/other"_s << u"/empty"_s << u"there is no content in %1/empty"_s;
    QTest::newRow("no content") << u"/other"_s << u"/nowhere"_s
                                << u"there is no content in %1/nowhere"_s;
}

void tst_inspector_window::surroundings()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, content);
    QFETCH(const QString, told);
    const QString place = QFileInfo(site()).path();
    ZTestFolder::write(place + u"/file"_s, "no folder");
    QVERIFY(QDir().mkpath(place + u"/empty"_s));
    host().open({{}, place + folder, content.isEmpty() ? QString() : place + content});
    QVERIFY2(failure().contains(told.arg(place)), qPrintable(failure()));
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(host().task(), QString());
}

void tst_inspector_window::nonsense_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList {u"--nonsense"_s};
    QTest::newRow("no value") << QStringList {u"--page"_s};
    QTest::newRow("unknown page") << QStringList {u"--page"_s, u"nonsense"_s};
    QTest::newRow("no address") << QStringList {u"--server"_s, u"nonsense"_s};
    QTest::newRow("no option") << QStringList {u"nonsense"_s};
}

void tst_inspector_window::nonsense()
{
    QFETCH(const QStringList, arguments);
    QProcess program;
    program.start(QStringLiteral(ZGLOBAL_INSPECTOR), arguments);
    QVERIFY(program.waitForFinished(-1));
    QCOMPARE(program.exitCode(), 2);
    QVERIFY(program.readAllStandardError().contains(
        arguments.last().mid(arguments.last().lastIndexOf(u'-') + 1).toUtf8()));
}

INSPECTOR_TEST_MAIN(tst_inspector_window)
#include "tst_inspector_window.moc"
