#include "client/ZGlobalClient.h"
#include "inspector/window/MainWindow.h"
#include "inspector/window/PageList.h"
#include "server/ContentServer.h"
#include "support/Tables.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QTableView>
#include <QTableWidget>
#include <QTcpServer>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>

namespace {

/** The pictures of the gifts, four hundred small files, stay where they are: nobody looks at them
 * here. */
void copyContent(const QString& from, const QString& to)
{
    QDir().mkpath(to);
    const auto entries = QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        const QString copy = to + u'/' + entry.fileName();
        if (entry.fileName() == u"gift"_s)
            continue;
        if (entry.isDir())
            copyContent(entry.filePath(), copy);
        else
            QVERIFY2(QFile::copy(entry.filePath(), copy), qPrintable(copy));
    }
}

QStringList column(const QTableView& view, int column)
{
    QStringList cells;
    for (int row = 0; row < view.model()->rowCount(); ++row)
        cells.append(view.model()->index(row, column).data().toString());
    return cells;
}

} // namespace

/** The desktop program as somebody uses it, on content of its own that the tests break. */
class tst_inspector : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void overview();
    void tableRow();
    void search();
    void changeIsHighlighted();
    void brokenTable();
    void writtenVersion();
    void chat();
    void giftAtAMoment();
    void giftIsNotInThePanel();
    void look();
    void tidying();
    void pages();
    void people();
    void log();
    void lostRows();
    void serverIsGone();
    void stop();
    void everyPageHasItsPicture();

private:
    template <class Widget>
    Widget* find(const char* name)
    {
        auto* found = m_window->current()->findChild<Widget*>(QLatin1String(name));
        if (found == nullptr)
            qFatal("no widget %s on the page", name);
        return found;
    }
    QString failure() const { return m_window->findChild<QLabel*>(u"failure"_s)->toolTip(); }
    void click(const char* button)
    {
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
        QTRY_COMPARE(m_window->host().task(), QString());
    }
    /** Publishes a table of the site in its next version, with a text in it replaced. */
    void publish(const QString& table, const QByteArray& before, const QByteArray& after);

    ZTestFolder m_folder;
    QString m_site = QDir::currentPath() + u"/site"_s;
    std::unique_ptr<MainWindow> m_window;
};

void tst_inspector::initTestCase()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QDir::currentPath() + u"/settings"_s);
    QCoreApplication::setOrganizationName(u"ZGlobal"_s);
    copyContent(QStringLiteral(ZGLOBAL_CONTENT), m_site);
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_window->host().open({{}, {}, m_site});
    QTRY_COMPARE(m_window->host().task(), QString());
    QCOMPARE(failure(), QString());
}

void tst_inspector::cleanupTestCase()
{
    m_window.reset();
}

void tst_inspector::init()
{
    m_window->show(u"overview"_s);
}

void tst_inspector::publish(const QString& table, const QByteArray& before, const QByteArray& after)
{
    const QString versions = m_site + u"/app/versions.json"_s;
    QJsonObject whole = QJsonDocument::fromJson(ZTestFolder::read(versions)).object();
    QJsonObject told = whole[u"versions"_s].toObject();
    told[table] = told[table].toInt() + 1;
    whole[u"versions"_s] = told;
    const QString path = m_site + u"/app/resources/"_s + table;
    QByteArray bytes = ZTestFolder::read(path);
    QVERIFY2(bytes.contains(before) && told[table].toInt() > 1, qPrintable(table));
    ZTestFolder::write(path, bytes.replace(before, after));
    ZTestFolder::write(versions, QJsonDocument(whole).toJson());
}

void tst_inspector::overview()
{
    const auto* view = find<QTableView>("tables");
    QCOMPARE(view->model()->rowCount(), 34);
    QVERIFY(find<QLabel>("summary")->text().startsWith(u"34 tables, 31 loaded, 0 missing"_s));
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    auto* box = find<QLineEdit>("search");
    QVERIFY(box->hasFocus());
    QTest::keyClicks(box, u"giftl"_s);
    QCOMPARE(column(*view, 0),
             (QStringList {u"CS_GiftList"_s, u"CS_GiftLabel"_s, u"CS_GameGiftList"_s}));
    QTest::keyClick(box, Qt::Key_Escape);
    QCOMPARE(view->model()->rowCount(), 34);
    // From a table to its records.
    Q_EMIT const_cast<QTableView*>(view)->activated(view->model()->index(0, 0));
    QCOMPARE(m_window->current()->objectName(), u"tables"_s);
}

