#include "chat/ZBubbleConfigMgr.h"
#include "server/ContentServer.h"
#include "support/InspectorTest.h"

#include <QClipboard>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTableWidget>
#include <QTextBrowser>

/** What is said and where it leads: the pages of chat and of banners. */
class tst_inspector_chat : public InspectorTest
{
    Q_OBJECT

private Q_SLOTS:
    void chat();
    void bubbles();
    void manyLines();
    void placeholders();
    void pages();
    void anyAddress_data();
    void anyAddress();
    void bannersChange();
};

void tst_inspector_chat::chat()
{
    window().show(u"chat"_s);
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
    // What separates lines within one makes none of its own, neither in the box nor beside it.
    const QString kept = text->toPlainText();
    text->setPlainText(u"晚"_s + QChar(QChar::LineSeparator) + u"安\n代充金豆"_s);
    QTRY_COMPARE(column(*lines, 2), (QStringList {u"0"_s, u"1"_s}));
    QCOMPARE(text->extraSelections().value(0).cursor.selectedText(), u"代充金豆"_s);
    text->setPlainText(kept);
    find<QLineEdit>("values")->setText(u"小红, 小猫,9"_s);
    const auto* messages = find<QWidget>("messages")->findChild<QTableView*>();
    QCOMPARE(column(*messages, 7).at(2), u"小红 送出 小猫 x9"_s);
    QCOMPARE(find<QTableView>("stickers")->model()->index(2, 8).data().toString(), u"cat_09.png"_s);
    // From a mask to its word.
    QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
    Q_EMIT masks->itemActivated(masks->item(1, 0));
    QCOMPARE(window().current()->objectName(), u"tables"_s);
    const QModelIndex word = find<QTableView>("records")->currentIndex();
    QCOMPARE(word.data().toString(), u"加群换礼物"_s);
}

/** Each form of a bubble comes into the file where a client looks for it. */
void tst_inspector_chat::bubbles()
{
    window().show(u"chat"_s);
    ZBubbleConfigMgr& bubbles = ZBubbleConfigMgr::getInstance();
    for (const QString& path : {bubbles.getImagePathById(u"8"_s), bubbles.getChatPathById(u"8"_s),
                                bubbles.getThumbEnableImagePathById(u"8"_s)})
        QTRY_VERIFY2(!QImage(path).isNull(), qPrintable(path));
}

void tst_inspector_chat::pages()
{
    window().show(u"pages"_s);
    const auto* answer = find<QTextBrowser>("explanation");
    const auto saysAll = [answer](const QStringList& words) {
        const QString page = answer->toPlainText();
        return std::all_of(words.begin(), words.end(),
                           [&](const QString& each) { return page.contains(each); });
    };
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
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
    QCOMPARE(column(*find<QTableView>("webpages"), 0).mid(8),
             (QStringList {u"9"_s, u"10"_s, u"11"_s}));
    const QString recharge = find<QTableView>("webpages")->model()->index(0, 6).data().toString();
    QCOMPARE(recharge, host().ownServer()->baseUrl() + u"/web/pc/recharge.html?version=27"_s);
}

void tst_inspector_chat::manyLines()
{
    window().show(u"chat"_s);
    auto* text = find<QPlainTextEdit>("text");
    QStringList lines;
    for (int i = 0; i < 2000; ++i)
        lines.append(i % 4 == 0 ? u"🎁代充金豆🎁"_s : i % 4 == 1 ? u""_s : u"晚安%1"_s.arg(i));
    text->setPlainText(lines.join(u'\n'));
    const auto* told = find<QLabel>("told");
    QTRY_VERIFY2(told->text().startsWith(u"Lines: 2000, masked: 500, "_s)
                     && !told->text().contains(u"to go"_s),
                 qPrintable(told->text()));
    const auto* view = find<QTableView>("lines");
    QCOMPARE(view->model()->index(1996, 1).data().toString(), u"🎁*🎁"_s);
    QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(view->currentIndex().row(), 1999);
    // Words that are taken from the list mask no more.
    publish(u"ChatFilterWordKey"_s, "代充金豆", "代冲金豆");
    host().update();
    waitForTask();
    QTRY_VERIFY2(told->text().startsWith(u"Lines: 2000, masked: 0, "_s), qPrintable(told->text()));
    publish(u"ChatFilterWordKey"_s, "代冲金豆", "代充金豆");
    host().update();
    waitForTask();
    QTRY_VERIFY2(told->text().startsWith(u"Lines: 2000, masked: 500, "_s),
                 qPrintable(told->text()));
    text->clear();
    QCOMPARE(view->model()->rowCount(), 0);
    QTRY_COMPARE(find<QTableWidget>("masks")->rowCount(), 0);
}

