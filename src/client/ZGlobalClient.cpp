#include "client/ZGlobalClient.h"

#include "client/ClientFiles.h"
#include "client/ClientReport.h"
#include "client/GoodVersions.h"
#include "client/Traffic.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "host/ZImageCacheUtil.h"
#include "host/zErrorInfo.h"
#include "presentation/ZBannerMgr.h"
#include "tidy/zTidyMgr.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <memory>

template <typename T>
using Promise = QtPromise::QPromise<T>;

namespace {

ZDataTableMgr* tables()
{
    return ZDataTableMgr::getInstance();
}

QVector<TableStatus> catalogued()
{
    QVector<TableStatus> all = tables()->getTableStatuses();
    while (!all.isEmpty() && all.last().kind < 0)
        all.removeLast();
    return all;
}

/** The versions by the tables' names; throws a zErrorInfo. */
QJsonObject versionsOf(const QByteArray& answer, const QString& address)
{
    QString error;
    const QJsonObject file = ClientFiles::objectOf(answer, address, &error);
    if (!error.isEmpty())
        throw zErrorInfo(error, 0);
    const QJsonValue versions = file.value(QLatin1String("versions"));
    if (!versions.isObject())
        throw zErrorInfo(QStringLiteral("%1 has no object \"versions\"").arg(address), 0);
    return versions.toObject();
}

ZVersionNews takeVersions(const QJsonObject& versions, const GoodVersions& known)
{
    ZVersionNews news;
    for (const EDataTable::EDataTableType type : TableCatalogue::types()) {
        const int version = versions.value(TableCatalogue::name(type)).toInt(-1);
        const int before = tables()->getTableVersion(type);
        if (known.isBad(type, version)) {
            ++news.told; // what has been refused once is not fetched again
            continue;
        }
        if (!tables()->setTableVersion(type, version, true))
            continue;
        ++news.told;
        if (version != before)
            news.changed.append(type);
    }
    return news;
}

/** A table that is not there cannot be loaded; what matters then is why it is not there. */
QString causeOf(const TableStatus& status)
{
    const QString& cause = status.lastFailure.cause;
    return status.size > 0 || cause.isEmpty() ? status.error : cause;
}

/** Of a table whose newest version was refused before this run. */
QString refusalOf(const TableStatus& status, const GoodVersions& known)
{
    const auto type = static_cast<EDataTable::EDataTableType>(status.kind);
    const GoodVersions::Refusal refusal = known.refused(type);
    if (refusal.version <= status.version)
        return {};
    return QStringLiteral("version %1 was refused: %2; version %3 serves until a newer one is "
                          "published")
        .arg(QString::number(refusal.version), refusal.cause, QString::number(status.version));
}

ZUpdateResult resultOf(const QVector<TableStatus>& before)
{
    ZUpdateResult result;
    const QVector<TableStatus> after = catalogued();
    for (int i = 0; i < after.size(); ++i) {
        const bool isSame = after.at(i).path == before.at(i).path;
        const ZTableChange change {before.at(i), after.at(i), isSame && before.at(i).size > 0};
        result.tables.append(change);
        if (change.outcome() == ZTableChange::Failed)
            result.failures.append({change.after.table, causeOf(change.after)});
    }
    return result;
}

} // namespace

ZTableChange::Outcome ZTableChange::outcome() const
{
    if (after.size == 0)
        return Failed;
    return wasThere ? Current : New;
}

ZGlobalClient::ZGlobalClient(QObject* parent)
    : QObject(parent)
    , m_traffic(new Traffic(this))
    , m_good(std::make_shared<GoodVersions>())
{
    connect(m_traffic, &Traffic::sigProgress, this, &ZGlobalClient::sigProgress);
    connect(tables(), &ZDataTableMgr::sigVersionsSaved, this, [this](bool ok) {
        if (m_save != Save::Done)
            m_save = ok ? Save::Done : Save::Failed;
    });
}

ZGlobalClient::~ZGlobalClient() = default;

QJsonObject ZGlobalClient::configurationFor(const QString& address)
{
    QString base = address;
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    if (base.isEmpty())
        return {};
    const QString withSlash = base + QLatin1Char('/');
    QJsonObject values {{QStringLiteral("ImageResServer"), base},
                        {QStringLiteral("ServerType"), QStringLiteral("1002")}};
    for (const char* key : {"cmsServer", "ZZResServer", "H5Server", "H5WebServer"})
        values.insert(QLatin1String(key), withSlash);
    return values;
}

bool ZGlobalClient::open(const QString& folder, const QJsonObject& configuration, QString* error)
{
    m_remembers = true;
    QDir().mkpath(folder); // where that fails, entering it does too
    return enter(folder, configuration, error);
}

bool ZGlobalClient::openToLook(const QString& folder, const QJsonObject& configuration,
                               QString* error)
{
    m_remembers = false;
    return enter(folder, configuration, error);
}