void tst_inspector::tableRow()
{
    m_window->show(u"tables"_s, u"CS_GiftList/G1014"_s);
    const auto* cells = find<QTableWidget>("cells");
    QTRY_VERIFY(cells->rowCount() > 0);
    const auto line = [cells](const QString& name) {
        const QTableWidgetItem* found = cells->findItems(name, Qt::MatchExactly).value(0);
        return found == nullptr ? -1 : found->row();
    };
    QCOMPARE(cells->item(line(u"giftName"_s), 1)->text(), u"\"星光皇冠\""_s);
    QCOMPARE(cells->item(line(u"giftName"_s), 2)->text(), u"星光皇冠"_s);
    QCOMPARE(cells->item(line(u"duration"_s), 3)->text(), u"never read"_s);
    QVERIFY(cells->item(line(u"labelStartTime"_s), 3)->text().startsWith(u"no date"_s));
    find<QTableView>("records")->setFocus();
    QTest::keyClick(find<QTableView>("records"), Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QGuiApplication::clipboard()->text().contains(u"G1014\t888\t星光皇冠"_s));
    QTest::keyClick(find<QTableView>("records"), Qt::Key_C,
                    Qt::ControlModifier | Qt::ShiftModifier);
    const auto json = QJsonDocument::fromJson(QGuiApplication::clipboard()->text().toUtf8());
    QCOMPARE(json.array().first()[u"price"_s].toInt(), 888);
}

void tst_inspector::search()
{
    m_window->show(u"tables"_s, u"CS_GiftList"_s);
    const auto* view = find<QTableView>("records");
    auto* box = find<QLineEdit>("search");
    const QStringList ids = column(*view, 2);
    box->setText(u"giftid:g101"_s);
    QCOMPARE(column(*view, 2), ids.filter(u"G101"_s));
    box->setText(u"giftId:G101 皇冠"_s);
    QCOMPARE(column(*view, 2), QStringList {u"G1014"_s});
    box->clear();
    const_cast<QTableView*>(view)->sortByColumn(3, Qt::DescendingOrder);
    const QStringList prices = column(*view, 3);
    QVERIFY(prices.first().toInt() > prices.at(1).toInt() && prices.first().size() > 3);
    const_cast<QTableView*>(view)->sortByColumn(-1, Qt::AscendingOrder);
}

void tst_inspector::changeIsHighlighted()
{
    publish(u"CS_GiftList"_s, "\"星光皇冠\"", "\"月光皇冠\"");
    m_window->show(u"tables"_s, u"CS_GiftList/G1014"_s);
    const auto* view = find<QTableView>("records");
    m_window->show(u"overview"_s);
    click("update");
    m_window->show(u"tables"_s);
    const QModelIndex name = view->currentIndex().siblingAtColumn(4);
    QCOMPARE(name.data().toString(), u"月光皇冠"_s);
    QVERIFY(name.data(Qt::BackgroundRole).isValid());
    QVERIFY(!name.siblingAtColumn(3).data(Qt::BackgroundRole).isValid());
    QVERIFY(!name.siblingAtRow(0).data(Qt::BackgroundRole).isValid());
    QVERIFY(find<QLabel>("changes")->text().endsWith(u"1 new or changed, 0 gone"_s));
}

void tst_inspector::brokenTable()
{
    publish(u"CS_MedalList"_s, "\"medalId\"", "\"medal\"");
    click("update");
    QVERIFY2(failure().contains(u"has no column \"medalId\""_s), qPrintable(failure()));
    publish(u"CS_MedalList"_s, "\"medal\"", "\"medalId\"");
    click("update");
    QCOMPARE(failure(), QString());
}

void tst_inspector::writtenVersion()
{
    const auto* view = find<QTableView>("tables");
    auto* model = view->model();
    const int row = column(*view, 0).indexOf(u"Doutu"_s);
    const int requests = m_window->host().ownServer()->requests();
    QVERIFY(model->setData(model->index(row, 2), 777));
    QTRY_COMPARE(m_window->host().task(), QString());
    QVERIFY(m_window->host().ownServer()->requests() > requests);
    QCOMPARE(model->index(row, 2).data().toString(), u"777"_s);
    click("update"); // and the service has the last word
    QVERIFY(model->index(row, 2).data().toString() != u"777"_s);
}

