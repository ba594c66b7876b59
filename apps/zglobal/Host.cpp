#include "Host.h"

#include "CommandLine.h"
#include "Failure.h"
#include "Json.h"
#include "Literals.h"
#include "Traffic.h"
#include "Wait.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "datatable/ZDataTableMgr.h"
#include "effect/ZActivityAwardEffectMgr.h"
#include "effect/ZAwardEffectMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QMetaEnum>
#include <QSettings>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int patience = 10 * 1000; // milliseconds

QString configurationFile()
{
    return u"zglobal.json"_s;
}

QString config(const QString& key)
{
    return ZGlobalConfig::getInstance().getConfig(key);
}

/** A table that the library leaves to the program. */
struct OwnTable
{
    EDataTable::EDataTableType type;
    bool (*load)(const QString& path);
};

const OwnTable ownTables[] = {
    {EDataTable::ChatFilterWordKey,
     [](const QString& path) {
         return ZSensitiveWordsInfoListMgr::getInstance()->loadSensitiveWordsInfoListTable(path);
     }},
    {EDataTable::NewChatFilterWordKey,
     [](const QString& path) {
         return ZSensitiveWordsInfoListMgr::getInstance()->loadNewSensitiveWordsInfoListTable(path);
     }},
    {EDataTable::CS_PlatAwardEffect,
     [](const QString& path) { return ZAwardEffectMgr::getInstance().loadListTable(path); }},
};

/** What came of loading them, by kind. */
QMap<int, bool>& ownLoads()
{
    static QMap<int, bool> loads;
    return loads;
}

/** Not beside the other tables, where tidying removes what is not of the catalogue. */
QString activityAwardsFile()
{
    return u"res/activity/ActivityAwardEffect"_s;
}

QString baseOf(const QString& server)
{
    const QUrl url(server, QUrl::StrictMode);
    const bool web = url.scheme() == u"http"_s || url.scheme() == u"https"_s;
    if (!url.isValid() || url.host().isEmpty() || !web || url.hasQuery())
        throw UsageFailure(u"\"%1\" is not the address of a content server"_s.arg(server));
    QString base = server;
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    return base;
}

void join(QJsonObject& values, const QJsonObject& more)
{
    for (auto value = more.begin(); value != more.end(); ++value)
        values.insert(value.key(), value.value());
}

} // namespace

QList<QCommandLineOption> Host::options()
{
    return {{u"data"_s, u"the working folder, made when missing (default: zglobal-data)"_s,
             u"DIR"_s, u"zglobal-data"_s},
            {u"server"_s, u"base address of the content server; remembered"_s, u"URL"_s},
            {u"config"_s, u"a JSON file with configuration values; remembered"_s, u"FILE"_s},
            CommandLine::verboseOption()};
}

QJsonObject Host::configurationFor(const QString& base)
{
    const QString withSlash = base + QLatin1Char('/');
    return {{u"cmsServer"_s, withSlash},   {u"ImageResServer"_s, base},
            {u"ZZResServer"_s, withSlash}, {u"H5Server"_s, withSlash},
            {u"H5WebServer"_s, withSlash}, {u"ServerType"_s, u"1002"_s},
            {u"userId"_s, u"10086"_s},     {u"sessionId"_s, u"demo-session"_s}};
}

void Host::enter(const QString& folder, const QJsonObject& values)
{
    if (!QDir().mkpath(folder) || !QDir::setCurrent(folder))
        throw Failure {u"the folder %1 cannot be made or entered"_s.arg(folder)};
    QJsonObject all;
    if (QFileInfo::exists(configurationFile()))
        all = Json::objectInFile(configurationFile());
    join(all, values);
    if (!values.isEmpty())
        Json::writeFile(configurationFile(), all);
    QString error;
    if (!all.isEmpty() && !ZGlobalConfig::getInstance().loadConfig(configurationFile(), &error))
        throw Failure {error};
    if (config(u"cmsServer"_s).isEmpty())
        throw Failure {
            u"no content server is known in %1: name one with --server URL"_s.arg(folder)};
}

