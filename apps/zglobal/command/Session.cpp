#include "command/Session.h"

#include "command/CommandLine.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "why/Subjects.h"

#include <QDir>
#include <QUrl>

#include <algorithm>

namespace {

QString checkedServer(const QString& server)
{
    const QUrl url(server, QUrl::StrictMode);
    const bool web = url.scheme() == u"http"_s || url.scheme() == u"https"_s;
    if (!url.isValid() || url.host().isEmpty() || !web || url.hasQuery())
        throw UsageFailure(u"\"%1\" is not the address of a content server"_s.arg(server));
    return server;
}

} // namespace

Session::Session(const QCommandLineParser& line, Purpose purpose)
{
    QJsonObject values;
    if (line.isSet(u"server"_s))
        values = configurationFor(checkedServer(line.value(u"server"_s)));
    if (line.isSet(u"config"_s)) {
        const QString file = line.value(u"config"_s);
        QString error;
        // Before anything of it is remembered.
        if (!ZGlobalConfig::getInstance().loadConfig(file, &error))
            throw Failure {error};
        const QJsonObject more = Json::objectInFile(file);
        for (auto value = more.begin(); value != more.end(); ++value)
            values.insert(value.key(), value.value());
    }
    const QString folder = line.value(u"data"_s);
    QString error;
    const bool opened = purpose == Updates ? m_client.open(folder, values, &error)
                                           : m_client.openToLook(folder, values, &error);
    if (opened)
        return;
    if (error.startsWith(u"no content server"_s))
        error += purpose == Updates ? u": name one with --server URL"_s
                                    : u"; \"zglobal update --server URL\" names one"_s;
    else if (error.startsWith(u"there is no folder"_s))
        error += u": \"zglobal update --server URL\" makes it, --data DIR names another"_s;
    throw Failure {error};
}

QList<QCommandLineOption> Session::options()
{
    return {
        {u"data"_s, u"the client's folder (default: zglobal-data)"_s, u"DIR"_s, u"zglobal-data"_s},
        {u"server"_s,
         u"base address of the content server; an update remembers it, all else uses it once"_s,
         u"URL"_s},
        {u"config"_s, u"a JSON file with configuration values, kept likewise"_s, u"FILE"_s},
        CommandLine::verboseOption()};
}

QJsonObject Session::configurationFor(const QString& address)
{
    QJsonObject values = ZGlobalClient::configurationFor(address);
    values.insert(u"userId"_s, u"10086"_s);
    values.insert(u"sessionId"_s, u"demo-session"_s);
    return values;
}

void Session::load()
{
    if (m_client.load())
        return;
    const QVector<TableStatus> tables = ZDataTableMgr::getInstance()->getTableStatuses();
    if (std::none_of(tables.begin(), tables.end(),
                     [](const TableStatus& table) { return table.size > 0; }))
        throw Failure {u"nothing of %1 has been downloaded yet: %2"_s.arg(
            ZGlobalClient::configuration(u"cmsServer"_s), advice())};
    complain(m_client.failures());
    throw Failure {u"without these tables there is no client: "_s + advice()};
}

void Session::require(const QString& table)
{
    const QString fault = Why::loadFault(Why::statusOf(table));
    if (!fault.isEmpty())
        throw Failure {u"%1 is not loaded: %2"_s.arg(table, fault)};
}

std::unique_ptr<ProgressBar> Session::progress()
{
    auto bar = std::make_unique<ProgressBar>();
    QObject::connect(&m_client, &ZGlobalClient::sigProgress, bar.get(), &ProgressBar::show);
    return bar;
}

void Session::complain(const QVector<ZClientFailure>& failures)
{
    for (const ZClientFailure& failure : failures)
        Terminal::complain(u"%1: %2"_s.arg(failure.what, failure.why));
}

QString Session::advice()
{
    return u"\"zglobal update\" fetches what the server has, or tells why it cannot"_s;
}

QString Session::whereabouts()
{
    return u"server %1, folder %2"_s.arg(ZGlobalClient::configuration(u"cmsServer"_s),
                                         QDir::toNativeSeparators(QDir::currentPath()));
}
