#include "demo/Demo.h"
#include "demo/Steps.h"

#include "Host.h"
#include "Literals.h"
#include "Wait.h"
#include "Words.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZHttpComm.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>
#include <QUrl>

namespace {

constexpr int tableCount = 33;

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
    Host::enter(demo.work(), Host::configurationFor(demo.server().baseUrl()));
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
    const Host::Learnt learnt = Host::learnVersions();
    demo.say(u"app/versions.json tells %1 versions; each goes into setTableVersion()."_s.arg(
        learnt.told));
    demo.expect(learnt.changed.size() == tableCount, u"all %1 are news"_s.arg(tableCount));
    Host::waitForSavedVersions();
    const QSettings saved(u"common.ini"_s, QSettings::IniFormat);
    const int gifts = saved.value(u"TableVersion/CS_GiftList"_s).toInt();
    demo.expect(gifts == 57, u"one second later common.ini has them, CS_GiftList=%1"_s.arg(gifts));
}

void Steps::updateTables(Demo& demo)
{
    const Host::Updated updated = Host::updateTables();
    demo.say(u"updateAllDataTable() made %1 requests and got %2."_s.arg(
        QString::number(updated.requests), Words::size(updated.bytes)));
    TextTable sample({u"table"_s, u">version"_s, u">size"_s, u"file"_s});
    int present = 0;
    const QVector<Host::TableFile> files = Host::tableFiles();
    for (const Host::TableFile& file : files) {
        if (file.size > 0)
            ++present;
        if (sample.lines().size() <= 4 && file.report.loadedAtStart)
            sample.add({file.report.table, QString::number(file.version), Words::size(file.size),
                        file.path});
    }
    demo.show(sample);
    demo.expect(updated.ok, updated.ok ? u"the promise is fulfilled"_s : updated.error);
    demo.expect(present == tableCount && updated.requests == tableCount,
                u"%1 tables lie in res/dataTable/"_s.arg(present));
    const Host::Updated again = Host::updateTables();
    demo.expect(again.ok && again.requests == 0, u"a second update asks the server for nothing"_s);
}

void Steps::loadTables(Demo& demo)
{
    const bool loaded = ZDataTableMgr::getInstance()->loadAllTables();
    int tables = 0;
    int expected = 0;
    int records = 0;
    const QVector<Host::TableFile> files = Host::tableFiles();
    for (const Host::TableFile& file : files) {
        if (!file.report.loadedAtStart)
            continue;
        ++expected;
        if (file.report.state != TableStatus::Loaded)
            demo.say(u"not loaded: "_s + file.report.table);
        else
            ++tables;
        records += file.report.declaration->recordCount();
    }
    demo.say(u"loadAllTables() handed %1 tables to their managers, which hold %2 records."_s.arg(
        QString::number(expected), QString::number(records)));
    demo.expect(loaded && tables == expected, u"all %1 are loaded"_s.arg(tables));
}

void Steps::loadOwnTables(Demo& demo)
{
    Host::fetchActivityAwards();
    const bool loaded = Host::loadOwnTables();
    demo.say(
        u"The chat filter's two lists and the award effects, from the files just updated, and"_s);
    demo.say(u"the awards of activities, a table without a version that the program fetches."_s);
    demo.expect(loaded, u"all four are loaded"_s);
}
