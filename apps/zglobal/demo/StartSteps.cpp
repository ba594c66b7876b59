#include "demo/Demo.h"
#include "demo/Steps.h"

#include "command/Session.h"
#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Wait.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZHttpComm.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>
#include <QUrl>

namespace {

int tableCount()
{
    return TableCatalogue::types().size();
}

int filesIn(const QString& folder)
{
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    for (; files.hasNext(); files.next())
        ++count;
    return count;
}

} // namespace

void Steps::serveContent(Demo& demo)
{
    demo.serve();
    demo.say(u"%1 is a plain folder of %2 files; any static web server could do this."_s.arg(
        demo.server().baseUrl(), QString::number(filesIn(demo.content()))));
    const QString versions = u"/app/versions.json"_s;
    const auto answer =
        settled(ZHttpComm::getInstance()->get(QUrl(demo.server().baseUrl() + versions)));
    QFile published(demo.content() + versions);
    demo.expect(answer.ok && published.open(QIODevice::ReadOnly)
                    && answer.value == published.readAll(),
                u"it answers for %1"_s.arg(versions));
}

void Steps::startClient(Demo& demo)
{
    QString error;
    if (!demo.client().open(demo.work(), Session::configurationFor(demo.server().baseUrl()),
                            &error))
        throw Failure {error};
    demo.say(
        u"Configuration first, then getInstance() and loadLocalVersion(). The folder is new,"_s);
    demo.say(u"so no version is known and no table is there."_s);
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    tables->loadLocalVersion();
    demo.expect(tables->getTableVersion(EDataTable::CS_GiftList) == 0,
                u"the gift table has version 0"_s);
    demo.expect(!tables->loadAllTables(),
                u"loadAllTables() says that essential tables are missing"_s);
}

void Steps::learnVersions(Demo& demo)
{
    const auto learnt = settled(demo.client().learnVersions());
    if (!learnt.ok)
        throw Failure {learnt.error};
    demo.say(u"app/versions.json tells %1 versions; each goes into setTableVersion()."_s.arg(
        learnt.value.told));
    demo.expect(learnt.value.changed.size() == tableCount(),
                u"all %1 are news"_s.arg(tableCount()));
    settled(demo.client().versionsSaved());
    const QSettings saved(u"common.ini"_s, QSettings::IniFormat);
    const int gifts = saved.value(u"TableVersion/CS_GiftList"_s).toInt();
    demo.expect(gifts == 57, u"one second later common.ini has them, CS_GiftList=%1"_s.arg(gifts));
}

void Steps::updateTables(Demo& demo)
{
    const auto update = settled(demo.client().updateTables());
    const ZUpdateResult& result = update.value;
    demo.say(u"%1 requests brought in %2: the tables, and one that has no version."_s.arg(
        QString::number(result.requests), Readable::size(result.bytes)));
    TextTable sample({u"table"_s, u">version"_s, u">size"_s, u"file"_s});
    int present = 0;
    for (const ZTableChange& change : result.tables) {
        const TableStatus& table = change.after;
        if (change.outcome() == ZTableChange::New)
            ++present;
        if (sample.lines().size() <= 4 && table.loadedAtStart)
            sample.add({table.table, QString::number(table.version), Readable::size(table.size),
                        table.path});
    }
    demo.show(sample);
    for (const ZClientFailure& failure : result.failures) {
        demo.expect(false, failure.what);
        demo.say(failure.why);
    }
    demo.expect(present == tableCount() && result.requests == tableCount() + 1,
                u"%1 tables lie in res/dataTable/"_s.arg(present));
    const auto again = settled(demo.client().updateTables());
    demo.expect(again.ok && again.value.requests == 1,
                u"a second update asks for the one without a version only"_s);
}

void Steps::loadTables(Demo& demo)
{
    const bool loaded = ZDataTableMgr::getInstance()->loadAllTables();
    int tables = 0;
    int expected = 0;
    int records = 0;
    const QVector<TableStatus> statuses = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& status : statuses) {
        if (!status.loadedAtStart)
            continue;
        ++expected;
        if (status.state != TableStatus::Loaded)
            demo.say(u"not loaded: "_s + status.table);
        else
            ++tables;
        records += status.declaration->recordCount();
    }
    demo.say(u"loadAllTables() handed %1 tables to their managers, which hold %2 records."_s.arg(
        QString::number(expected), QString::number(records)));
    demo.expect(loaded && tables == expected, u"all %1 are loaded"_s.arg(tables));
}

void Steps::loadOtherTables(Demo& demo)
{
    const bool loaded = demo.client().loadOthers();
    demo.say(
        u"The chat filter's two lists and the award effects, from the files just updated, and"_s);
    demo.say(u"the awards of activities, the table without a version."_s);
    for (const ZClientFailure& failure : demo.client().failures())
        demo.say(u"%1: %2"_s.arg(failure.what, failure.why));
    demo.expect(loaded, u"all four are loaded"_s);
}
