#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "gift/ZGiftListMgr.h"
#include "host/ZGlobalConfig.h"
#include "models/ZBannerModel.h"
#include "models/ZGiftModel.h"
#include "models/ZTableModel.h"
#include "support/FolderTest.h"
#include "support/Tables.h"

#include <QAbstractItemModelTester>
#include <QtTest>

#include <random>

using Tester = QAbstractItemModelTester;

namespace {

/** Writes the table's file and has it loaded as a program would. */
bool load(const QString& table, const QByteArray& bytes)
{
    const TableStatus status = statusOf(table);
    ZTestFolder::write(status.path, bytes);
    return ZDataTableMgr::getInstance()->loadTable(EDataTable::EDataTableType(status.kind));
}

/** Gifts by "id:price", between spaces. */
bool loadGifts(const QString& gifts)
{
    QJsonArray rows;
    for (const QString& gift : gifts.split(u' ', Qt::SkipEmptyParts)) {
        const QStringList parts = gift.split(u':');
        rows.append(QJsonObject {
            {u"giftId"_s, parts.at(0)}, {u"price"_s, parts.at(1).toInt()}, {u"valid"_s, true}});
    }
    return load(u"CS_GiftList"_s, tableBytes(statusOf(u"CS_GiftList"_s), u"*"_s, rows));
}

QString giftAt(const ZRecordModel& model, int row)
{
    return u"%1:%2"_s.arg(model.key(row), model.value(row, u"price"_s).toString());
}

/** What a view knows that trusts the model's announcements, and the announcements. */
class Follower : public QObject
{
public:
    explicit Follower(const ZRecordModel& model)
        : m_model(model)
    {
        readAll();
        using Model = QAbstractItemModel;
        connect(&model, &Model::rowsInserted, this, [this](const auto&, int first, int last) {
            note(u"insert"_s, first, last);
            for (int row = first; row <= last; ++row)
                m_rows.insert(row, giftAt(m_model, row));
        });
        connect(&model, &Model::rowsRemoved, this, [this](const auto&, int first, int last) {
            note(u"remove"_s, first, last);
            m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        });
        connect(&model, &Model::dataChanged, this, [this](const auto& first, const auto& last) {
            note(u"change"_s, first.row(), last.row());
            for (int row = first.row(); row <= last.row(); ++row)
                m_rows[row] = giftAt(m_model, row);
        });
        connect(&model, &Model::layoutChanged, this, [this] {
            m_told.append(u"order"_s);
            readAll();
        });
        connect(&model, &Model::modelReset, this, [this] { m_told.append(u"reset"_s); });
    }

    QStringList told() const { return m_told; }
    QString rows() const { return m_rows.join(u' '); }

private:
    void note(const QString& what, int first, int last)
    {
        m_told.append(u"%1 %2-%3"_s.arg(what).arg(first).arg(last));
    }
    void readAll()
    {
        m_rows.clear();
        for (int row = 0; row < m_model.rowCount(); ++row)
            m_rows.append(giftAt(m_model, row));
    }

    const ZRecordModel& m_model;
    QStringList m_rows;
    QStringList m_told;
};

} // namespace

/** The models over the managers' records, held to Qt's own rules for models. */
class tst_models : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyTable();
    void reload_data();
    void reload();
    void reloadOfAnything();
    void failedLoad();
    void recordsWithoutKey();
    void roles();
    void giftsAtMoment();
    void bannersInOrder();
    void tables();
};

void tst_models::initTestCase()
{
    ZGlobalConfig::getInstance().setConfig(u"cmsServer"_s, u"http://127.0.0.1:9/"_s);
    ZGlobalConfig::getInstance().setConfig(u"ServerType"_s, u"1002"_s);
}

