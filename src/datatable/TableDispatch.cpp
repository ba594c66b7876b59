#include "chat/ZGroupWelcomelMgr.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "privilege/ZFansConfigMgr.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <iterator>

// The one place that knows both the tables and their managers; the managers know ZDataTableMgr, so
// nothing else here may know them.

namespace {

/** A manager's part in a table: how it loads it and what it says of it. */
struct TableReader
{
    EDataTable::EDataTableType type;
    const char* manager;
    const char* loader;
    bool (*load)(const QString& path);
    TableDescription (*describe)();
};

/** A step of the start-up load. */
struct StartStep
{
    TableReader reader;
    const char* title;              ///< what the log calls the table
    bool essential = false;         ///< its failure ends the start-up load
    void (*before)() = nullptr;     ///< what has to happen before the table is loaded
    void (*afterwards)() = nullptr; ///< what follows whether or not the table was loaded
};

const StartStep startSteps[] = {
    {{EDataTable::GroupWelComeWord, "ZGroupWelcomelMgr", "loadGroupWelcomeTable",
      [](const QString& path) {
          return ZGroupWelcomelMgr::getInstance()->loadGroupWelcomeTable(path);
      },
      &ZGroupWelcomelMgr::describeTable},
     "群组欢迎言数据表",
     true},
    {{EDataTable::CS_GiftList, "ZGiftListMgr", "loadGiftListTable",
      [](const QString& path) { return ZGiftListMgr::getInstance()->loadGiftListTable(path); },
      &ZGiftListMgr::describeTable},
     "礼物数据表",
     true},
    {{EDataTable::FansConfigNew, "ZFansConfigMgr", "loadListTable",
      [](const QString& path) { return ZFansConfigMgr::getInstance().loadListTable(path); },
      &ZFansConfigMgr::describeTable},
     "守护团配置表"},
};

/** Loads one table and says so in the log; an essential one that fails loses its file. */
bool load(const StartStep& step, const QString& path, const QString& fileName)
{
    const bool loaded = step.reader.load(path);
    if (!loaded && step.essential)
        QFile::remove(path);
    const QString outcome = loaded ? QStringLiteral("加载成功") : QStringLiteral("加载失败");
    qDebug().noquote() << QString::fromUtf8(step.title) + outcome << fileName;
    return loaded;
}

TableReport reportOf(const TableReader& reader)
{
    TableReport report;
    report.kind = reader.type;
    report.table = TableCatalogue::name(reader.type);
    report.manager = QString::fromLatin1(reader.manager);
    report.loader = QString::fromLatin1(reader.loader);
    report.description = reader.describe();
    return report;
}

} // namespace

bool ZDataTableMgr::loadAllTables()
{
    for (const StartStep& step : startSteps) {
        if (step.before != nullptr)
            step.before();
        const EDataTable::EDataTableType type = step.reader.type;
        const bool loaded = load(step, getTablePath(type), getTableFileName(type));
        m_loadResults.insert(type, loaded);
        if (!loaded && step.essential)
            return false;
        if (step.afterwards != nullptr)
            step.afterwards();
    }
    return true;
}

void ZDataTableMgr::loadGiftTable()
{
    updateGiftDataTable()
        .then([this] {
            const EDataTable::EDataTableType type = EDataTable::CS_GiftList;
            const auto* gifts =
                std::find_if(std::begin(startSteps), std::end(startSteps),
                             [](const StartStep& step) { return step.reader.type == type; });
            m_loadResults.insert(type, load(*gifts, getTablePath(type), getTableFileName(type)));
        })
        .fail([] {}); // the update has logged why
}

QVector<TableReport> ZDataTableMgr::getTableReports() const
{
    QVector<TableReport> reports;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        TableReport report;
        report.kind = type;
        report.table = TableCatalogue::name(type);
        for (const StartStep& step : startSteps) {
            if (step.reader.type != type)
                continue;
            report = reportOf(step.reader);
            report.loadedAtStart = true;
        }
        if (m_loadResults.contains(type))
            report.state = m_loadResults.value(type) ? TableReport::Loaded : TableReport::Failed;
        reports.append(report);
    }
    return reports;
}
