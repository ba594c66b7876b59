#include "support/InspectorTest.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableView>

/** The files and the log. */
class tst_inspector_cache : public InspectorTest
{
    Q_OBJECT

private Q_SLOTS:
    void tidying();
    void log();
};

void tst_inspector_cache::tidying()
{
    const QString stale = u"res/dataTable/stale"_s;
    ZTestFolder::write(stale, QByteArray(3000, 'x'));
    QFile file(stale);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-8),
                             QFileDevice::FileModificationTime));
    file.close();
    window().show(u"cache"_s);
    QTest::keyClick(&window(), Qt::Key_F5);
    const auto* summary = find<QLabel>("summary");
    QTRY_VERIFY2(summary->text().contains(u"would remove 1 of"_s), qPrintable(summary->text()));
    window().show(u"cache"_s, stale);
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
    QTest::keyClick(&window(), Qt::Key_F5);
    QTRY_VERIFY(summary->text().contains(u"would remove nothing"_s));
}

void tst_inspector_cache::log()
{
    window().show(u"log"_s);
    const auto* view = find<QTableView>("lines");
    auto* box = find<QLineEdit>("search");
    QTRY_VERIFY(!column(*view, 3).filter(u"GiftList.json加载完毕"_s).isEmpty());
    box->setText(u"part:update Doutu"_s);
    QVERIFY(view->model()->rowCount() > 0);
    QCOMPARE(column(*view, 3).filter(u"Doutu"_s).size(), view->model()->rowCount());
    find<QComboBox>("severity")->setCurrentIndex(3);
    QCOMPARE(view->model()->rowCount(), 0);
    find<QComboBox>("severity")->setCurrentIndex(0);
    box->clear();
}

INSPECTOR_TEST_MAIN(tst_inspector_cache)
#include "tst_inspector_cache.moc"
