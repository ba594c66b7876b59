#include "inspector/host/ClientHost.h"

#include "client/ZGlobalClient.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"
#include "server/ContentFolder.h"
#include "server/ContentServer.h"

#include <QDir>
#include <QPointer>

#include <algorithm>

namespace {

QString wordsOf(const QVector<ZClientFailure>& failures)
{
    QStringList words;
    for (const ZClientFailure& failure : failures)
        words.append(failure.what.isEmpty()
                         ? failure.why
                         : QStringLiteral("%1: %2").arg(failure.what, failure.why));
    return words.join(u'\n');
}

} // namespace

ClientHost::ClientHost(QObject* parent)
    : QObject(parent)
    , m_client(new ZGlobalClient(this))
{
    connect(m_client, &ZGlobalClient::sigProgress, this, &ClientHost::sigProgress);
    // What follows on what was stopped has to stop, too.
    connect(ZHttpComm::getInstance(), &ZHttpComm::sigRequestStarted, this, [this] {
        if (m_isStopping)
            ZHttpComm::getInstance()->cancelAll();
    });
}

ClientHost::~ClientHost()
{
    // A folder that is in use cannot be removed everywhere.
    if (m_folder != nullptr)
        QDir::setCurrent(QDir::tempPath());
}

void ClientHost::open(const Wish& wish)
{
    const bool opened = openFolder(wish);
    if (!opened) { // nothing is to be made where the program was started
        m_folder = std::make_unique<QTemporaryDir>();
        QDir::setCurrent(m_folder->path());
    }
    Q_EMIT sigEntered();
    if (!opened)
        return;
    m_client->load(); // a folder that is new has nothing yet
    Q_EMIT sigFilesChanged();
    update();
}

QString ClientHost::server()
{
    return ZGlobalClient::configuration(QStringLiteral("cmsServer"));
}

void ClientHost::update()
{
    if (begin(tr("Updating"), Stop::Possible))
        follow(m_client->update());
}

void ClientHost::fetchTables()
{
    // A load begins with the versions that are saved.
    m_saved = QtPromise::connect(ZDataTableMgr::getInstance(), &ZDataTableMgr::sigVersionsSaved);
    if (m_task.isEmpty())
        fetchSaved();
}

void ClientHost::fetchSaved()
{
    if (!begin(tr("Fetching"), Stop::Possible))
        return;
    const QPointer<ClientHost> self(this);
    follow(m_saved->then([self](bool) {
        return self != nullptr ? self->m_client->updateTables()
                               : QtPromise::QPromise<ZUpdateResult>::resolve({});
    }));
    m_saved.reset();
}

void ClientHost::follow(const QtPromise::QPromise<ZUpdateResult>& update)
{
    m_failures.clear();
    const QPointer<ClientHost> self(this);
    update
        .then([self](const ZUpdateResult& result) {
            return self != nullptr ? self->takeUpdate(result)
                                   : QtPromise::QPromise<void>::resolve();
        })
        .fail([self](const zErrorInfo& error) {
            if (self != nullptr)
                self->m_failures.append({QString(), error.message()});
        })
        .then([self] {
            if (self != nullptr)
                self->end();
        });
}

QtPromise::QPromise<void> ClientHost::takeUpdate(const ZUpdateResult& result)
{
    m_client->load();
    m_failures = m_client->failures();
    for (const ZClientFailure& failure : result.failures) {
        const bool isKnown =
            std::any_of(m_failures.begin(), m_failures.end(),
                        [&](const ZClientFailure& known) { return known.what == failure.what; });
        if (!isKnown)
            m_failures.append(failure);
    }
    return m_isStopping ? QtPromise::QPromise<void>::resolve() : m_client->fetchPictures();
}

void ClientHost::reload()
{
    if (!begin(tr("Loading"), Stop::Impossible))
        return;
    m_client->load();
    m_failures = m_client->failures();
    end();
}

void ClientHost::tidy()
{
    if (!begin(tr("Tidying"), Stop::Impossible))
        return;
    m_isTidying = true; // no plan comes between
    const QPointer<ClientHost> self(this);
    planned()
        .then([self] {
            return self != nullptr ? self->m_client->tidy() : QtPromise::QPromise<void>::resolve();
        })
        .then([self] {
            if (self != nullptr)
                self->end();
        });
}

QtPromise::QPromise<TidyPlan> ClientHost::planTidying()
{
    if (m_isTidying)
        return QtPromise::QPromise<TidyPlan>::reject(
            zErrorInfo(tr("the cache is being tidied"), 0));
    if (!m_plan.has_value() || !m_plan->isPending())
        m_plan = m_client->planTidying();
    return *m_plan;
}

QtPromise::QPromise<void> ClientHost::planned() const
{
    // A plan and a run are made by the same thread, which would not begin the second.
    if (!m_plan.has_value())
        return QtPromise::QPromise<void>::resolve();
    return m_plan->then([](const TidyPlan&) {}).fail([](const zErrorInfo&) {});
}

bool ClientHost::openFolder(const Wish& wish)
{
    QString folder = wish.folder;
    QString address = wish.server;
    if (folder.isEmpty()) {
        m_folder = std::make_unique<QTemporaryDir>();
        folder = m_folder->path();
    }
    const bool bringsServer = wish.server.isEmpty() && (m_folder || !wish.content.isEmpty());
    if (bringsServer) {
        if (!serveContent(wish.content))
            return false;
        address = m_server->baseUrl();
    }
    QJsonObject values = ZGlobalClient::configurationFor(address);
    if (bringsServer) {
        // The address of the signed-in pages carries both, and example content has nobody else.
        values.insert(QStringLiteral("userId"), QStringLiteral("10086"));
        values.insert(QStringLiteral("sessionId"), QStringLiteral("example"));
    }
    QString error;
    const bool opened = m_client->open(folder, values, &error);
    if (error.startsWith(QLatin1String("no content server")))
        error += tr(": name one with --server URL");
    if (!opened)
        Q_EMIT sigFailure(error);
    return opened;
}

bool ClientHost::serveContent(const QString& named)
{
    QString error;
    const QString content = ContentFolder::find(named, &error);
    m_server = std::make_unique<ContentServer>();
    const bool serves = !content.isEmpty() && m_server->start(content, 0, &error);
    if (!serves) {
        m_server.reset();
        Q_EMIT sigFailure(error);
    }
    return serves;
}

void ClientHost::stop()
{
    if (!m_canStop)
        return;
    m_isStopping = true;
    Q_EMIT sigStopping();
    ZHttpComm::getInstance()->cancelAll();
}

bool ClientHost::begin(const QString& task, Stop stop)
{
    if (!m_task.isEmpty())
        return false;
    m_task = task;
    m_canStop = stop == Stop::Possible;
    Q_EMIT sigTask(m_task);
    return true;
}

void ClientHost::end()
{
    if (m_isStopping)
        m_saved.reset();
    m_task.clear();
    m_canStop = false;
    m_isStopping = false;
    m_isTidying = false;
    Q_EMIT sigFilesChanged();
    Q_EMIT sigFailure(wordsOf(m_failures));
    Q_EMIT sigTask(m_task);
    if (m_saved.has_value())
        fetchSaved();
}