void Host::enter(const QCommandLineParser& line)
{
    QJsonObject values;
    if (line.isSet(u"server"_s))
        values = configurationFor(baseOf(line.value(u"server"_s)));
    if (line.isSet(u"config"_s)) {
        const QString file = line.value(u"config"_s);
        QString error;
        // Before anything of it is remembered.
        if (!ZGlobalConfig::getInstance().loadConfig(file, &error))
            throw Failure {error};
        join(values, Json::objectInFile(file));
    }
    enter(line.value(u"data"_s), values);
}

QString Host::whereabouts()
{
    return u"server %1, folder %2"_s.arg(config(u"cmsServer"_s),
                                         QDir::toNativeSeparators(QDir::currentPath()));
}

bool Host::load()
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    tables->loadLocalVersion();
    const bool loaded = tables->loadAllTables();
    loadOwnTables();
    return loaded;
}

bool Host::loadOwnTables()
{
    bool all = true;
    for (const OwnTable& table : ownTables) {
        const bool loaded = table.load(fileOf(table.type).path);
        ownLoads().insert(table.type, loaded);
        all = all && loaded;
    }
    return ZActivityAwardEffectMgr::getInstance().loadListTable(activityAwardsFile()) && all;
}

void Host::fetchActivityAwards()
{
    const QString address = config(u"cmsServer"_s) + u"app/resources/ActivityAwardEffect"_s;
    const auto download =
        settled(ZDataTableMgr::getInstance()->downloadFile(activityAwardsFile(), address, false));
    if (!download.ok)
        throw Failure {download.error};
}

Host::Learnt Host::learnVersions()
{
    const QString address = config(u"cmsServer"_s) + u"app/versions.json"_s;
    const auto answer = settled(ZHttpComm::getInstance()->get(QUrl(address)));
    if (!answer.ok)
        throw Failure {u"the versions could not be learnt: "_s + answer.error};
    const QJsonObject versions =
        Json::objectOf(answer.value, address).value(u"versions"_s).toObject();
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    const auto kinds = QMetaEnum::fromType<EDataTable::EDataTableType>();
    Learnt learnt;
    for (int i = 0; i < kinds.keyCount(); ++i) {
        const int version = versions.value(QString::fromLatin1(kinds.key(i))).toInt(-1);
        const auto type = static_cast<EDataTable::EDataTableType>(kinds.value(i));
        const int before = tables->getTableVersion(type);
        if (!tables->setTableVersion(type, version, true))
            continue;
        ++learnt.told;
        if (version != before)
            learnt.changed.append(type);
    }
    return learnt;
}

void Host::waitForSavedVersions()
{
    const auto saved = [] {
        QSettings file(u"common.ini"_s, QSettings::IniFormat);
        const QVector<TableFile> tables = tableFiles();
        return std::all_of(tables.begin(), tables.end(), [&file](const TableFile& table) {
            return file.value(u"TableVersion/"_s + table.report.table).toInt() == table.version;
        });
    };
    if (!waitUntil(saved, patience))
        throw Failure {u"the versions could not be saved in common.ini"_s};
}

Host::Updated Host::updateTables()
{
    const Traffic traffic;
    const auto outcome = settled(ZDataTableMgr::getInstance()->updateAllDataTable());
    // The promise does not wait for every table.
    traffic.waitUntilQuiet(patience);
    return {outcome.ok, outcome.error, traffic.started(), traffic.bytes()};
}

Host::TableFile Host::fileOf(EDataTable::EDataTableType type)
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    TableFile file;
    file.path = u"res/dataTable/"_s + tables->getTableFileName(type);
    file.version = tables->getTableVersion(type);
    file.size = QFileInfo(file.path).size();
    return file;
}

QVector<Host::TableFile> Host::tableFiles()
{
    QVector<TableFile> files;
    const QVector<TableStatus> reports = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& report : reports) {
        if (report.kind < 0)
            continue;
        files.append(fileOf(static_cast<EDataTable::EDataTableType>(report.kind)));
        files.last().report = report;
        if (ownLoads().contains(report.kind))
            files.last().report.state =
                ownLoads().value(report.kind) ? TableStatus::Loaded : TableStatus::Failed;
    }
    return files;
}