void tst_inspector::chat()
{
    m_window->show(u"chat"_s);
    auto* text = find<QPlainTextEdit>("text");
    text->setFocus();
    QGuiApplication::clipboard()->setText(u"晚安\n代。充，金 豆！还能加群换礼物"_s);
    QTest::keyClick(text, Qt::Key_V, Qt::ControlModifier);
    const auto* lines = find<QTableView>("lines");
    QTRY_COMPARE(column(*lines, 1), (QStringList {u"晚安"_s, u"*！还能*"_s}));
    QVERIFY(column(*lines, 3).first().endsWith(u" µs"_s));
    QCOMPARE(text->extraSelections().value(1).cursor.selectedText(), u"加群换礼物"_s);
    auto* masks = find<QTableWidget>("masks");
    QTRY_COMPARE(masks->item(0, 4)->text(), u"2"_s);
    QCOMPARE(masks->item(0, 2)->text(), u"代。充，金 豆"_s);
    QCOMPARE(masks->item(1, 1)->text(), u"newer"_s);
    // Above it, where three characters stand between two of the word.
    QTest::keyClick(text, Qt::Key_Home, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText(u"代（（（充金豆"_s);
    QTest::keyClick(text, Qt::Key_V, Qt::ControlModifier);
    QTRY_VERIFY(find<QLabel>("near")->text().contains(u"“代充金豆” does not mask"_s));
    find<QLineEdit>("values")->setText(u"小红, 小猫,9"_s);
    const auto* messages = find<QWidget>("messages")->findChild<QTableView*>();
    QCOMPARE(column(*messages, 7).at(2), u"小红 送出 小猫 x9"_s);
    QCOMPARE(find<QTableView>("stickers")->model()->index(2, 8).data().toString(), u"cat_09.png"_s);
    // From a mask to its word.
    QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
    Q_EMIT masks->itemActivated(masks->item(1, 0));
    QCOMPARE(m_window->current()->objectName(), u"tables"_s);
    const QModelIndex word = find<QTableView>("records")->currentIndex();
    QCOMPARE(word.data().toString(), u"加群换礼物"_s);
}

void tst_inspector::giftAtAMoment()
{
    m_window->show(u"gifts"_s, u"G1195"_s);
    const auto* tiles = find<QListView>("gifts");
    const int all = tiles->model()->rowCount();
    QCOMPARE(tiles->currentIndex().data(Qt::DisplayRole).toString(), u"195"_s);
    auto* moment = find<QDateTimeEdit>("moment");
    moment->setDateTime(QDateTime({2024, 2, 3}, {23, 59, 59})); // its last second on sale
    const auto* why = find<QTextBrowser>("explanation");
    QTRY_VERIFY(why->toPlainText().contains(u"can be sent"_s));
    QTest::keyClick(find<QSlider>("time"), Qt::Key_Right);
    QCOMPARE(moment->dateTime(), QDateTime({2024, 2, 4}, {0, 0, 0}));
    QTRY_VERIFY(why->toPlainText().contains(u"cannot be sent"_s));
    QVERIFY(why->toPlainText().contains(u"endTime is 2024-02-03 23:59:59"_s));
    find<QComboBox>("shown")->setCurrentIndex(1);
    const int sendable = tiles->model()->rowCount();
    find<QComboBox>("shown")->setCurrentIndex(2);
    QCOMPARE(sendable + tiles->model()->rowCount(), all);
    QTest::mouseClick(find<QToolButton>("now"), Qt::LeftButton);
    const QString count = find<QLabel>("count")->text();
    QVERIFY2(count.startsWith(u"0 of "_s) && !count.startsWith(u"0 of 0"_s), qPrintable(count));
    find<QComboBox>("shown")->setCurrentIndex(0);
    QTest::mouseClick(find<QPushButton>("fetch"), Qt::LeftButton);
    QTRY_COMPARE(find<QLabel>("animation")->text(), u"sportscar, 2 frames"_s);
    QVERIFY(find<QLabel>("frames")->isVisible());
}

void tst_inspector::giftIsNotInThePanel()
{
    m_window->show(u"gifts"_s);
    QTest::keyClicks(find<QLineEdit>("search"), u"G1007"_s);
    QCOMPARE(find<QListView>("gifts")->model()->rowCount(), 0);
    const auto* why = find<QTextBrowser>("explanation");
    QTRY_VERIFY(why->toPlainText().contains(u"row 7 is left out for valid"_s));
    find<QLineEdit>("search")->clear();
}

void tst_inspector::look()
{
    m_window->show(u"look"_s, u"nobility/4"_s);
    QCOMPARE(find<QLabel>("told")->text(), u"伯爵 has 5 of 10 privileges"_s);
    const auto* ranks = find<QTableView>("NobleConsume");
    QCOMPARE(ranks->currentIndex().siblingAtColumn(2).data().toString(), u"3000"_s);
    QCOMPARE(ranks->model()->index(1, 8).data().toString(), u"head frame 201; car noble_knight"_s);
    QTRY_VERIFY(find<QLabel>("skin1")->text().startsWith(u"160 x 24 pixels"_s));
    m_window->show(u"look"_s, u"flash/level_up"_s);
    const auto* flashes = find<QTableView>("FlashConfig");
    QCOMPARE(flashes->currentIndex().siblingAtColumn(3).data().toString(), u"missing"_s);
    auto* box = find<QWidget>("flash");
    QTest::mouseClick(box->findChild<QPushButton*>(u"fetch"_s), Qt::LeftButton);
    QTRY_COMPARE(box->findChild<QLabel*>(u"animation"_s)->text(), u"level_up, 2 frames"_s);
    QCOMPARE(flashes->currentIndex().siblingAtColumn(3).data().toString(), u"there"_s);
}

void tst_inspector::tidying()
{
    const QString stale = u"res/dataTable/stale"_s;
    ZTestFolder::write(stale, QByteArray(3000, 'x'));
    QFile file(stale);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-8),
                             QFileDevice::FileModificationTime));
    file.close();
    m_window->show(u"cache"_s);
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    const auto* summary = find<QLabel>("summary");
    QTRY_VERIFY2(summary->text().contains(u"would remove 1 of"_s), qPrintable(summary->text()));
    m_window->show(u"cache"_s, stale);
    const auto* view = find<QTableView>("entries");
    const auto cell = [view](int column) {
        return view->currentIndex().siblingAtColumn(column).data().toString();
    };
    QCOMPARE(cell(0), u"stale"_s);
    QCOMPARE(cell(2) + u": "_s + cell(3), u"goes: no table's current file"_s);
    click("tidy");
    QTRY_VERIFY2(summary->text().contains(u"Removed: 1 of 1"_s), qPrintable(summary->text()));
    QVERIFY(!QFile::exists(stale));
    QCOMPARE(cell(2), u"removed"_s);
    QVERIFY(!column(*find<QTableView>("run"), 3).filter(u"stale"_s).isEmpty());
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QTRY_VERIFY(summary->text().contains(u"would remove nothing"_s));
}

