#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZHttpComm.h"
#include "inspector/host/LogModel.h"
#include "inspector/parts/AnimatedPng.h"
#include "inspector/parts/CacheScan.h"
#include "inspector/parts/ChangeMarks.h"
#include "inspector/parts/ChatLines.h"
#include "inspector/parts/DerivedColumn.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/NinePatch.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/SpaceLayout.h"
#include "inspector/parts/TimeSlider.h"
#include "models/ZRecordModel.h"
#include "support/FolderTest.h"
#include "support/Literals.h"
#include "support/Patience.h"
#include "support/Tables.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDateTimeEdit>
#include <QHeaderView>
#include <QPainter>
#include <QSettings>
#include <QSlider>
#include <QStandardItemModel>
#include <QTcpServer>
#include <QTcpSocket>
#include <QToolButton>
#include <QtTest>

#include <random>

using Tester = QAbstractItemModelTester;

namespace {

/** Numbers that are the same in every run. */
class Dice
{
public:
    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }

private:
    std::mt19937 m_random {7};
};

QList<QStandardItem*> rowOf(const QStringList& cells)
{
    QList<QStandardItem*> row;
    for (const QString& cell : cells) {
        row.append(new QStandardItem(cell));
        row.last()->setData(cell, Qt::UserRole);
    }
    return row;
}

QStringList firstCells(const QAbstractItemModel& model)
{
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row)
        cells.append(model.index(row, 0).data().toString());
    return cells;
}

QByteArray pngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

QImage filled(int width, int height, const QColor& colour)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

QByteArray movingPicture()
{
    QFile file(QStringLiteral(ZGLOBAL_CONTENT) + u"/app/images/activity/tags/medal_6_moving.png"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/** What the pages of the desktop program are made of, each by itself. */
class tst_inspector_parts : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void search_data();
    void search();
    void searchOverChanges();
    void marksOfChanges();
    void marksOfManyChanges();
    void columnBehindTheOthers();
    void columnsAreKept();
    void columnsOfAnotherDay_data();
    void columnsOfAnotherDay();
    void sliderReachesEveryPlace_data();
    void sliderReachesEveryPlace();
    void timeAtTheEdges();
    void borders_data();
    void borders();
    void bubbleOfAnySize();
    void pictures_data();
    void pictures();
    void pictureUnderWayAtStop();
    void damagedAnimation();
    void spaceBySize();
    void linesOfAnything();
    void log();
};

void tst_inspector_parts::initTestCase()
{
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QCoreApplication::setOrganizationName(u"ZGlobal"_s);
}

void tst_inspector_parts::search_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QStringList>("found");
    const QStringList all {u"G1"_s, u"G2"_s, u"G3"_s};
    QTest::newRow("nothing") << u""_s << all;
    QTest::newRow("spaces") << u"  \t "_s << all;
    QTest::newRow("any column") << u"rose"_s << QStringList {u"G1"_s, u"G3"_s};
    QTest::newRow("letter case") << u"ROSE"_s << QStringList {u"G1"_s, u"G3"_s};
    QTest::newRow("all words") << u"rose 30"_s << QStringList {u"G3"_s};
    QTest::newRow("column") << u"name:rose"_s << QStringList {u"G1"_s};
    QTest::newRow("column's case") << u"NAME:Rose"_s << QStringList {u"G1"_s};
    QTest::newRow("empty word of a column") << u"name:"_s << all;
    QTest::newRow("column and word") << u"note:rose 30"_s << QStringList {u"G3"_s};
    QTest::newRow("no such column") << u"colour:red"_s << QStringList();
    QTest::newRow("address") << u"http://x"_s << QStringList {u"G2"_s};
    QTest::newRow("colon in the word") << u"note:http://x"_s << QStringList {u"G2"_s};
    QTest::newRow("quotes") << u"\"two words\""_s << QStringList {u"G2"_s};
    QTest::newRow("quotes in a column") << u"note:\"two words\""_s << QStringList {u"G2"_s};
    QTest::newRow("without quotes") << u"words two"_s << QStringList {u"G2"_s};
    QTest::newRow("open quote") << u"\"two wor"_s << QStringList {u"G2"_s};
    QTest::newRow("a quote alone") << u"\""_s << all;
    QTest::newRow("only a colon") << u":"_s << QStringList {u"G2"_s};
    QTest::newRow("no pattern") << u".*"_s << QStringList();
    QTest::newRow("Chinese") << u"name:皇冠"_s << QStringList {u"G2"_s};
    QTest::newRow("beyond the basic plane") << u"🎁"_s << QStringList {u"G3"_s};
}