void tst_models::everyTable()
{
    for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
        ZRecordModel model(status.table);
        const Tester tester(&model, Tester::FailureReportingMode::QtTest);
        if (status.declaration == nullptr) {
            QCOMPARE(model.columnCount(), 0);
            continue;
        }
        QJsonArray row;
        for (const ColumnSchema& column : status.declaration->schema().columns) {
            row.append(column.conversion == u"flag"_s ? QJsonValue(true) : QJsonValue(u"7"_s));
            QCOMPARE(model.columnOf(column.name) >= 0, !column.field.isEmpty());
        }
        const QString columns = columnsOf(*status.declaration);
        const QString path = tableOf(columns.isEmpty() ? u"text"_s : columns,
                                     QJsonArray {row.isEmpty() ? QJsonArray {u"7"_s} : row});
        QVERIFY2(status.declaration->load(path), qPrintable(status.table));
        model.refresh();
        QCOMPARE(model.rowCount(), status.declaration->recordCount());
        const QJsonArray records = status.declaration->records();
        for (int i = 0; i < model.rowCount() && records.at(i).isObject(); ++i) {
            for (int c = 0; c < model.columnCount(); ++c)
                QCOMPARE(QJsonValue::fromVariant(model.index(i, c).data(ZRecordModel::ValueRole)),
                         records.at(i)[model.schema(c)->name]);
        }
    }
}

void tst_models::reload_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("equal") << u"A:1 B:2"_s << u"A:1 B:2"_s << QStringList();
    QTest::newRow("first") << u""_s << u"A:1 B:2"_s << QStringList {u"insert 0-1"_s};
    QTest::newRow("insert") << u"A:1 B:2"_s << u"X:0 A:1 Y:0 Z:0 B:2 W:0"_s
                            << QStringList {u"insert 0-0"_s, u"insert 2-3"_s, u"insert 5-5"_s};
    QTest::newRow("remove") << u"X:0 A:1 Y:0 Z:0 B:2 W:0"_s << u"A:1 B:2"_s
                            << QStringList {u"remove 5-5"_s, u"remove 2-3"_s, u"remove 0-0"_s};
    QTest::newRow("change") << u"A:1 B:2 C:3 D:4"_s << u"A:1 B:9 C:9 D:4"_s
                            << QStringList {u"change 1-2"_s};
    QTest::newRow("move") << u"A:1 B:2 C:3"_s << u"C:3 A:1 B:2"_s << QStringList {u"order"_s};
    QTest::newRow("all") << u"A:1 B:2 C:3 D:4"_s << u"D:4 E:5 A:7 C:3"_s
                         << QStringList {u"order"_s, u"remove 3-3"_s, u"insert 3-3"_s, u"order"_s,
                                         u"change 2-2"_s};
    QTest::newRow("same id") << u"A:1 A:2 B:3"_s << u"A:1 A:2 A:5 B:3"_s
                             << QStringList {u"insert 2-2"_s};
    QString many;
    QString half;
    for (int i = 0; i < 400; ++i) {
        many += u"%1:%1 "_s.arg(i);
        half += i % 2 == 0 ? QString() : u"%1:%1 "_s.arg(i);
    }
    QTest::newRow("many gone") << many.trimmed() << half.trimmed()
                               << QStringList {u"order"_s, u"remove 200-399"_s};
    QTest::newRow("many changed") << many.trimmed()
                                  << many.trimmed()
                                         .replace(u"1:"_s, u"1:7"_s)
                                         .replace(u"3:"_s, u"3:7"_s)
                                         .replace(u"5:"_s, u"5:7"_s)
                                  << QStringList {u"change 1-395"_s};
    QTest::newRow("many come") << half.trimmed() << many.trimmed()
                               << QStringList {u"insert 200-399"_s, u"order"_s};
}

void tst_models::reload()
{
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QVERIFY(loadGifts(before));
    ZRecordModel model(u"CS_GiftList"_s);
    const Tester tester(&model, Tester::FailureReportingMode::QtTest);
    const Follower follower(model);
    QList<QPersistentModelIndex> held;
    QStringList keys;
    for (int row = 0; row < model.rowCount(); ++row) {
        held.append(model.index(row, 1));
        keys.append(model.key(row));
    }
    QVERIFY(loadGifts(after));
    QTEST(follower.told(), "told");
    QCOMPARE(follower.rows(), after);
    for (int i = 0; i < keys.size(); ++i) {
        if (!after.contains(keys.at(i) + u':'))
            QVERIFY(!held.at(i).isValid());
        else
            QCOMPARE(model.key(held.at(i).row()), keys.at(i));
    }
}