void tst_inspector::pages()
{
    m_window->show(u"pages"_s);
    const auto* answer = find<QTextBrowser>("explanation");
    const auto saysAll = [answer](const QStringList& words) {
        const QString page = answer->toPlainText();
        return std::all_of(words.begin(), words.end(),
                           [&](const QString& each) { return page.contains(each); });
    };
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"https://m.example.com/task/center?a=1"_s);
    QTRY_VERIFY(saysAll({u"opens embedded: it is the page of a banner"_s, u"/task/center"_s}));
    find<QLineEdit>("question")->setText(u"https://m.example.com/large/plain"_s);
    QTRY_VERIFY(saysAll({u"opens outside"_s, u"none of 1 paths"_s}));
    // In the order of weights, and a click asks for the banner and for its page.
    auto* banners = find<QListView>("CS_BannerConfig");
    QCOMPARE(banners->model()->rowCount(), 5);
    QTest::mouseClick(banners->viewport(), Qt::LeftButton, {},
                      banners->visualRect(banners->model()->index(0, 0)).center());
    QVERIFY(
        saysAll({u"2 “新人首充” is shown: place 1 of 5"_s, u"/recharge/first opens embedded"_s}));
    auto* leftOut = find<QListWidget>("leftOut");
    QTRY_COMPARE(leftOut->count(), 2);
    leftOut->setCurrentRow(0);
    QVERIFY(saysAll({u"6 “手机专享” is not shown: row 6 is left out for showPosition"_s}));
    const QString recharge = find<QTableView>("webpages")->model()->index(0, 6).data().toString();
    QCOMPARE(recharge,
             m_window->host().ownServer()->baseUrl() + u"/web/pc/recharge.html?version=27"_s);
}