bool ZGlobalClient::enter(const QString& folder, const QJsonObject& configuration, QString* error)
{
    tables()->setRemovesRefused(m_remembers);
    QString cause;
    if (!QFileInfo::exists(folder))
        cause = m_remembers ? QStringLiteral("the folder %1 cannot be made").arg(folder)
                            : QStringLiteral("there is no folder %1").arg(folder);
    else if (!QDir::setCurrent(folder))
        cause = QStringLiteral("the folder %1 cannot be entered").arg(folder);
    if (cause.isEmpty())
        cause = ClientFiles::configure(configuration, m_remembers);
    if (cause.isEmpty() && ZGlobalClient::configuration(QStringLiteral("cmsServer")).isEmpty())
        cause = QStringLiteral("no content server is known in %1").arg(folder);
    if (error != nullptr && !cause.isEmpty())
        *error = cause;
    m_good->read(ZGlobalClient::configuration(QStringLiteral("cmsServer")));
    return cause.isEmpty();
}

QString ZGlobalClient::configuration(const QString& key)
{
    return ZGlobalConfig::getInstance().getConfig(key);
}

bool ZGlobalClient::load()
{
    tables()->loadLocalVersion();
    m_returned.clear();
    const QVector<TableStatus> before = catalogued();
    bool loaded = tables()->loadAllTables();
    loadOthers();
    if (returnToGood(before)) {
        loaded = tables()->loadAllTables();
        loadOthers();
    }
    for (const TableStatus& status : catalogued()) {
        if (status.state == TableStatus::Loaded)
            m_good->noteGood(static_cast<EDataTable::EDataTableType>(status.kind), status.version);
    }
    if (m_remembers)
        m_good->save(); // what cannot be remembered is found out again
    return loaded;
}

bool ZGlobalClient::returnToGood(const QVector<TableStatus>& before)
{
    bool any = false;
    for (const TableStatus& status : before) {
        const auto type = static_cast<EDataTable::EDataTableType>(status.kind);
        const TableStatus now = tables()->getTableStatus(type);
        const int good = m_good->good(type);
        if (now.state != TableStatus::Failed || good < 0)
            continue;
        if (good == status.version) {
            // It did load, so it is damaged; without it the next update fetches it anew.
            if (m_remembers)
                QFile::remove(status.path);
            continue;
        }
        tables()->setTableVersion(type, good, m_remembers);
        if (tables()->getTableStatus(type).size == 0) {
            tables()->setTableVersion(type, status.version, m_remembers);
            continue;
        }
        // One that is only missing may still come in; one that was read and refused will not do.
        if (status.size > 0)
            m_good->noteBad(type, status.version, now.error);
        any = true;
        if (m_remembers)
            m_save = Save::Due;
        m_returned.append(
            {status.table,
             QStringLiteral("%1; back to version %2").arg(now.error, QString::number(good))});
    }
    return any;
}

bool ZGlobalClient::loadOthers()
{
    bool all = true;
    const QVector<TableStatus> statuses = tables()->getTableStatuses();
    for (const TableStatus& status : statuses) {
        if (status.loadedAtStart || status.declaration == nullptr)
            continue;
        const bool loaded = status.kind >= 0
            ? tables()->loadTable(static_cast<EDataTable::EDataTableType>(status.kind))
            : tables()->loadUnversionedTable(status.table,
                                             ClientFiles::unversionedPath(status.table));
        all = all && loaded;
    }
    return all;
}

QVector<ZClientFailure> ZGlobalClient::failures() const
{
    QVector<ZClientFailure> failures = m_returned;
    const QVector<TableStatus> statuses = tables()->getTableStatuses();
    for (const TableStatus& status : statuses) {
        const QString refusal = refusalOf(status, *m_good);
        const bool isTold =
            std::any_of(m_returned.begin(), m_returned.end(),
                        [&status](const ZClientFailure& one) { return one.what == status.table; });
        if (status.state == TableStatus::Failed)
            failures.append({status.table, causeOf(status)});
        else if (!refusal.isEmpty() && !isTold)
            failures.append({status.table, refusal});
    }
    return failures;
}

QJsonObject ZGlobalClient::report() const
{
    QVector<ZClientFailure> known = failures();
    if (!m_versionsFailure.isEmpty())
        known.append({QStringLiteral("app/versions.json"), m_versionsFailure});
    if (m_save == Save::Failed)
        known.append({QStringLiteral("common.ini"), QStringLiteral("it could not be saved")});
    return ClientReport::of(known);
}