void tst_models::reloadOfAnything()
{
    std::mt19937 random(7);
    const auto below = [&random](int end) { return static_cast<int>(random() % end); };
    QVERIFY(loadGifts({}));
    ZRecordModel model(u"CS_GiftList"_s);
    const Tester tester(&model, Tester::FailureReportingMode::QtTest);
    const Follower follower(model);
    for (int turn = 0; turn < 60; ++turn) {
        QStringList gifts;
        for (int i = below(12); i > 0; --i)
            gifts.append(u"%1:%2"_s.arg(QChar('A' + below(8))).arg(below(3)));
        const QString wanted = gifts.join(u' ');
        QVERIFY(loadGifts(wanted));
        QCOMPARE(follower.rows(), wanted);
    }
    QVERIFY(!follower.told().contains(u"reset"_s));
}

void tst_models::failedLoad()
{
    QVERIFY(loadGifts(u"A:1 B:2"_s));
    ZRecordModel model(u"CS_GiftList"_s);
    const Follower follower(model);
    QVERIFY(!load(u"CS_GiftList"_s, "no table"));
    QCOMPARE(follower.told(), QStringList());
    // Another way in than by ZDataTableMgr, which the model has to be told of.
    ZGiftListMgr::getInstance()->clear();
    QCOMPARE(giftAt(model, 1), u"B:2"_s);
    model.refresh();
    QCOMPARE(follower.told(), QStringList {u"remove 0-1"_s});
}

void tst_models::recordsWithoutKey()
{
    const auto phrases = [](const QByteArray& rows) {
        return load(u"GroupWelComeWord"_s, tableBytes(u"text"_s, rows));
    };
    QVERIFY(phrases("[['Hi'], ['Ho'], ['Hi']]"));
    ZRecordModel model(u"GroupWelComeWord"_s);
    const Tester tester(&model, Tester::FailureReportingMode::QtTest);
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), u"text"_s);
    const QPersistentModelIndex second = model.index(2, 0);
    QVERIFY(phrases("[['New'], ['Hi'], ['Hi']]"));
    QCOMPARE(second.row(), 2);
    QCOMPARE(second.data().toString(), u"Hi"_s);
    QCOMPARE(model.value(0, u"text"_s).toString(), u"New"_s);
}

void tst_models::roles()
{
    const QByteArray gift = "[{'giftId': 'A', 'price': 5, 'valid': true, 'isVisible': true, "
                            "'startTime': '2026-01-05 16:30:00'}]";
    const TableStatus status = statusOf(u"CS_GiftList"_s);
    QVERIFY(load(status.table, tableBytes(status, u"*"_s, jsonOf(gift))));
    ZRecordModel model(status.table);
    const auto role = [&model](const char* name) { return model.roleNames().key(name); };
    const QModelIndex any = model.index(0, 0);
    QCOMPARE(any.data(role("giftId")), QVariant(u"A"_s));
    QCOMPARE(any.data(role("price")), QVariant(5));
    QCOMPARE(any.data(role("isVisible")), QVariant(true));
    QCOMPARE(model.rowOf(u"A"_s), 0);
    QCOMPARE(model.rowOf(u"B"_s), -1);
    const QModelIndex start = model.index(0, model.columnOf(u"startTime"_s));
    QCOMPARE(start.data().toString(), u"2026-01-05 16:30:00"_s);
    QCOMPARE(start.data(ZRecordModel::ValueRole).userType(), int(QMetaType::LongLong));
}

