#include "inspector/parts/RawTables.h"
#include "models/ZTableModel.h"
#include "support/InspectorTest.h"
#include "why/RawTable.h"

#include <QCheckBox>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QTextBrowser>
#include <QTextDocument>

/** The tables' records beside the rows of their files. */
class tst_inspector_tables : public InspectorTest
{
    Q_OBJECT

private Q_SLOTS:
    void tableRow();
    void search();
    void changeIsHighlighted();
    void lostRows();
    void filesAreReadOnce();
    void markupIsText();
    void nothingOfThatName_data();
    void nothingOfThatName();
    void columnsOfEachTable();
    void anyTable_data();
    void anyTable();
    void reloadKeepsThePlace();
    void manyRows();

private:
    void update()
    {
        host().update();
        waitForTask();
    }
};

void tst_inspector_tables::tableRow()
{
    window().show(u"tables"_s, u"CS_GiftList/G1014"_s);
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

void tst_inspector_tables::search()
{
    window().show(u"tables"_s, u"CS_GiftList"_s);
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

void tst_inspector_tables::changeIsHighlighted()
{
    publish(u"CS_GiftList"_s, "\"星光皇冠\"", "\"月光皇冠\"");
    publish(u"CS_MedalList"_s, "\"年度贡献\"", "\"年度之星\"");
    window().show(u"tables"_s, u"CS_GiftList/G1014"_s);
    const auto* view = find<QTableView>("records");
    window().show(u"overview"_s);
    const auto changed = [this] {
        const auto* tables = find<QTableView>("tables");
        QStringList changes = column(*tables, ZTableModel::ColumnCount);
        changes.removeAll(QString());
        return changes;
    };
    click("update");
    QCOMPARE(changed(),
             (QStringList {u"1 new or changed, 0 gone"_s, u"1 new or changed, 0 gone"_s}));
    window().show(u"tables"_s);
    const QModelIndex name = view->currentIndex().siblingAtColumn(4);
    QCOMPARE(name.data().toString(), u"月光皇冠"_s);
    QVERIFY(name.data(Qt::BackgroundRole).isValid());
    QVERIFY(!name.siblingAtColumn(3).data(Qt::BackgroundRole).isValid());
    QVERIFY(!name.siblingAtRow(0).data(Qt::BackgroundRole).isValid());
    QVERIFY(find<QLabel>("changes")->text().endsWith(u"1 new or changed, 0 gone"_s));
    // Of a table that nobody looked at, too; and until the next load.
    window().show(u"tables"_s, u"CS_MedalList/13"_s);
    const QModelIndex medal = view->currentIndex();
    const auto isMarked = [medal] {
        for (int cell = 0; cell < medal.model()->columnCount(); ++cell) {
            if (medal.siblingAtColumn(cell).data(Qt::BackgroundRole).isValid())
                return true;
        }
        return false;
    };
    QVERIFY(isMarked());
    window().show(u"overview"_s);
    click("reload");
    QCOMPARE(changed(), QStringList());
    QVERIFY(!isMarked());
}

void tst_inspector_tables::lostRows()
{
    window().show(u"tables"_s, u"CS_GiftList"_s);
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
    // Whoever follows a link to such a row finds it.
    window().show(u"tables"_s, u"CS_BannerConfig/6"_s);
    QTRY_VERIFY(find<QLabel>("place")->text().startsWith(u"Row 6 of"_s));
    QVERIFY(view->isVisible() && view->currentIndex().isValid());
    box->click();
    window().show(u"tables"_s, u"CS_BannerConfig/666"_s);
    QTRY_COMPARE(failure(), u"CS_BannerConfig has no 666"_s);
}

/** Elsewhere, and again when there is another file. */
void tst_inspector_tables::filesAreReadOnce()
{
    const QString gifts = u"CS_GiftList"_s;
    RawTables files;
    QVERIFY(files.get(gifts) == nullptr && !files.filesFor(u"gift"_s));
    QTRY_VERIFY(!files.isReading());
    const RawTables::File read = files.get(gifts);
    QVERIFY(read != nullptr && files.filesFor(u"gift"_s)(gifts)->find(u"G1014"_s) != nullptr);
    QCOMPARE(files.get(gifts)->rows().constData(), read->rows().constData());
    QByteArray bytes = ZTestFolder::read(read->origin().file);
    ZTestFolder::write(read->origin().file, bytes.replace("G1014", "G1014b"));
    QVERIFY(files.get(gifts) == nullptr);
    QTRY_VERIFY(!files.isReading());
    QVERIFY(files.get(gifts)->find(u"G1014"_s) == nullptr);
}

void tst_inspector_tables::markupIsText()
{
    publish(u"Message"_s, "%1", "<img src='shown.png'><b>%1</b>");
    window().show(u"overview"_s);
    click("update");
    window().show(u"tables"_s, u"Message"_s);
    auto* box = find<QLineEdit>("search");
    box->setText(u"shown.png"_s);
    auto* records = find<QTableView>("records");
    records->setCurrentIndex(records->model()->index(0, 0));
    const auto* cells = find<QTableWidget>("cells");
    QTRY_VERIFY(!cells->findItems(u"shown.png"_s, Qt::MatchContains).isEmpty());
    for (const QTableWidgetItem* cell : cells->findItems(u"shown.png"_s, Qt::MatchContains)) {
        QVERIFY(!cell->toolTip().contains(u"<img"_s));
        QTextDocument tip;
        tip.setHtml(cell->toolTip());
        QVERIFY2(tip.toPlainText().contains(cell->text()), qPrintable(cell->toolTip()));
    }
    box->clear();
}

void tst_inspector_tables::nothingOfThatName_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("thing");
    QTest::newRow("table") << u"tables"_s << u"CS_Nothing"_s;
    QTest::newRow("record") << u"tables"_s << u"CS_GiftList/G9"_s;
    QTest::newRow("key with a slash") << u"tables"_s << u"CS_GiftList/G1014/2"_s;
    QTest::newRow("medal") << u"people"_s << u"medal/99999"_s;
    QTest::newRow("frame") << u"people"_s << u"frame/x"_s;
    QTest::newRow("shelf") << u"people"_s << u"hat/1"_s;
    QTest::newRow("rank") << u"look"_s << u"nobility/99"_s;
    QTest::newRow("part") << u"look"_s << u"hat/1"_s;
    QTest::newRow("file") << u"cache"_s << u"res/nothing"_s;
    QTest::newRow("gift") << u"gifts"_s << u"G9"_s;
    QTest::newRow("banner") << u"pages"_s << u"99999"_s;
    QTest::newRow("mark-up") << u"gifts"_s << u"<b>%1&amp;</b>"_s;
}

void tst_inspector_tables::nothingOfThatName()
{
    QFETCH(const QString, page);
    QFETCH(const QString, thing);
    update();
    QCOMPARE(failure(), QString());
    window().show(page, thing);
    if (page == u"cache") { // which is being read
        QTRY_VERIFY(find<QTableView>("entries")->model()->rowCount() > 0);
        window().show(page, thing);
    }
    const auto* answer = window().current()->findChild<QTextBrowser*>(u"explanation"_s);
    const auto told = [&] {
        return page == u"gifts" || page == u"pages" ? answer->toPlainText() : failure();
    };
    const QString name = page == u"tables" ? thing.section(u'/', 1) : thing;
    QTRY_VERIFY2(told().contains(name) && !told().isEmpty(), qPrintable(told()));
}

void tst_inspector_tables::columnsOfEachTable()
{
    window().show(u"tables"_s, u"CS_GiftList"_s);
    QHeaderView* header = find<QTableView>("records")->horizontalHeader();
    header->moveSection(4, 0);
    header->resizeSection(2, 133);
    window().show(u"tables"_s, u"CS_MedalList"_s);
    QCOMPARE(header->visualIndex(4), 4);
    QVERIFY(header->sectionSize(2) != 133);
    window().show(u"tables"_s, u"CS_GiftList"_s);
    QCOMPARE(header->visualIndex(4), 0);
    QCOMPARE(header->sectionSize(2), 133);
    header->moveSection(0, 4);
}

void tst_inspector_tables::anyTable_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<int>("records");
    const TableStatus medals = statusOf(u"CS_MedalList"_s);
    const auto table = [&medals](const QByteArray& rows) {
        return tableBytes(medals, u"*"_s, jsonOf(rows));
    };
    QTest::newRow("empty") << QByteArray() << false << 0;
    QTest::newRow("text") << QByteArray("<html>not found</html>") << false << 0;
    QTest::newRow("cut off") << published(medals.table).left(400) << false << 0;
    QTest::newRow("columns alone") << table("[]") << true << 0;
    QTest::newRow("one row") << table("[{'medalId': '7'}]") << true << 1;
}