void tst_inspector_parts::search()
{
    QFETCH(const QString, words);
    QStandardItemModel model;
    model.setHorizontalHeaderLabels({u"id"_s, u"name"_s, u"note"_s});
    model.appendRow(rowOf({u"G1"_s, u"Rose"_s, u"10"_s}));
    model.appendRow(rowOf({u"G2"_s, u"星光皇冠"_s, u"two words at http://x"_s}));
    model.appendRow(rowOf({u"G3"_s, u"🎁"_s, u"a rose for 30"_s}));
    FilterModel filter;
    filter.setSourceModel(&model);
    filter.setSearch(words);
    QTEST(firstCells(filter), "found");
}

/** What is known of rows from an earlier search must not outlive them. */
void tst_inspector_parts::searchOverChanges()
{
    Dice dice;
    const auto any = [&dice] { return QString::number(dice.below(300)); };
    QStandardItemModel model(0, 2);
    for (int i = 0; i < 1500; ++i)
        model.appendRow(rowOf({QString::number(i), any()}));
    FilterModel filter;
    filter.setSourceModel(&model);
    for (int turn = 0; turn < 80; ++turn) {
        const QString words = u"%1 2:%2"_s.arg(dice.below(10)).arg(dice.below(10));
        filter.setSearch(words);
        const int row = dice.below(model.rowCount());
        const int deed = dice.below(4);
        if (deed == 0)
            model.insertRow(row, rowOf({any(), any()}));
        else if (deed == 1)
            model.removeRows(row, qMin(7, model.rowCount() - row));
        else if (deed == 2)
            model.item(row, dice.below(2))->setText(any());
        else
            model.sort(1, turn % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
        FilterModel fresh;
        fresh.setSourceModel(&model);
        fresh.setSearch(words);
        QVERIFY(fresh.rowCount() > 0);
        filter.setSearch(words);
        QVERIFY2(firstCells(filter) == firstCells(fresh), qPrintable(QString::number(turn)));
    }
}

void tst_inspector_parts::marksOfChanges()
{
    Dice dice;
    QStandardItemModel model(0, 2);
    for (int i = 0; i < 6; ++i)
        model.appendRow(rowOf({QString::number(i), u"0"_s}));
    ChangeMarks marks;
    marks.setSourceModel(&model);
    const Tester tester(&marks, Tester::FailureReportingMode::QtTest);
    QSet<QString> touched;
    int gone = 0;
    for (int turn = 0; turn < 400; ++turn) {
        const int row = dice.below(model.rowCount());
        const QString key = model.item(row)->text();
        const int deed = dice.below(5);
        if (deed == 0) {
            const QString fresh = QString::number(100 + turn);
            model.insertRow(row, rowOf({fresh, u"0"_s}));
            touched.insert(fresh);
        } else if (deed == 1 && model.rowCount() > 3) {
            model.removeRow(row);
            touched.remove(key);
            ++gone;
        } else if (deed == 2) {
            model.item(row, 1)->setText(QString::number(turn + 1));
            touched.insert(key);
        } else if (deed == 3) {
            model.sort(1, turn % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
        }
        QSet<QString> marked;
        for (int i = 0; i < marks.rowCount(); ++i) {
            if (marks.index(i, 1).data(Qt::BackgroundRole).isValid())
                marked.insert(marks.index(i, 0).data().toString());
        }
        QVERIFY2(marked == touched, qPrintable(QString::number(turn)));
        QCOMPARE(marks.marked(), int(touched.size()));
        QCOMPARE(marks.gone(), gone);
    }
    model.clear();
    QCOMPARE(marks.marked() + marks.gone(), 0);
}

/** Every second row changes, of as many as a large table has, under a view sorted by what does. */
void tst_inspector_parts::marksOfManyChanges()
{
    constexpr int rows = 30000;
    const auto publish = [](int turn) {
        QJsonArray gifts;
        for (int row = 0; row < rows; ++row)
            gifts.append(QJsonObject {{u"giftId"_s, QString::number(row)},
                                      {u"price"_s, row % 2 == 0 ? row : rows * turn - row},
                                      {u"valid"_s, true}});
        const TableStatus status = statusOf(u"CS_GiftList"_s);
        ZTestFolder::write(status.path, tableBytes(status, u"*"_s, gifts));
        return ZDataTableMgr::getInstance()->loadTable(EDataTable::CS_GiftList);
    };
    QVERIFY(publish(1));
    ZRecordModel records(u"CS_GiftList"_s);
    const int price = records.columnOf(u"price"_s);
    ChangeMarks marks;
    marks.setSourceModel(&records);
    FilterModel sorted;
    sorted.setSourceModel(&marks);
    sorted.sort(price);
    QSignalSpy orders(&sorted, &QAbstractItemModel::layoutChanged);
    QVERIFY(publish(2));
    QCOMPARE(orders.size(), 1);
    QCOMPARE(marks.marked(), rows / 2);
    for (int row = 0; row < rows; ++row) {
        const auto isMarked = [&](int column) {
            return marks.index(row, column).data(Qt::BackgroundRole).isValid();
        };
        QCOMPARE(isMarked(price), row % 2 != 0);
        QVERIFY(!isMarked(price - 1) && !isMarked(price + 1));
    }
}

void tst_inspector_parts::columnBehindTheOthers()
{
    QStandardItemModel model(0, 1);
    for (const QString& key : {u"b"_s, u"c"_s, u"a"_s})
        model.appendRow(rowOf({key}));
    DerivedColumn derived(
        &model, "twice", [&model](int row) { return QString(2, model.item(row)->text().at(0)); },
        nullptr);
    const Tester tester(&derived, Tester::FailureReportingMode::QtTest);
    FilterModel filter;
    filter.setSourceModel(&derived);
    const Tester filterTester(&filter, Tester::FailureReportingMode::QtTest);
    filter.setSearch(u"twice:bb"_s);
    QCOMPARE(firstCells(filter), QStringList {u"b"_s});
    filter.setSearch({});
    filter.sort(1);
    QCOMPARE(firstCells(filter), (QStringList {u"a"_s, u"b"_s, u"c"_s}));
    // What a view holds on to stays where it is when the rows below change their order.
    const QPersistentModelIndex held = derived.index(1, 1);
    model.sort(0, Qt::DescendingOrder);
    QCOMPARE(held.row(), 0);
    QCOMPARE(held.column(), 1);
    QCOMPARE(held.data().toString(), u"cc"_s);
    model.insertRow(0, rowOf({u"d"_s}));
    QCOMPARE(held.data().toString(), u"cc"_s);
    QCOMPARE(filter.index(3, 1).data().toString(), u"dd"_s);
}

void tst_inspector_parts::columnsAreKept()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QDir::currentPath());
    QStandardItemModel model(1, 4);
    const auto shown = [&model] {
        auto view = std::make_unique<RecordView>();
        view->setModel(&model);
        view->keepColumns(u"kept"_s);
        view->show();
        return view;
    };
    {
        const auto view = shown();
        view->setColumnWidth(1, 123);
        view->horizontalHeader()->moveSection(3, 0);
        view->sortByColumn(2, Qt::DescendingOrder);
        view->keepColumns(u"another"_s); // which nobody has touched
        QVERIFY(view->columnWidth(1) != 123);
        QCOMPARE(view->horizontalHeader()->visualIndex(3), 3);
    }
    const auto view = shown();
    QCOMPARE(view->columnWidth(1), 123);
    QCOMPARE(view->horizontalHeader()->visualIndex(3), 0);
    // In the table's own order, whatever it was sorted by.
    QCOMPARE(view->horizontalHeader()->sortIndicatorSection(), -1);
}