Promise<ZVersionNews> ZGlobalClient::learnVersions()
{
    const QString address =
        configuration(QStringLiteral("cmsServer")) + QStringLiteral("app/versions.json");
    const QPointer<ZGlobalClient> self(this);
    return ZHttpComm::getInstance()
        ->get(QUrl(address))
        .then([self, address, known = m_good](const QByteArray& answer) {
            ZVersionNews news = takeVersions(versionsOf(answer, address), *known);
            if (self != nullptr && !news.changed.isEmpty())
                self->m_save = Save::Due;
            if (self != nullptr)
                self->m_versionsFailure.clear();
            return news;
        })
        .fail([self, address](const zErrorInfo& error) -> ZVersionNews {
            // What is no address has none to be told, but somebody has written it; a password ends
            // with the sign.
            const QString cause = QUrl(address).isValid()
                ? error.message()
                : address.section(u'@', -1) + error.message();
            if (self != nullptr)
                self->m_versionsFailure = cause;
            throw zErrorInfo(QStringLiteral("the versions could not be learnt: ") + cause,
                             error.code());
        });
}

Promise<void> ZGlobalClient::versionsSaved()
{
    const auto check = [](bool ok) {
        if (!ok)
            throw zErrorInfo(QStringLiteral("the versions could not be saved in common.ini"), 0);
    };
    // It may have been saved, or not, while the tables came in.
    if (m_save != Save::Due)
        return Promise<bool>::resolve(m_save == Save::Done).then(check);
    return QtPromise::connect(tables(), &ZDataTableMgr::sigVersionsSaved).then(check);
}

Promise<ZUpdateResult> ZGlobalClient::updateTables()
{
    const QVector<TableStatus> before = catalogued();
    m_traffic->restart();
    const QPointer<ZGlobalClient> self(this);
    const auto sideFailures = std::make_shared<QVector<ZClientFailure>>();
    return tables()
        ->updateAllDataTable()
        .fail([] {}) // the tables tell themselves what failed
        .then([] { return ClientFiles::fetchUnversioned(); })
        .then([sideFailures](const QVector<ZClientFailure>& failures) { *sideFailures = failures; })
        // The update's promise does not wait for every table.
        .then([self] { return self != nullptr ? self->quiet() : Promise<void>::resolve(); })
        .then([self, before, sideFailures] {
            ZUpdateResult result = resultOf(before);
            result.failures += *sideFailures;
            if (self != nullptr) {
                result.requests = self->m_traffic->started();
                result.bytes = self->m_traffic->received();
            }
            return result;
        });
}

Promise<ZUpdateResult> ZGlobalClient::update()
{
    const QPointer<ZGlobalClient> self(this);
    const auto gone = [] { return zErrorInfo(QStringLiteral("the client is gone"), 0); };
    return learnVersions().then([self, gone, before = catalogued()] {
        if (self == nullptr)
            throw gone();
        return self->updateTables()
            .tap([self](const ZUpdateResult&) {
                return self != nullptr ? self->versionsSaved() : Promise<void>::resolve();
            })
            .then([before](ZUpdateResult result) { // updateTables() knows the new versions only
                for (int i = 0; i < result.tables.size(); ++i)
                    result.tables[i].before = before.at(i);
                return result;
            });
    });
}

Promise<void> ZGlobalClient::fetchPictures()
{
    return ZImageCacheUtil::preloadList(ZBannerMgr::getInstance()->getMissingImageUrls());
}

Promise<ZFlashResult> ZGlobalClient::fetchFlashes()
{
    ZFlashConfigMgr& flashes = ZFlashConfigMgr::getInstance();
    const auto ended = QtPromise::connect(&flashes, &ZFlashConfigMgr::sigPassEnded);
    flashes.loadFlash();
    return ended.then([&flashes](int downloads) {
        ZFlashResult result;
        result.downloads = downloads;
        const auto all = flashes.getMessageMap();
        for (const ZFlashConfigInfo& flash : all) {
            if (!hasFlash(flash.flashName))
                result.failures.append({flash.flashName, flashes.getFailure(flash.flashName)});
        }
        return result;
    });
}

QString ZGlobalClient::tableFile(const TableStatus& table)
{
    return table.kind < 0 ? ClientFiles::unversionedPath(table.table) : table.path;
}

bool ZGlobalClient::hasFlash(const QString& flashName)
{
    return ZFlashConfigMgr::getInstance().isPresent(flashName);
}

Promise<void> ZGlobalClient::tidy()
{
    zTidyMgr& tidying = zTidyMgr::getInstance();
    const auto ended = QtPromise::connect(&tidying, &QThread::finished);
    tidying.startThread();
    return ended;
}

Promise<TidyPlan> ZGlobalClient::planTidying()
{
    zTidyMgr& tidying = zTidyMgr::getInstance();
    const auto ended = QtPromise::connect(&tidying, &QThread::finished);
    if (!tidying.startPlanning())
        return Promise<TidyPlan>::reject(
            zErrorInfo(QStringLiteral("the cache is being tidied"), 0));
    return ended.then([&tidying] { return tidying.plan(); });
}

Promise<void> ZGlobalClient::quiet()
{
    return m_traffic->quiet();
}