void tst_inspector_tables::anyTable()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, isTaken);
    QFETCH(const int, records);
    const QString medals = u"CS_MedalList"_s;
    const QByteArray whole = published(medals);
    window().show(u"tables"_s, medals);
    const auto* view = find<QTableView>("records");
    const int before = view->model()->rowCount();
    QVERIFY(before > 2);
    publish(medals, bytes);
    update();
    QVERIFY2(isTaken ? failure().isEmpty() : failure().contains(medals), qPrintable(failure()));
    QVERIFY2(!failure().contains(u'\n'), qPrintable(failure())); // the others are well
    QCOMPARE(view->model()->rowCount(), isTaken ? records : before);
    QTest::keyClick(&window(), Qt::Key_F5);
    publish(medals, whole);
    update();
    QCOMPARE(failure(), QString());
    QCOMPARE(view->model()->rowCount(), before);
}

/** Gifts G0000 to G0299 in some order, and what else is wanted. */
static QJsonArray gifts(int first, int last, int step)
{
    QJsonArray rows;
    for (int i = first; i != last; i += step)
        rows.append(QJsonObject {{u"giftId"_s, u"G%1"_s.arg(i, 4, 10, QChar(u'0'))},
                                 {u"giftName"_s, u"gift %1"_s.arg(i)},
                                 {u"price"_s, i * 37 % 1000},
                                 {u"valid"_s, true}});
    return rows;
}