void tst_models::giftsAtMoment()
{
    const TableStatus status = statusOf(u"CS_GiftList"_s);
    const QString row = u"{'giftId': '%1', 'valid': true, 'isVisible': true, 'giftLabelId': 'L', "
                        "'startTime': '2026-01-01 00:00:00', 'endTime': '2026-01-%2 00:00:00'}"_s;
    const QString rows = u"[%1, %2, %3]"_s.arg(row.arg(u"A"_s, u"10"_s), row.arg(u"B"_s, u"20"_s),
                                               row.arg(u"C"_s, u"10"_s));
    QVERIFY(load(status.table, tableBytes(status, u"*"_s, jsonOf(rows.toUtf8()))));
    ZGiftModel model;
    const Tester tester(&model, Tester::FailureReportingMode::QtTest);
    const qint64 end = model.value(0, u"endTime"_s).toLongLong();
    model.setTime(end);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setTime(end + 1);
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.at(0).at(1).toModelIndex().row(), 0);
    QCOMPARE(changes.at(1).at(0).toModelIndex().row(), 2);
    QVERIFY(!model.index(0, 0).data(model.sendableRole()).toBool());
    QVERIFY(model.index(1, 0).data(model.sendableRole()).toBool());
    QVERIFY(
        loadTable<ZGiftLabelMgr>("[{'id': 'L', 'giftLabelName': 'new', 'startColor': '#f00'}]"));
    const int label = model.roleNames().key("labelStartColor");
    QVERIFY(changes.last().at(2).value<QVector<int>>().contains(label));
    QCOMPARE(model.index(1, 0).data(label).toString(), u"#f00"_s);
}

void tst_models::bannersInOrder()
{
    const TableStatus status = statusOf(u"CS_BannerConfig"_s);
    const auto publish = [&status](const QByteArray& rows) {
        return load(status.table, tableBytes(status, u"required"_s, jsonOf(rows)));
    };
    QVERIFY(publish("[{'id': 1, 'weight': 3, 'bannerContent': 'a'}, {'id': 2, 'weight': 2}]"));
    ZBannerModel model(false);
    const Tester tester(&model, Tester::FailureReportingMode::QtTest);
    QCOMPARE(model.key(0), u"2"_s);
    const QPersistentModelIndex two = model.index(0, 0);
    QVERIFY(publish("[{'id': 1, 'weight': 1, 'bannerContent': 'a'}, {'id': 2, 'weight': 2}]"));
    QCOMPARE(two.row(), 1);
    QVERIFY(model.index(0, 0).data(model.imagePathRole()).toString().startsWith(u"res/images/"_s));
}

void tst_models::tables()
{
    ZTableModel model;
    const Tester tester(&model, Tester::FailureReportingMode::QtTest);
    const int row = model.rowOf(u"CS_GiftList"_s);
    const auto cell = [&](int column) { return model.index(row, column).data(); };
    QVERIFY(model.setData(model.index(row, ZTableModel::Version), 57));
    QVERIFY(!model.setData(model.index(row, ZTableModel::Version), u"new"_s));
    QVERIFY(!model.setData(model.index(row, ZTableModel::Size), 57));
    QCOMPARE(cell(ZTableModel::Version).toInt(), 57);

    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    QVERIFY(loadGifts(u"A:1 B:2"_s));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(cell(ZTableModel::Records).toInt(), 2);
    QCOMPARE(cell(ZTableModel::State).toInt(), int(TableStatus::Loaded));
    QVERIFY(cell(ZTableModel::Modified).isValid());
    QVERIFY(!load(u"CS_GiftList"_s, "no table"));
    QCOMPARE(cell(ZTableModel::State).toInt(), int(TableStatus::Failed));
    QVERIFY(cell(ZTableModel::Error).toString().contains(u": not JSON at byte 1"_s));
    QCOMPARE(cell(ZTableModel::Records).toInt(), 2);
    QCOMPARE(model.index(row, 0).data(model.roleNames().key("records")), QVariant(2));
    QVERIFY(!model.index(model.rowOf(u"CS_PkRankInfo"_s), ZTableModel::Records).data().isValid());
    // By another hand.
    changes.clear();
    ZTestFolder::write(model.status(row).path, "four");
    model.refresh();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(cell(ZTableModel::Size).toInt(), 4);
}

QTEST_GUILESS_MAIN(tst_models)
#include "tst_models.moc"
