#include "Nginx.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>

#include <stdexcept>

namespace {

constexpr int patience = 20 * 1000; // milliseconds, on a busy machine too

QString contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(QStringLiteral("cannot read ") + path));
    return QString::fromUtf8(file.readAll());
}

bool takesConnections(int port)
{
    QTcpSocket probe;
    probe.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(port));
    return probe.waitForConnected(patience);
}

} // namespace

int Nginx::freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

QString Nginx::example(const QString& name, const QVector<Change>& changes)
{
    QString text = contentOf(QStringLiteral(ZGLOBAL_EXAMPLES "/nginx/") + name);
    for (const Change& change : changes) {
        if (!text.contains(change.from))
            throw std::runtime_error(qPrintable(name + QStringLiteral(" has no ") + change.from));
        text.replace(change.from, change.to);
    }
    return text;
}

Nginx::Nginx(const QString& folder, const QString& configuration, int port)
    : m_folder(folder)
{
    QFile file(folder + QStringLiteral("/bench.conf"));
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly)
        || file.write(configuration.toUtf8()) < 0 || !file.flush())
        throw std::runtime_error(qPrintable(QStringLiteral("cannot write ") + file.fileName()));
    // Named relative to the current folder: started by root, nginx reads files as another user, who
    // may not pass a temporary folder.
    m_process.setWorkingDirectory(folder);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QStringLiteral("nginx"),
                    {QStringLiteral("-p"), QStringLiteral("./"), QStringLiteral("-e"),
                     QStringLiteral("error.log"), QStringLiteral("-c"),
                     QStringLiteral("bench.conf"), QStringLiteral("-g"),
                     QStringLiteral("daemon off;")});
    QElapsedTimer waited;
    waited.start();
    while (!takesConnections(port)) {
        if (m_process.waitForFinished(20) || m_process.state() == QProcess::NotRunning
            || waited.elapsed() > patience)
            throw std::runtime_error("nginx does not run: " + m_process.readAll().toStdString()
                                     + m_process.errorString().toStdString());
    }
}

Nginx::~Nginx()
{
    stop();
}

void Nginx::stop()
{
    m_process.terminate();
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(patience))
        m_process.kill();
}

QStringList Nginx::accessLog() const
{
    return contentOf(m_folder + QStringLiteral("/access.log"))
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