void tst_inspector_tables::reloadKeepsThePlace()
{
    const QString table = u"CS_GiftList"_s;
    const QByteArray whole = published(table);
    publish(table, tableBytes(statusOf(table), u"*"_s, gifts(0, 300, 1)));
    update();
    window().show(u"tables"_s, table + u"/G0150"_s);
    auto* view = find<QTableView>("records");
    auto* box = find<QLineEdit>("search");
    box->setText(u"giftid:G0"_s);
    view->sortByColumn(3, Qt::DescendingOrder);
    view->scrollTo(view->currentIndex(), QAbstractItemView::PositionAtCenter);
    const int scrolled = view->verticalScrollBar()->value();
    QVERIFY(scrolled > 0);

    QJsonArray now = gifts(309, -1, -1);
    for (int i = 0; i < 10; ++i)
        now.removeAt(now.size() - 11);
    now.append(QJsonObject {{u"giftId"_s, u"H1"_s}, {u"valid"_s, true}});
    publish(table, tableBytes(statusOf(table), u"*"_s, now));
    update();
    QCOMPARE(box->text(), u"giftid:G0"_s);
    QCOMPARE(view->model()->rowCount(), 300);
    QVERIFY(!column(*view, 2).contains(u"H1"_s) && !column(*view, 2).contains(u"G0010"_s));
    const QStringList prices = column(*view, 3);
    QVERIFY(std::is_sorted(prices.begin(), prices.end(), [](const QString& a, const QString& b) {
        return a.toInt() > b.toInt();
    }));
    QCOMPARE(view->currentIndex().siblingAtColumn(2).data().toString(), u"G0150"_s);
    QVERIFY(view->selectionModel()->isRowSelected(view->currentIndex().row(), {}));
    QCOMPARE(view->selectionModel()->selectedRows().size(), 1);
    QCOMPARE(view->verticalScrollBar()->value(), scrolled);
    QVERIFY(find<QLabel>("changes")->text().startsWith(u"300 of 301 rows"_s));
    const auto* cells = find<QTableWidget>("cells");
    QTRY_VERIFY(!cells->findItems(u"\"gift 150\""_s, Qt::MatchExactly).isEmpty());
    box->clear();
    view->sortByColumn(-1, Qt::AscendingOrder);
    publish(table, whole);
    update();
}

void tst_inspector_tables::manyRows()
{
    const QString table = u"CS_GiftList"_s;
    const QByteArray whole = published(table);
    publish(table, tableBytes(statusOf(table), u"*"_s, gifts(0, 20000, 1)));
    update();
    QCOMPARE(failure(), QString());
    window().show(u"tables"_s, table + u"/G19999"_s);
    auto* view = find<QTableView>("records");
    QCOMPARE(view->model()->rowCount(), 20000);
    QCOMPARE(view->currentIndex().row(), 19999);
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"19998"_s);
    QCOMPARE(column(*view, 2), QStringList {u"G19998"_s});
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    view->setFocus();
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().count(u'\n'), 19999);
    publish(table, whole);
    update();
    QCOMPARE(failure(), QString());
}

INSPECTOR_TEST_MAIN(tst_inspector_tables)
#include "tst_inspector_tables.moc"
