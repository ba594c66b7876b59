#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "privilege/ZNobilityListMgr.h"
#include "support/LogLines.h"
#include "support/Tables.h"

#include <QFileInfo>
#include <QtTest>

namespace {

/** What only some tables do otherwise. */
const QSet<QString> forgetful {u"GroupWelComeWord"_s, u"ActivityAwardEffect"_s};
const QHash<QString, QString> neededForRecord {{u"GroupWelComeWord"_s, u" words"_s},
                                               {u"RecreationConfigNew"_s, u" id"_s}};

/** A cell that every conversion of the column takes. */
QJsonValue cellFor(const TableSchema& schema, const QString& name)
{
    const auto column = std::find_if(schema.columns.begin(), schema.columns.end(),
                                     [&](const ColumnSchema& one) { return one.name == name; });
    for (const QJsonValue& cell : jsonOf("['1', 1, true, '2026-01-02 03:04:05']")) {
        if (column == schema.columns.end() || column->fits == nullptr || column->fits(cell))
            return cell;
    }
    return {};
}

/** A table of these columns, with one row that makes a record, and a null. */
QByteArray wholeTable(const TableStatus& status, const QStringList& columns)
{
    QJsonArray row;
    for (const QString& column : columns)
        row.append(cellFor(status.declaration->schema(), column));
    return WorkFolder::table(columns, {row, QJsonValue()});
}

TableStatus statusOf(const QString& table)
{
    for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
        if (status.table == table)
            return status;
    }
    return {};
}

QString textOf(const QJsonValue& value)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray {value}).toJson(QJsonDocument::Compact));
}

/** Loads these bytes as the table, or a file that is not there when they are null. */
bool load(const TableStatus& status, const QByteArray& bytes)
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    const QString path = status.kind < 0 ? u"unversioned"_s : status.path;
    QFile::remove(path);
    if (!bytes.isNull())
        WorkFolder::write(path, bytes);
    return status.kind < 0 ? tables->loadUnversionedTable(status.table, path)
                           : tables->loadTable(EDataTable::EDataTableType(status.kind));
}

} // namespace

/** What every table has in common, off the managers' own declarations. */
class tst_tables : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

private Q_SLOTS:
    void initTestCase();
    void kinds();
    void loading_data();
    void loading();
    void records_data();
    void records();
};

void tst_tables::initTestCase()
{
    const auto note = [this](auto* manager, auto signal, const char* name) {
        connect(manager, signal, this, [name] { qDebug("%s", name); });
    };
    note(&ZBubbleConfigMgr::getInstance(), &ZBubbleConfigMgr::sigBubbleLoadFinish, "bubbles");
    note(&ZQuickInputMessageMgr::getInstance(), &ZQuickInputMessageMgr::sigUpdateFinished,
         "phrases");
    note(&ZGiftLabelMgr::getInstance(), &ZGiftLabelMgr::sigUpdate, "labels");
    note(ZBannerMgr::getInstance(), &ZBannerMgr::sigUpdate, "banners");
    note(&ZSystemConfigMgr::getInstance(), &ZSystemConfigMgr::sigChangeSystemConfigData,
         "settings");
    note(&zH5WebConfigMgr::getInstance(), &zH5WebConfigMgr::sigUpdate, "pages");
}

void tst_tables::kinds()
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    for (const TableStatus& status : tables->getTableStatuses())
        QCOMPARE(status.state, TableStatus::NotLoaded);
    QVERIFY(!tables->loadTable(EDataTable::CS_PkRankInfo)); // nobody reads it
    QVERIFY(!tables->loadTable(EDataTable::EDataTableType(-1)));
    QVERIFY(!tables->loadUnversionedTable(u"no table"_s, u"path"_s));
    QVERIFY(!tables->loadUnversionedTable(u"Doutu"_s, u"path"_s)); // it has a version
    QCOMPARE(tables->getTableStatus(EDataTable::Doutu).state, TableStatus::NotLoaded);
}

/**
 * What a load says where that is not the table's name with "加载完毕" on the debug channel; signals
 * are among it by the word for their records. Clients rely on both.
 */
