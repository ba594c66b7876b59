#include "EdgeAndOrigin.h"

#include "Published.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace {

const QString originPort = QStringLiteral("8080");

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QDir().mkpath(QFileInfo(path).path());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error(qPrintable(QStringLiteral("cannot write ") + path));
}

QString limitOf(int mostPerSecond)
{
    return QStringLiteral("limit_req_zone $server_port zone=all:1m rate=%1r/s;\n"
                          "limit_req zone=all burst=%2 nodelay;\n"
                          "limit_req_status 503;\n"
                          "limit_req_log_level info;\n")
        .arg(mostPerSecond)
        .arg(mostPerSecond / 10);
}

} // namespace

EdgeAndOrigin::EdgeAndOrigin(int mostPerSecond)
    : m_originPort(Nginx::freePort())
    , m_edgePort(Nginx::freePort())
{
    startOrigin();
    startEdge(mostPerSecond);
}

void EdgeAndOrigin::startOrigin()
{
    const QString site = m_folder.filePath(QStringLiteral("origin"));
    for (const QString& file : Published::tableFiles() + QStringList {Published::versionsFile()}) {
        const QString path = site + QStringLiteral("/content/") + file;
        const QByteArray bytes = Published::bytesOf(file);
        write(path, bytes);
        write(path + QStringLiteral(".gz"), Published::gzip(bytes));
    }
    const QString configuration = Nginx::example(QStringLiteral("origin.conf"),
                                                 {{originPort, QString::number(m_originPort)}});
    m_origin = std::make_unique<Nginx>(site, configuration, m_originPort);
}

void EdgeAndOrigin::startEdge(int mostPerSecond)
{
    const QString http = QStringLiteral("\nhttp {\n");
    const QString configuration = Nginx::example(
        QStringLiteral("edge.conf"),
        {{originPort, QString::number(m_originPort)},
         {QStringLiteral("8081;"), QStringLiteral("%1 backlog=65535;").arg(m_edgePort)},
         {QStringLiteral("worker_connections 512"), QStringLiteral("worker_connections 65535")},
         {http, http + (mostPerSecond > 0 ? limitOf(mostPerSecond) : QString())}});
    m_edge = std::make_unique<Nginx>(m_folder.filePath(QStringLiteral("edge")), configuration,
                                     m_edgePort);
}

QStringList EdgeAndOrigin::endAndTellRequests()
{
    m_edge->stop();
    m_origin->stop();
    return m_origin->accessLog();
}
