#include "client/ZGlobalClient.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "gift/ZGiftListMgr.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "support/Tables.h"
#include "why/RawTable.h"
#include "why/Why.h"

#include <QtTest>

namespace {

constexpr qint64 begin = 1000;
constexpr qint64 end = 2000;

QDateTime at(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds);
}

} // namespace

/** What is explained, held to what the managers answer. */
class tst_why : public QObject
{
    Q_OBJECT

    static QByteArray published(const QString& table)
    {
        return ZTestFolder::read(QStringLiteral(ZGLOBAL_CONTENT "/app/resources/") + table);
    }

    static void put(const QString& table, const QByteArray& bytes)
    {
        ZTestFolder::write(ZGlobalClient::tableFile(statusOf(table)), bytes);
    }

    static void load(const QString& table)
    {
        const TableStatus status = statusOf(table);
        if (status.kind < 0)
            ZDataTableMgr::getInstance()->loadUnversionedTable(table,
                                                               ZGlobalClient::tableFile(status));
        else
            ZDataTableMgr::getInstance()->loadTable(
                static_cast<EDataTable::EDataTableType>(status.kind));
    }

    /** The published table with something in place of something else, loaded. */
    static bool edit(const QString& table, const QByteArray& find, const QByteArray& with)
    {
        const QByteArray before = published(table);
        const QByteArray after = find.isEmpty() ? before : QByteArray(before).replace(find, with);
        put(table, after);
        load(table);
        return find.isEmpty() || after != before;
    }

    static Why::Reply ask(const QString& kind, const QString& text, const QDateTime& moment)
    {
        const Why::Failures failures {{u"CS_GiftList"_s, u"refused; back to version 3"_s}};
        if (kind == u"gift"_s)
            return Why::gift(text, moment, failures);
        if (kind == u"banner"_s)
            return Why::banner(text, {});
        if (kind == u"frame"_s)
            return Why::frame(text, moment, {});
        if (kind == u"table"_s)
            return Why::table(text, {});
        return {{kind == u"page"_s ? Why::page(text) : Why::masked(text)}, {}, {}};
    }

    /** All that is said, line by line. */
    static QString told(const Why::Reply& reply)
    {
        const QStringList answers {u"yes"_s, u"no"_s, u"-"_s};
        const QStringList states {u"none: "_s, u"not fetched"_s, u"there"_s};
        QStringList lines {reply.fault};
        for (const Why::Subject& candidate : reply.candidates)
            lines.append(u"candidate: %1 %2"_s.arg(candidate.id, candidate.name));
        for (const Why::Explanation& explanation : reply.explanations) {
            lines.append(explanation.verdict);
            for (const Why::Step& step : explanation.steps)
                lines.append(u"%1 %2: %3"_s.arg(answers.at(step.answer), step.rule, step.value));
            for (const Why::Resource& resource : explanation.resources)
                lines.append(
                    u"%1: %2%3"_s.arg(resource.what, states.at(resource.state), resource.cause));
            for (const Why::Remark& remark : explanation.remarks)
                lines.append(u"%1: %2"_s.arg(remark.what, remark.value));
        }
        return lines.join(u"\n"_s);
    }