void tst_tables::loading_data()
{
    const QHash<QString, QString> said {
        {u"SystemConfig"_s, u"info SystemConfig加载完毕|settings"_s},
        {u"NobleConsume"_s, u"loadNobleConsumeInfoListTable.json加载完毕"_s},
        {u"NobleConfig"_s, u"loadNobleConfigInfoListTable.json加载完毕"_s},
        {u"FansConfigNew"_s, u"info FansConfig加载完毕"_s},
        {u"NewChatFilterWordKey"_s, u"NewSensitiveWordsInfoList.json加载完毕"_s},
        {u"QuickInputMessage"_s, u"QuickInputMessage加载完毕|phrases"_s},
        {u"BubbleConfig"_s, u"BubbleConfig加载完毕|bubbles"_s},
        {u"H5WebConfig"_s, u"info H5WebConfig加载完毕|pages"_s},
        {u"CS_GiftList"_s, u"GiftList.json加载完毕"_s},
        {u"CS_CarList"_s, u"CarList加载完毕"_s},
        {u"CS_MedalList"_s, u"MedalList.json加载完毕"_s},
        {u"CS_HeadframeList"_s, u"ImageFrameInfoListTable.json加载完毕"_s},
        {u"CS_GiftLabel"_s, u"礼物标签表加载完毕|labels"_s},
        {u"CS_BannerConfig"_s, u"BannerList.json加载完毕|banners"_s},
        {u"CS_VideoHobbyBanner"_s, QString()},
        {u"ChatFilterWordKey"_s, u"SensitiveWordsInfoList.json加载完毕"_s},
        {u"CS_PlatFunLevel"_s, u"loadFunLevelInfoListTable.json加载完毕"_s},
        {u"GroupWelComeWord"_s, QString()},
        {u"PCSkin"_s, u"info PCSkin加载完毕"_s},
        {u"RecreationConfigNew"_s, u"RecreationConfigNew.json加载完毕"_s},
        {u"CS_FunStamp"_s, u"FunStamp加载完毕"_s},
        {u"CS_BannerConfigNew"_s, u"BannerList.json加载完毕|banners"_s},
    };
    QTest::addColumn<QString>("said");
    for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
        if (status.declaration != nullptr)
            QTest::newRow(qPrintable(status.table))
                << said.value(status.table, status.table + u"加载完毕"_s);
    }
}

void tst_tables::loading()
{
    QFETCH(QString, said);
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    const TableStatus status = statusOf(name);
    const TableDeclaration& table = *status.declaration;
    const QString required = columnsOf(table, false);
    const QStringList columns =
        QString(required + neededForRecord.value(name)).split(u' ', Qt::SkipEmptyParts);
    {
        const LogLines log;
        QVERIFY(load(status, wholeTable(status, columns)));
        QStringList lines = LogLines::lines();
        const QString ending = u"加载成功 "_s + QFileInfo(status.path).fileName();
        if (status.loadedAtStart)
            QVERIFY(lines.takeLast().endsWith(ending));
        const int informing = LogLines::lines(QtInfoMsg).size();
        QCOMPARE(informing, said.startsWith(u"info "_s) ? 1 : 0);
        QCOMPARE(lines, QString(said.mid(informing * 5)).split(u'|', Qt::SkipEmptyParts));
    }
    QCOMPARE(statusOf(name).state, TableStatus::Loaded);

    QMap<QString, QByteArray> refused {{u"a missing file"_s, QByteArray()},
                                       {u"no table"_s, "no table"}};
    for (const QString& column : required.split(u' ', Qt::SkipEmptyParts)) {
        QStringList others = columns;
        others.removeOne(column);
        refused.insert(u"a table without "_s + column, wholeTable(status, others));
    }
    for (auto file = refused.begin(); file != refused.end(); ++file) {
        QVERIFY(load(status, wholeTable(status, columns)));
        QCOMPARE(table.recordCount(), 1);
        const QJsonArray before = table.records();
        QCOMPARE(before.size(), 1);
        const LogLines log;
        QVERIFY2(!load(status, *file), qPrintable(file.key()));
        QCOMPARE(LogLines::lines().size(), status.loadedAtStart ? 1 : 0);
        QVERIFY2(table.records() == (forgetful.contains(name) ? QJsonArray() : before),
                 qPrintable(file.key()));
        QCOMPARE(statusOf(name).state, TableStatus::Failed);
    }

    QVERIFY(load(status, wholeTable(status, columns)));
    QVERIFY(load(status, WorkFolder::table(columns, {})));
    QCOMPARE(table.recordCount(), 0);
}

