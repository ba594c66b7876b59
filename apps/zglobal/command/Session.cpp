#include "command/Session.h"

#include "command/CommandLine.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "host/ZGlobalConfig.h"

#include <QDir>
#include <QUrl>

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

Session::Session(const QCommandLineParser& line)
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
    open(line.value(u"data"_s), values);
}

Session::Session(const QString& folder, const QJsonObject& configuration)
{
    open(folder, configuration);
}

QList<QCommandLineOption> Session::options()
{
    return {{u"data"_s, u"the working folder, made when missing (default: zglobal-data)"_s,
             u"DIR"_s, u"zglobal-data"_s},
            {u"server"_s, u"base address of the content server; remembered"_s, u"URL"_s},
            {u"config"_s, u"a JSON file with configuration values; remembered"_s, u"FILE"_s},
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
    if (!m_client.load())
        throw Failure {u"the tables cannot be loaded; \"zglobal update\" fetches them"_s};
}

QString Session::whereabouts()
{
    return u"server %1, folder %2"_s.arg(ZGlobalClient::configuration(u"cmsServer"_s),
                                         QDir::toNativeSeparators(QDir::currentPath()));
}

void Session::open(const QString& folder, const QJsonObject& configuration)
{
    QString error;
    if (!m_client.open(folder, configuration, &error))
        throw Failure {error.startsWith(u"no content server"_s)
                           ? error + u": name one with --server URL"_s
                           : error};
}