void tst_inspector_parts::columnsOfAnotherDay_data()
{
    QTest::addColumn<QVariant>("state");
    QTest::newRow("text") << QVariant(u"wide"_s);
    QTest::newRow("bytes") << QVariant(QByteArray("\0\1\2\3", 4));
    QHeaderView other(Qt::Horizontal);
    QStandardItemModel model(1, 7);
    other.setModel(&model);
    const QByteArray state = other.saveState();
    QTest::newRow("cut off") << QVariant(state.left(state.size() / 2));
    QTest::newRow("more columns") << QVariant(state);
}

void tst_inspector_parts::columnsOfAnotherDay()
{
    QFETCH(const QVariant, state);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QDir::currentPath());
    QSettings().setValue(u"columns/odd"_s, state);
    QStandardItemModel model;
    model.appendRow(rowOf({u"a"_s, QString(200, u'w'), u"b"_s}));
    RecordView view;
    view.setModel(&model);
    view.keepColumns(u"odd"_s);
    view.show();
    QCOMPARE(view.horizontalHeader()->count(), 3);
    for (int column = 0; column < 3; ++column)
        QVERIFY2(!view.isColumnHidden(column) && view.columnWidth(column) > 0,
                 qPrintable(QString::number(column)));
    // As if nothing had been kept, where that is of no use.
    if (qstrcmp(QTest::currentDataTag(), "more columns") != 0)
        QVERIFY(view.columnWidth(0) < view.columnWidth(1));
}