/** Rows and the records they become: of the shown members, those that matter to the row. */
void tst_tables::records_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char* table, const QString& columns, const QByteArray& rows,
                        const QByteArray& expected) {
        QTest::newRow(table) << columns << rows << expected;
    };
    row("QuickInputMessage", u"id item"_s, "[['2', 'b'], ['1', 'a'], null, ['2', 'c']]",
        "[{'id': '2', 'item': 'b'}, {'id': '1', 'item': 'a'}, {'id': '2', 'item': 'c'}]");
    row("Message", u"id randomId zh_cn handleType opt tabType"_s,
        "[[105, 'r', '早', 2, 'o', 3], ['105', '', 'text id', '2', '', '3'], [105.0]]",
        "[{'id': '105', 'randomId': 'r', 'zh_cn': '早', 'handleType': 2, 'opt': 'o', 'tabType': 3, "
        "'jumpUrl': ''}, {'id': '0', 'handleType': 0, 'tabType': 0}, {'id': '105', 'zh_cn': ''}]");
    row("BubbleConfig", u"bubbleId bubbleType name descs"_s, "[[12, 3], ['12', '2', 'text id']]",
        "[{'bubbleId': '12', 'bubbleType': '3', 'borderWidths': '17', 'paddings': '-10'}, "
        "{'bubbleId': '0', 'bubbleType': '0', 'name': 'text id'}]");
    row("BubbleConfig", u"paddings borderWidths bubbleId bubbleType name descs"_s,
        "[['', '20,24']]", "[{'borderWidths': '20,24', 'paddings': ''}]");
    row("Doutu", u"name version group"_s,
        "[['first', '3', '2'], ['second', 4, '1'], ['third', 'x', '2'], ['out', '1', '-1'], "
        "['zero', '1', 'x']]",
        "[{'name': 'zero', 'group': 0}, {'name': 'second', 'version': 0}, {'name': 'first', "
        "'version': 3}, {'name': 'third', 'version': 0}]");
    row("CS_BannerConfig", columnsOf(ZBannerMgr::declaration(), false),
        "[{'startDate': 4102444800999.9, 'endDate': '4102444800', 'isHalf': 1.5}]",
        "[{'startDate': 4102444800999, 'endDate': 0, 'isHalf': 0, 'showByFunLevel': -1, "
        "'tipsType': -1}]");
    row("CS_BannerConfig", columnsOf(ZBannerMgr::declaration()),
        "[{'showPosition': 'pc_anchor', 'tipsType': '2', 'name': '%1'}]",
        "[{'tipsType': 0, 'showByFunLevel': 0, 'name': '%1'}]");
    row("NobleConsume",
        u"nobleId nobleName upgradeReturnDiamond time renewReturnDiamond blackBean returnDiamond "
        "renewBlackBean"_s,
        "[['3', 'early'], ['3', 'late', '10,,30', '30', '200']]",
        "[{'nobleId': 3, 'nobleName': 'late', 'upgradeReturnDiamond': ['10', '', '30'], "
        "'time': 30, 'renewReturnDiamond': '200'}]");
    row("NobleConsume", columnsOf(ZNobilityListMgr::consumeDeclaration()), "[[4]]",
        "[{'nobleId': 0, 'time': 0, 'upgradeReturnDiamond': ['']}]");
    row("NoblePrivilegeConfig", u"sortValue icon isOpen id nobleId name"_s,
        "[[7, '', true, 'b'], [10, '', true, 'c'], [10, '', 1, 'a'], [5, '', true, 'b']]",
        "[{'id': 'b', 'sortValue': 5}, {'id': 'b', 'sortValue': 7}, {'id': 'c', 'isOpen': true}, "
        "{'id': 'a', 'isOpen': false}]");
    row("FirstRechargeBoxTask", u"rewards id amount name"_s,
        "[['G1,car_2', '10', 9.9], ['', '2', 30]]",
        "[{'id': '10', 'amount': 9.9, 'rewards': ['G1', 'car_2']}, {'id': '2', 'rewards': ['']}]");
    row("FirstRechargeBoxTask", u"id amount name"_s, "[['10']]", "[{'rewards': []}]");
    row("CS_PlatAwardEffect", u"id icon sort name flash descs"_s,
        "[[7, 'early', 1], [7.0, '/a.png', 90], [7.5, 'b', 1], ['7', 'c', '5']]",
        "[{'id': '0', 'icon': 'c', 'sort': 0}, {'id': '7', 'icon': '/a.png', 'sort': 90}]");
    row("ActivityAwardEffect",
        u"id effectIcon availableTime availableGapTime remark activityId rankType effectId name"_s,
        "[['A1', 'icon', '3600', 60, 'internal']]",
        "[{'id': 'A1', 'effectIcon': 'icon', 'availableTime': 0, 'availableGapTime': 60}]");
    row("FlashConfig", u"flashVersion flashName flashPrevDownload"_s,
        "[['11', 'zoo', '1'], ['7', 'abc'], null, ['12', 'abc', '2'], ['3', ''], [9, 'number']]",
        "[{'flashName': 'abc', 'flashVersion': 12, 'flashPrevDownload': 2}, "
        "{'flashName': 'number', 'flashVersion': 0}, {'flashName': 'zoo'}]");
    row("GroupWelComeWord", u"any other"_s, "[['Hi', ''], null, 'no', [5, 'Welcome', 'beyond']]",
        "['Hi', 'Welcome', 'beyond']");
    row("GroupWelComeWord", QString(), "[['Hi']]", "['Hi']");
}

void tst_tables::records()
{
    QFETCH(QString, columns);
    QFETCH(QByteArray, rows);
    QFETCH(QByteArray, expected);
    const TableStatus status = statusOf(QString::fromUtf8(QTest::currentDataTag()));
    QVERIFY(load(status, tableBytes(columns, rows)));
    QStringList shown;
    QStringList wanted;
    for (const QJsonValue& record : status.declaration->records()) {
        const QJsonValue whole = jsonOf(expected).at(shown.size());
        QJsonObject members = record.toObject();
        for (const QString& member : members.keys()) {
            if (!whole.toObject().contains(member))
                members.remove(member);
        }
        shown.append(textOf(record.isObject() ? members : record));
        wanted.append(textOf(whole));
    }
    QCOMPARE(shown, wanted);
    QCOMPARE(shown.size(), jsonOf(expected).size());
}

QTEST_GUILESS_MAIN(tst_tables)

#include "tst_tables.moc"
