#include "server/ContentServer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <httplib.h>
#include <thread>

namespace {

/** The file that a path of an address names; empty when it names none below the root. */
QString fileOf(const QString& root, const QString& path)
{
    if (path.contains(QLatin1Char('\\')) || path.contains(QChar(0)))
        return {};
    const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (parts.contains(QStringLiteral("..")) || parts.contains(QStringLiteral(".")))
        return {};
    const QFileInfo file(root + QLatin1Char('/') + parts.join(QLatin1Char('/')));
    const QString real = file.canonicalFilePath();
    return file.isFile() && real.startsWith(root + QLatin1Char('/')) ? real : QString();
}

void answer(const QString& root, const httplib::Request& request, httplib::Response& response)
{
    if (request.method != "GET" && request.method != "HEAD") {
        response.status = 405;
        return;
    }
    QFile file(fileOf(root, QString::fromStdString(request.path)));
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly)) {
        response.status = 404;
        return;
    }
    const QByteArray bytes = file.readAll();
    response.set_content(bytes.constData(), static_cast<size_t>(bytes.size()),
                         "application/octet-stream");
    // The other files' addresses change with their content, so only this one may not be kept.
    if (file.fileName().endsWith(QStringLiteral("/app/versions.json")))
        response.set_header("Cache-Control", "no-cache");
}

/** Without the option that lets two servers share one port. */
void setSocketOptions(socket_t socket)
{
    const int yes = 1;
#ifdef Q_OS_WIN
    const int option = SO_EXCLUSIVEADDRUSE;
#else
    const int option = SO_REUSEADDR;
#endif
    setsockopt(socket, SOL_SOCKET, option, reinterpret_cast<const char*>(&yes), sizeof yes);
}

} // namespace

struct ContentServer::Running
{
    httplib::Server server;
    std::thread thread;
    std::atomic<int> requests {0};
};

ContentServer::ContentServer() = default;

bool ContentServer::start(const QString& folder, int port, QString* error, const Tell& tell)
{
    const QString root = QFileInfo(folder).canonicalFilePath();
    if (!QFileInfo(root).isDir()) {
        *error = QStringLiteral("%1 is not a folder").arg(folder);
        return false;
    }
    m_running = std::make_unique<Running>();
    httplib::Server& server = m_running->server;
    // A connection that is kept open would keep stop() waiting for its next request.
    server.set_keep_alive_max_count(1);
    server.set_socket_options(&setSocketOptions);
    // Counted as it comes in: whoever has the answer may look at the count.
    server.set_pre_routing_handler(
        [running = m_running.get(), root](const auto& request, auto& response) {
            ++running->requests;
            answer(root, request, response);
            return httplib::Server::HandlerResponse::Handled;
        });
    server.set_logger([tell](const auto& request, const auto& response) {
        if (tell)
            tell(QStringLiteral("%1 %2 %3")
                     .arg(QString::number(response.status), QString::fromStdString(request.method),
                          QString::fromStdString(request.target)));
    });
    const std::string address = "127.0.0.1";
    const int bound = port == 0              ? server.bind_to_any_port(address)
        : server.bind_to_port(address, port) ? port
                                             : -1;
    if (bound <= 0) {
        *error = QStringLiteral("port %1 of 127.0.0.1 cannot be had").arg(port);
        return false;
    }
    m_baseUrl = QStringLiteral("http://127.0.0.1:%1").arg(bound);
    m_running->thread = std::thread([&server] { server.listen_after_bind(); });
    // stop() has no effect on a server that does not listen yet.
    while (!server.is_running())
        std::this_thread::yield();
    return true;
}

ContentServer::~ContentServer()
{
    stop();
}

QString ContentServer::baseUrl() const
{
    return m_baseUrl;
}

int ContentServer::requests() const
{
    return m_running == nullptr ? 0 : m_running->requests.load();
}

void ContentServer::stop()
{
    if (m_running == nullptr || !m_running->thread.joinable())
        return;
    m_running->server.stop();
    m_running->thread.join();
}