void tst_inspector_parts::sliderReachesEveryPlace_data()
{
    QTest::addColumn<QVector<qint64>>("changes");
    QTest::newRow("none") << QVector<qint64>();
    QTest::newRow("days") << QVector<qint64> {1700000000, 1700086400, 1700172800};
    QTest::newRow("odd lengths") << QVector<qint64> {1700000000, 1700005401, 1700009999};
    QTest::newRow("seconds") << QVector<qint64> {1700000000, 1700000001, 1700000011};
    QTest::newRow("same twice") << QVector<qint64> {1700000000, 1700000000};
    QTest::newRow("no date") << QVector<qint64> {0, -1, 1700000000};
    QTest::newRow("year 9999") << QVector<qint64> {1700000000, 253402271999};
}

void tst_inspector_parts::sliderReachesEveryPlace()
{
    QFETCH(const QVector<qint64>, changes);
    TimeSlider time;
    time.setChanges(changes);
    auto* slider = time.findChild<QSlider*>(u"time"_s);
    slider->setValue(slider->minimum());
    QVector<qint64> seen {time.time()};
    for (int press = 0; press < slider->maximum(); ++press) {
        QTest::keyClick(slider, Qt::Key_Right);
        QVERIFY(time.time() >= seen.last());
        seen.append(time.time());
    }
    QCOMPARE(slider->value(), slider->maximum());
    for (const qint64 change : changes)
        QVERIFY2(seen.contains(change), qPrintable(QString::number(change)));
    for (int press = slider->maximum() - 1; press >= 0; --press) {
        QTest::keyClick(slider, Qt::Key_Left);
        QCOMPARE(time.time(), seen.at(press));
    }
    // Each change by the buttons, there and back.
    auto* later = time.findChild<QToolButton*>(u"later"_s);
    auto* earlier = time.findChild<QToolButton*>(u"earlier"_s);
    QVector<qint64> steps {time.time()};
    for (int step = 0; step < changes.size() + 2; ++step) {
        later->click();
        steps.append(time.time());
    }
    for (const qint64 change : changes)
        QVERIFY(steps.contains(change));
    QCOMPARE(slider->value(), slider->maximum());
    for (int step = 0; step < changes.size() + 2; ++step)
        earlier->click();
    QCOMPARE(slider->value(), 0);
}

void tst_inspector_parts::timeAtTheEdges()
{
    TimeSlider time;
    QSignalSpy changes(&time, &TimeSlider::sigTimeChanged);
    auto* edit = time.findChild<QDateTimeEdit*>(u"moment"_s);
    const QVector<QDateTime> moments {
        QDateTime({2023, 12, 31}, {23, 59, 59}), QDateTime({2024, 1, 1}, {0, 0}),
        QDateTime({2024, 2, 29}, {12, 0}), QDateTime({1970, 1, 2}, {0, 0, 1}),
        QDateTime({9999, 12, 31}, {23, 59, 59})};
    for (const QDateTime& moment : moments) {
        time.setTime(moment.toSecsSinceEpoch());
        QCOMPARE(edit->dateTime(), moment);
        QCOMPARE(changes.takeLast().first().toLongLong(), moment.toSecsSinceEpoch());
    }
    // A second on, by the keyboard, over the end of a leap day.
    time.setTime(QDateTime({2024, 2, 29}, {23, 59, 59}).toSecsSinceEpoch());
    edit->setCurrentSection(QDateTimeEdit::DaySection);
    edit->stepUp();
    QVERIFY(edit->dateTime().isValid());
    QCOMPARE(QDateTime::fromSecsSinceEpoch(time.time()), edit->dateTime());
}

