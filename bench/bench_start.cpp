#include "Measured.h"

#include "client/ZGlobalClient.h"
#include "datatable/ZDataTableMgr.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <benchmark/benchmark.h>

// From the start of a process to the moment when a client could show itself: versions known, every
// table of the published examples loaded without a failure. Beside it a program that only makes a
// QCoreApplication.

namespace {

QByteArray published(const QString& name)
{
    QFile file(QStringLiteral(ZGLOBAL_EXAMPLES "/content/app/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    return file.readAll();
}

/** A client's folder as an update leaves it; its server is one that refuses at once. */
QString makeFolder()
{
    const QString start = QDir::currentPath();
    ZGlobalClient client;
    if (!client.open(QStringLiteral("client"),
                     ZGlobalClient::configurationFor(QStringLiteral("http://127.0.0.1:9"))))
        qFatal("cannot make a client's folder");
    const QString folder = QDir::currentPath();
    for (const char* below : {"res/dataTable", "res/activity"})
        QDir().mkpath(QLatin1String(below));
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    const QJsonObject versions = QJsonDocument::fromJson(published(QStringLiteral("versions.json")))
                                     .object()
                                     .value(QStringLiteral("versions"))
                                     .toObject();
    for (const TableStatus& status : tables->getTableStatuses()) {
        QString path = QStringLiteral("res/activity/") + status.table; // the one without a version
        if (status.kind >= 0) {
            const auto type = static_cast<EDataTable::EDataTableType>(status.kind);
            tables->setTableVersion(type, versions.value(status.table).toInt(), true);
            path = tables->getTableStatus(type).path;
        }
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)
            || file.write(published(QStringLiteral("resources/") + status.table)) < 0)
            qFatal("cannot write %s", qPrintable(path));
    }
    QEventLoop saved;
    QObject::connect(tables, &ZDataTableMgr::sigVersionsSaved, &saved, &QEventLoop::quit);
    saved.exec();
    QDir::setCurrent(start);
    return folder;
}

void start(benchmark::State& state, const QString& program)
{
    static const QString folder = makeFolder();
    for (auto _ : state) {
        QProcess process;
        process.setStandardErrorFile(QProcess::nullDevice());
        QElapsedTimer timer;
        timer.start();
        process.start(QCoreApplication::applicationDirPath() + program, {folder});
        if (!process.waitForReadyRead() || process.readAll().trimmed() != "ready")
            state.SkipWithError("the program does not become ready");
        state.SetIterationTime(static_cast<double>(timer.nsecsElapsed()) / 1e9);
        process.waitForFinished();
        if (process.exitCode() != 0)
            state.SkipWithError("the program fails");
    }
}

void add(const char* side, const char* program)
{
    benchmark::RegisterBenchmark(
        qPrintable(Measured::name("start_to_ready", side, 33)),
        [=](benchmark::State& state) { start(state, QLatin1String(program)); })
        ->UseManualTime();
}

} // namespace

int main(int argc, char** argv)
{
    return Measured::run(argc, argv, [] {
        add("ours", "/start_client");
        add("QtCore", "/start_empty");
    });
}
