#include "chat/ZBubbleConfigMgr.h"
#include "chat/ZQuickInputMessageMgr.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZSystemConfigMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "support/Cases.h"
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
    return ZTestTable::bytes(columns, {row, QJsonValue()});
}

/** Loads these bytes as the table, or a file that is not there when they are null. */
bool load(const TableStatus& status, const QByteArray& bytes)
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    const QString path = status.kind < 0 ? u"unversioned"_s : status.path;
    QFile::remove(path);
    if (!bytes.isNull())
        ZTestFolder::write(path, bytes);
    return status.kind < 0 ? tables->loadUnversionedTable(status.table, path)
                           : tables->loadTable(EDataTable::EDataTableType(status.kind));
}

} // namespace

/** What every table has in common, off the managers' own declarations. */
class tst_tables : public QObject
{
    Q_OBJECT

private:
    ZTestFolder m_folder;

private Q_SLOTS:
    void initTestCase()
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

    void kinds()
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

    void loading_data()
    {
        const QStringList special = Cases::rows("tables");
        for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
            if (status.declaration != nullptr && !special.contains(status.table))
                QTest::newRow(qPrintable(status.table)) << status.table + u"加载完毕"_s;
        }
    }

    /**
     * Beside the table's state, what a load says on the debug channel; signals are among it by the
     * word for their records. Clients rely on both.
     */
    void loading()
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
        QVERIFY(load(status, ZTestTable::bytes(columns, {})));
        QCOMPARE(table.recordCount(), 0);
    }

    void records_data() { Cases::rows("tables"); }

    /** Rows and the records they become: of the shown members, those that matter to the row. */
    void records()
    {
        QFETCH(QString, columns);
        QFETCH(QJsonValue, rows);
        QFETCH(QJsonValue, expected);
        const TableStatus status = statusOf(QString::fromUtf8(QTest::currentDataTag()));
        QVERIFY(load(status, tableBytes(status, columns, rows.toArray())));
        QStringList shown;
        QStringList wanted;
        for (const QJsonValue& record : status.declaration->records()) {
            const QJsonValue whole = expected[shown.size()];
            QJsonObject members = record.toObject();
            for (const QString& member : members.keys()) {
                if (!whole.toObject().contains(member))
                    members.remove(member);
            }
            shown.append(textOf(record.isObject() ? members : record));
            wanted.append(textOf(whole));
        }
        QCOMPARE(shown, wanted);
        QCOMPARE(shown.size(), expected.toArray().size());
    }
};

/** Rows and the records they become: of the shown members, those that matter to the row. */
QTEST_GUILESS_MAIN(tst_tables)

#include "tst_tables.moc"