void tst_inspector_parts::borders_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isRight");
    QTest::addColumn<QVector<int>>("sides"); // left, top, right, bottom
    QTest::newRow("one") << u"7"_s << true << QVector<int> {7, 7, 7, 7};
    QTest::newRow("four") << u"1,2,3,4"_s << true << QVector<int> {4, 1, 2, 3};
    QTest::newRow("spaces") << u" 1, 2 ,3,4 "_s << true << QVector<int> {4, 1, 2, 3};
    QTest::newRow("below zero") << u"-5"_s << true << QVector<int> {-5, -5, -5, -5};
    QTest::newRow("empty") << u""_s << false << QVector<int> {0, 0, 0, 0};
    QTest::newRow("two") << u"1,2"_s << false << QVector<int> {0, 0, 0, 0};
    QTest::newRow("five") << u"1,2,3,4,5"_s << false << QVector<int> {0, 0, 0, 0};
    QTest::newRow("words") << u"1,2,3,x"_s << false << QVector<int> {0, 0, 0, 0};
    QTest::newRow("nothing between") << u"1,,3,4"_s << false << QVector<int> {0, 0, 0, 0};
    QTest::newRow("beyond an int") << u"99999999999"_s << false << QVector<int> {0, 0, 0, 0};
}

void tst_inspector_parts::borders()
{
    QFETCH(const QString, text);
    bool isRight = true;
    const QMargins margins = NinePatch::widths(text, &isRight);
    QTEST(isRight, "isRight");
    const QVector<int> sides {margins.left(), margins.top(), margins.right(), margins.bottom()};
    QTEST(sides, "sides");
}

void tst_inspector_parts::bubbleOfAnySize()
{
    const QVector<QSize> pictures {{}, {1, 1}, {2, 2}, {3, 3}, {20, 10}, {300, 1}};
    const QVector<int> widths {-5, 0, 1, 4, 5, 400};
    const QSize text(60, 12);
    for (const QSize& size : pictures) {
        for (const int width : widths) {
            const QMargins borders(width, width, width, width);
            const QImage image =
                size.isEmpty() ? QImage() : filled(size.width(), size.height(), Qt::red);
            const NinePatch patch(image, borders, {2, 2, 2, 2});
            const QRect place({}, patch.sizeFor(text));
            const QString input = u"%1x%2, %3"_s.arg(size.width()).arg(size.height()).arg(width);
            QVERIFY2(place.width() >= size.width() && place.height() >= size.height(),
                     qPrintable(input));
            const QRect inside = patch.textIn(place);
            QVERIFY2(inside.width() >= text.width() && inside.height() >= text.height()
                         && place.contains(inside),
                     qPrintable(input));
            if (image.isNull())
                continue;
            QImage canvas = filled(place.width(), place.height(), Qt::white);
            QPainter painter(&canvas);
            patch.paint(painter, place);
            painter.end();
            QCOMPARE(canvas.pixelColor(0, 0), QColor(Qt::red));
            QCOMPARE(canvas.pixelColor(place.center()), QColor(Qt::red));
        }
    }
    // Marks around a picture are no part of it: what is shown has none.
    QImage marked = filled(9, 9, Qt::black);
    QPainter(&marked).fillRect(1, 1, 7, 7, Qt::green);
    const NinePatch patch(marked, {3, 3, 3, 3}, {});
    QCOMPARE(patch.picture.size(), QSize(7, 7));
    QCOMPARE(patch.picture.pixelColor(0, 0), QColor(Qt::green));
    QCOMPARE(patch.borders, QMargins(2, 2, 2, 2));
}