void tst_inspector::people()
{
    m_window->show(u"people"_s, u"medal/6"_s);
    const auto* medals = find<QWidget>("medal");
    QTest::mouseClick(medals->findChild<QPushButton*>(u"fetch"_s), Qt::LeftButton);
    QTRY_COMPARE(medals->findChild<QLabel*>(u"animation"_s)->text(),
                 u"medal_6_moving.png, 3 frames"_s);
    m_window->show(u"people"_s, u"frame/103"_s);
    const auto* why = find<QWidget>("frame")->findChild<QTextBrowser*>();
    find<QTimeEdit>("hour")->setTime({21, 59});
    QTRY_VERIFY(why->toPlainText().contains(u"shows dusk.png at 21:59:00: that of period 3"_s));
    QTest::keyClick(find<QSlider>("day"), Qt::Key_Right);
    QTRY_VERIFY(why->toPlainText().contains(u"shows night.png at 22:00:00: that of period 1"_s));
}

void tst_inspector::log()
{
    m_window->show(u"log"_s);
    const auto* view = find<QTableView>("lines");
    auto* box = find<QLineEdit>("search");
    QTRY_VERIFY(column(*view, 3).filter(u"GiftList.json加载完毕"_s).size() > 1);
    box->setText(u"part:update Doutu"_s);
    QCOMPARE(column(*view, 3).filter(u"Doutu"_s).size(), view->model()->rowCount());
    find<QComboBox>("severity")->setCurrentIndex(3);
    QCOMPARE(view->model()->rowCount(), 0);
    find<QComboBox>("severity")->setCurrentIndex(0);
    box->clear();
}

void tst_inspector::serverIsGone()
{
    m_window->host().ownServer()->stop();
    click("update");
    QVERIFY2(failure().contains(u"could not be learnt"_s), qPrintable(failure()));
    QVERIFY(m_window->findChild<QLabel*>(u"failure"_s)->isVisible());
}

void tst_inspector::lostRows()
{
    m_window->show(u"tables"_s, u"CS_GiftList"_s);
    auto* view = find<QTableView>("lost");
    auto* box = find<QCheckBox>("showLost");
    QTRY_VERIFY(box->isEnabled());
    QVERIFY(!view->isVisible());
    box->click();
    QVERIFY(view->isVisible());
    view->setCurrentIndex(view->model()->index(0, 0));
    const QString fate = view->model()->index(0, 3).data().toString();
    QVERIFY2(find<QLabel>("place")->text().endsWith(fate) && !fate.isEmpty(), qPrintable(fate));
    box->click();
}

void tst_inspector::stop()
{
    QTcpServer silent; // takes connections and says nothing
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    m_window->host().open(
        {u"http://127.0.0.1:%1"_s.arg(silent.serverPort()), QDir::currentPath(), {}});
    QTRY_VERIFY(silent.hasPendingConnections());
    QVERIFY(find<QPushButton>("stop")->isEnabled());
    click("stop");
    QVERIFY2(failure().contains(u"cancelled"_s), qPrintable(failure()));
    QVERIFY(!find<QPushButton>("stop")->isEnabled());
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

void tst_inspector::everyPageHasItsPicture()
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
        Page* page = m_window->page(name);
        const auto scenes = page->scenes();
        QVERIFY(!scenes.isEmpty());
        QVERIFY2(textsOf(page).contains(shown.value(name, u"?"_s)), entry.name);
        for (const Page::Scene& scene : scenes) {
            for (const QString& palette : {u""_s, u"-dark"_s}) {
                const QImage picture(u"pictures/"_s + scene.name + palette + u".png"_s);
                QVERIFY2(picture.width() >= 1280, qPrintable(scene.name));
            }
        }
    }
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    tst_inspector test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_inspector.moc"
