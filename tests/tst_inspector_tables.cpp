#include "inspector/parts/RawTables.h"
#include "support/InspectorTest.h"
#include "why/RawTable.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QTableView>
#include <QTableWidget>
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
    window().show(u"tables"_s, u"CS_GiftList/G1014"_s);
    const auto* view = find<QTableView>("records");
    window().show(u"overview"_s);
    click("update");
    window().show(u"tables"_s);
    const QModelIndex name = view->currentIndex().siblingAtColumn(4);
    QCOMPARE(name.data().toString(), u"月光皇冠"_s);
    QVERIFY(name.data(Qt::BackgroundRole).isValid());
    QVERIFY(!name.siblingAtColumn(3).data(Qt::BackgroundRole).isValid());
    QVERIFY(!name.siblingAtRow(0).data(Qt::BackgroundRole).isValid());
    QVERIFY(find<QLabel>("changes")->text().endsWith(u"1 new or changed, 0 gone"_s));
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

INSPECTOR_TEST_MAIN(tst_inspector_tables)
#include "tst_inspector_tables.moc"