void tst_inspector_chat::placeholders()
{
    window().show(u"chat"_s);
    const auto* messages = find<QWidget>("messages")->findChild<QTableView*>();
    const QVector<QPair<QString, QString>> filled {{u"小红, 小猫,9"_s, u"小红 送出 小猫 x9"_s},
                                                   {u"小红"_s, u"小红 送出 %2 x%3"_s},
                                                   {u"小红,,9"_s, u"小红 送出 %2 x9"_s},
                                                   {u"%2,b,c,d"_s, u"%2 送出 b xc"_s},
                                                   {u""_s, u"%1 送出 %2 x%3"_s}};
    for (const auto& each : filled) {
        find<QLineEdit>("values")->setText(each.first);
        QCOMPARE(column(*messages, 7).at(2), each.second);
    }
}

void tst_inspector_chat::anyAddress_data()
{
    QTest::addColumn<QString>("address");
    for (const char* address :
         {"javascript:alert(1)", "ftp://m.example.com/task/center", "//m.example.com/task/center",
          "https://", "http:///task", ":", "/", "mailto:a@example.com", "<b>https://x</b>",
          "https://m.example.com:99999/", "https://例子.example.com/大", "https://%zz.example/%"})
        QTest::newRow(address) << QString::fromUtf8(address);
    QTest::newRow("long") << u"https://m.example.com/"_s + QString(20000, u'a');
}

void tst_inspector_chat::anyAddress()
{
    QFETCH(const QString, address);
    window().show(u"pages"_s);
    auto* box = find<QLineEdit>("question");
    box->setText(address);
    QTest::keyClick(box, Qt::Key_Return);
    const auto* answer = find<QTextBrowser>("explanation");
    QTRY_VERIFY2(answer->toPlainText().contains(u" opens "_s), qPrintable(answer->toPlainText()));
    QVERIFY(answer->toPlainText().contains(address.left(1000)));
}

void tst_inspector_chat::bannersChange()
{
    const QString table = u"CS_BannerConfig"_s;
    const QByteArray whole = published(table);
    const auto publishRows = [&](const QByteArray& rows) {
        publish(table, tableBytes(statusOf(table), u"required"_s, jsonOf(rows)));
        host().update();
        waitForTask();
        QCOMPARE(failure(), QString());
    };
    publishRows("[{'id': 31, 'weight': 5}, {'id': 30, 'weight': 5}, {'id': 32, 'weight': 1}]");
    window().show(u"pages"_s);
    auto* banners = find<QListView>("CS_BannerConfig");
    const auto first = [banners](int row) {
        return banners->model()->index(row, 0).data(Qt::UserRole).toInt();
    };
    QCOMPARE((QVector<int> {first(0), first(1), first(2)}), (QVector<int> {32, 31, 30}));
    QTest::mouseClick(banners->viewport(), Qt::LeftButton, {},
                      banners->visualRect(banners->model()->index(1, 0)).center());
    auto* box = find<QLineEdit>("question");
    QCOMPARE(box->text(), u"31"_s);
    // What somebody asks stays when the banner that was chosen goes.
    box->setText(u"https://m.example.com/x"_s);
    publishRows("[{'id': 30, 'weight': 5}, {'id': 32, 'weight': 1}]");
    QCOMPARE(banners->model()->rowCount(), 2);
    QCOMPARE(box->text(), u"https://m.example.com/x"_s);
    publish(table, whole);
    host().update();
    waitForTask();
}

INSPECTOR_TEST_MAIN(tst_inspector_chat)
#include "tst_inspector_chat.moc"