    ZTestFolder m_folder;
    ZGlobalClient m_client;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(
            m_client.open(u"client"_s, ZGlobalClient::configurationFor(u"http://127.0.0.1:9"_s)));
        for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses())
            put(status.table, published(status.table));
        QVERIFY(m_client.load());
    }

    /** Every way that a gift can fail, alone and with others, before, at, within and after its
     *  time. */
    void gifts()
    {
        QJsonArray rows;
        for (int i = 0; i < 32; ++i) {
            const QString id = i % 8 == 7 ? u"Annual2024G19"_s : u"g%1"_s.arg(i);
            rows.append(
                QJsonObject {{u"giftId"_s, id},
                             {u"valid"_s, (i & 1) == 0 || i == 7},
                             {u"isVisible"_s, (i & 2) == 0},
                             {u"giftDisplayLocation"_s, i / 4 % 4},
                             {u"startTime"_s, at(begin).toString(u"yyyy-MM-dd HH:mm:ss"_s)},
                             {u"endTime"_s, at(end + i / 16).toString(u"yyyy-MM-dd HH:mm:ss"_s)}});
        }
        rows.append(QJsonValue::Null);
        const TableStatus status = statusOf(u"CS_GiftList"_s);
        put(status.table, tableBytes(status, u"*"_s, rows));
        load(status.table);
        ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
        int sent = 0;
        for (const QJsonValue& row : qAsConst(rows)) {
            const QString id = row.toObject().value(u"giftId"_s).toString();
            for (const qint64 time : {begin - 1, begin, begin + 1, end, end + 1, end + 2}) {
                if (id.isEmpty())
                    continue;
                const Why::Reply reply = Why::gift(id, at(time), {});
                QCOMPARE(reply.explanations.size(), 1);
                const Why::Explanation& why = reply.explanations.first();
                const bool valid = gifts->checkGiftValid(id, time, true, true);
                QVERIFY2(why.holds == valid, qPrintable(told(reply)));
                sent += valid ? 1 : 0;
                // The step that decides is the first that makes a difference to the manager.
                const QString rule = valid ? QString() : why.steps.at(why.deciding).rule;
                const bool onSale = gifts->checkGiftTimeValid(id, time);
                const bool visible = gifts->checkGiftValid(id, time, false, true);
                QCOMPARE(rule.contains(u"sale"_s), !onSale && !gifts->isGiftInvalid(id));
                QCOMPARE(rule.contains(u"visible"_s), onSale && !visible);
                QCOMPARE(rule.contains(u"panel"_s), visible && !valid);
                QCOMPARE(rule.contains(u"record"_s), gifts->isGiftInvalid(id));
            }
        }
        QVERIFY(sent > 0);
        edit(status.table, {}, {});
    }

    void frames()
    {
        ZImageFrameInfoListMgr* frames = ZImageFrameInfoListMgr::getInstance();
        const QList<int> ids = frames->getImageFrameMap().keys();
        for (const int id : ids) {
            for (int minute = 0; minute < 24 * 60; minute += 90) {
                const QDateTime moment(QDate(2026, 5, 20), QTime(minute / 60, minute % 60));
                const Why::Reply reply = Why::frame(QString::number(id), moment, {});
                const QString icon = frames->getEffectiveIconAt(id, moment.time());
                QVERIFY2(
                    reply.explanations.first().verdict.contains(u" shows "_s + icon + u" at "_s),
                    qPrintable(told(reply)));
            }
        }
    }

    void pages()
    {
        QStringList addresses {u"https://www.example.com/elsewhere"_s};
        for (const bool isNew : {false, true}) {
            for (const ZBannerInfo& banner : ZBannerMgr::getInstance()->getList(isNew))
                addresses.append(banner.landingPage);
        }
        for (const ZOtherBannerInfo& banner : ZOtherBannerMgr::getInstance()->getList())
            addresses.append(banner.targetObject);
        int embedded = 0;
        for (const QString& address : qAsConst(addresses)) {
            const Why::Explanation why = Why::page(address);
            QCOMPARE(why.holds,
                     ZBannerMgr::getInstance()->bannerIsByCef(address)
                         || ZOtherBannerMgr::getInstance()->otherBannerIsByCef(address));
            QCOMPARE(!why.origins.isEmpty(), why.holds);
            embedded += why.holds ? 1 : 0;
        }
        QVERIFY(embedded > 1);
    }

    /** What is said to have become of the rows of a table is what its manager holds. */
    void rows_data()
    {
        QTest::addColumn<QString>("table");
        for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
            if (status.declaration != nullptr)
                QTest::newRow(qPrintable(status.table)) << status.table;
        }
    }
    void rows()
    {
        QFETCH(QString, table);
        QJsonObject object = QJsonDocument::fromJson(published(table)).object();
        QJsonArray rows = object.value(u"rows"_s).toArray();
        rows.append(rows.first());
        rows.append(QJsonValue::Null);
        rows.append(u"text"_s);
        rows.append(rows.first());
        object.insert(u"rows"_s, rows);
        put(table, QJsonDocument(object).toJson());
        load(table);
        const TableStatus status = statusOf(table);
        const Why::RawTable raw(status);
        const int kept = raw.count(Why::RawRow::Record)
            + (status.declaration->schema().isEveryRowKept ? raw.count(Why::RawRow::Overwritten)
                                                           : 0);
        QCOMPARE(raw.rows().size(), rows.size());
        if (!status.declaration->schema().columns.isEmpty())
            QCOMPARE(kept, status.declaration->recordCount());
        edit(table, {}, {});
    }

    void explained_data() { Cases::rows("why"); }
    void explained()
    {
        QFETCH(QString, table);
        QFETCH(QString, find);
        QFETCH(QString, with);
        QFETCH(QString, kind);
        QFETCH(QString, text);
        QFETCH(QJsonValue, says);
        QVERIFY(edit(table, find.toUtf8(), with.toUtf8()));
        const QDateTime moment(QDate(2026, 5, 20), QTime(20, 0));
        const QString all = told(ask(kind, text, moment));
        edit(table, {}, {});
        for (const QJsonValue& part : says.toArray())
            QVERIFY2(all.contains(part.toString()), qPrintable(all));
    }
};

QTEST_GUILESS_MAIN(tst_why)

#include "tst_why.moc"