void tst_inspector_parts::pictures_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QSize>("shown");
    const QByteArray picture = pngOf(filled(400, 100, Qt::blue));
    QByteArray huge = picture;
    huge.replace(16, 8, QByteArray("\x7f\xff\xff\xff\x7f\xff\xff\xff", 8));
    QTest::newRow("larger") << picture << QSize(64, 16);
    QTest::newRow("smaller") << pngOf(filled(3, 2, Qt::blue)) << QSize(3, 2);
    QTest::newRow("one pixel") << pngOf(filled(1, 1, Qt::blue)) << QSize(1, 1);
    QTest::newRow("a line") << pngOf(filled(9000, 1, Qt::blue)) << QSize(64, 1);
    QTest::newRow("not there") << QByteArray() << QSize(0, 0);
    QTest::newRow("text") << QByteArray("no picture") << QSize(0, 0);
    QTest::newRow("header alone") << picture.left(33) << QSize(0, 0);
    QTest::newRow("huge in its header") << huge << QSize(0, 0);
}

void tst_inspector_parts::pictures()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QSize, shown);
    const QString path = u"res/images/PICTURE"_s;
    if (!bytes.isEmpty())
        ZTestFolder::write(path, bytes);
    Pictures pictures;
    QSignalSpy loaded(&pictures, &Pictures::sigLoaded);
    const auto get = [&] { return pictures.get(path, {}, {64, 64}); };
    QVERIFY(get().isNull() && get().isNull()); // the second is already being read
    QTRY_COMPARE(loaded.size(), 1);
    QCOMPARE(loaded.first().first().toString(), path);
    QCOMPARE(get().size(), shown);
    QCOMPARE(pictures.fault(path).isEmpty(), !shown.isEmpty());
    QVERIFY(pictures.isIdle());
    if (!shown.isEmpty())
        return;
    // Once mended, it is shown when somebody looks anew.
    ZTestFolder::write(path, pngOf(filled(5, 5, Qt::blue)));
    QVERIFY(get().isNull());
    pictures.retry();
    get();
    QTRY_COMPARE(get().size(), QSize(5, 5));
    QCOMPARE(pictures.fault(path), QString());
}

/** It is no fault of the picture's that everything was called off. */
void tst_inspector_parts::pictureUnderWayAtStop()
{
    const QByteArray bytes = pngOf(filled(3, 2, Qt::blue));
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const QString address = u"http://127.0.0.1:%1/a.png"_s.arg(server.serverPort());
    const QString path = Pictures::pathOf(address);
    Pictures pictures;
    const auto get = [&] { return pictures.get(path, address, {64, 64}); };
    QVERIFY(get().isNull());
    QTRY_VERIFY(server.hasPendingConnections());
    const std::unique_ptr<QTcpSocket> silent(server.nextPendingConnection());
    pictures.pause();
    ZHttpComm::getInstance()->cancelAll();
    QTRY_COMPARE(silent->state(), QAbstractSocket::UnconnectedState);
    QCoreApplication::processEvents();
    QVERIFY(!server.hasPendingConnections() && !pictures.isIdle());
    pictures.resume();
    QTRY_VERIFY(server.hasPendingConnections());
    const std::unique_ptr<QTcpSocket> second(server.nextPendingConnection());
    QTRY_VERIFY(second->bytesAvailable() > 0);
    second->write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(bytes.size())
                  + "\r\n\r\n" + bytes);
    QTRY_COMPARE(get().size(), QSize(3, 2));
    QCOMPARE(pictures.fault(path), QString());
}

void tst_inspector_parts::damagedAnimation()
{
    const QByteArray whole = movingPicture();
    const auto frames = AnimatedPng::frames(whole);
    QCOMPARE(frames.size(), 3);
    const QSize size = frames.first().image.size();
    const auto isSound = [&size](const QVector<MovingFrame>& shown) {
        return std::all_of(shown.begin(), shown.end(), [&size](const MovingFrame& each) {
            return each.image.size() == size && each.milliseconds >= 0;
        });
    };
    for (int length = 0; length < whole.size(); length += 7)
        QVERIFY2(isSound(AnimatedPng::frames(whole.left(length))),
                 qPrintable(QString::number(length)));
    Dice dice;
    for (int turn = 0; turn < 300; ++turn) {
        QByteArray damaged = whole;
        const int place = 33 + dice.below(int(whole.size()) - 33); // behind the size
        damaged[place] = static_cast<char>(dice.below(256));
        QVERIFY2(isSound(AnimatedPng::frames(damaged)), qPrintable(QString::number(place)));
    }
}

void tst_inspector_parts::spaceBySize()
{
    Dice dice;
    for (int turn = 0; turn < 60; ++turn) {
        CacheEntry folder;
        folder.path = u"res"_s;
        for (int i = dice.below(40); i >= 0; --i) {
            CacheEntry entry;
            entry.path = u"res/%1"_s.arg(i);
            entry.bytes = dice.below(5) == 0 ? 0 : 1LL << dice.below(45);
            folder.bytes += entry.bytes;
            folder.entries.append(entry);
        }
        std::sort(
            folder.entries.begin(), folder.entries.end(),
            [](const CacheEntry& one, const CacheEntry& two) { return one.bytes > two.bytes; });
        const QRectF whole(0, 0, 1 + dice.below(900), 1 + dice.below(500));
        const auto tiles = SpaceLayout::tiles(folder, whole.size(), 20);
        const qreal share = whole.width() * whole.height() / std::max(1.0, qreal(folder.bytes));
        qreal area = 0;
        for (const SpaceTile& tile : tiles) {
            const qreal own = tile.place.width() * tile.place.height();
            area += own;
            const QByteArray input = QByteArray::number(turn) + ": " + tile.entry->path.toUtf8();
            QVERIFY2(qAbs(own - qreal(tile.entry->bytes) * share) < 1 + own / 1000, input);
            QVERIFY2(whole.adjusted(-0.01, -0.01, 0.01, 0.01).contains(tile.place), input);
            for (const SpaceTile& other : tiles) {
                const QRectF both = tile.place & other.place;
                QVERIFY2(&tile == &other || both.width() * both.height() < 0.01, input);
            }
        }
        QVERIFY(area <= whole.width() * whole.height() * 1.001);
    }
}

void tst_inspector_parts::linesOfAnything()
{
    Dice dice;
    ChatLines lines;
    const Tester tester(&lines, Tester::FailureReportingMode::QtTest);
    const QStringList some {u""_s,
                            u"晚安"_s,
                            u"🎁👨‍👩‍👧"_s,
                            QString(QChar(0xd83c)),
                            u"a"_s,
                            QString(20000, u'长')};
    for (int turn = 0; turn < 150; ++turn) {
        QStringList typed;
        for (int i = dice.below(7); i > 0; --i)
            typed.append(some.at(dice.below(int(some.size()))));
        lines.setLines(typed);
        QCOMPARE(firstCells(lines), typed);
        if (turn % 3 == 0)
            QTRY_COMPARE(lines.waiting(), 0);
    }
    // More than fits into one turn.
    lines.setLines(QVector<QString>(5000, u"晚安"_s).toList());
    QTRY_COMPARE(lines.waiting(), 0);
    QCOMPARE(lines.rowCount(), 5000);
    QCOMPARE(lines.index(4999, ChatLines::Shown).data().toString(), u"晚安"_s);
    lines.setLines({});
    QCOMPARE(lines.rowCount(), 0);
}

static void keepSilent(QtMsgType /*type*/, const QMessageLogContext& /*from*/,
                       const QString& /*text*/)
{
}

void tst_inspector_parts::log()
{
    const QtMessageHandler before = qInstallMessageHandler(&keepSilent);
    {
        LogModel log;
        const Tester tester(&log, Tester::FailureReportingMode::QtTest);
        const std::unique_ptr<QThread> other(QThread::create([] {
            for (int i = 0; i < 12000; ++i)
                qDebug("other %d", i);
        }));
        other->start();
        for (int i = 0; i < 12000; ++i)
            qWarning("line %d", i);
        other->wait();
        qCritical("two\nlines");
        const auto last = [&log] { return log.rowCount() - 1; };
        QTRY_COMPARE(log.index(last(), LogModel::Text).data().toString(), u"two\nlines"_s);
        QCOMPARE(log.index(last(), LogModel::Severity).data(LogModel::valueRole).toInt(), 3);
        QVERIFY2(log.rowCount() >= 20000 && log.rowCount() < 24000,
                 qPrintable(QString::number(log.rowCount())));
        QVERIFY(log.index(0, LogModel::Text).data().toString() != u"line 0"_s);
    }
    QVERIFY(qInstallMessageHandler(before) == &keepSilent);
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    tst_inspector_parts test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_inspector_parts.moc"
