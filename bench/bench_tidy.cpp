#include "tidy/zTidyMgr.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <thread>

// How much of a tidying run is work and how much its pauses: the run is timed side by side with a
// thread that does nothing but the same number of pauses, so that both wait for the same machine.
// Removing waits for the disk; a client's cache is rarely as stale as the last line has it.

namespace {

constexpr int pairs = 625; // of an old and a new entry, in each of four folders
constexpr int entries = 4 * 2 * pairs;

/** Of how many pairs one is stale, and with it three files where it is a folder. */
struct Mix
{
    const char* name;
    int stalePairs;
};

constexpr Mix mixes[] = {{"none", 0}, {"a tenth", pairs / 5}, {"half", pairs}};

void write(const QString& path, bool stale)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("content") < 0 || !file.flush())
        qFatal("cannot write %s", qPrintable(path));
    const QDateTime modified = QDateTime::currentDateTime().addDays(stale ? -8 : 0);
    file.setFileTime(modified, QFileDevice::FileModificationTime);
}

void writeFolder(const QString& base, const QString& name, int version, bool stale)
{
    const QString folder = QStringLiteral("%1/%2_%3").arg(base, name, QString::number(version));
    QDir().mkpath(folder);
    for (const QString& file : {name, name + QStringLiteral(".json"), QStringLiteral("1.png")})
        write(folder + QLatin1Char('/') + file, stale);
}

void writeCache(int stalePairs)
{
    QDir(QStringLiteral("res")).removeRecursively();
    QDir().mkpath(QStringLiteral("res/dataTable"));
    for (int pair = 0; pair < pairs; ++pair) {
        for (int version = 0; version < 2; ++version) {
            const bool stale = version == 0 && pair < stalePairs;
            const QString name = QStringLiteral("name%1").arg(pair);
            write(QStringLiteral("res/dataTable/%1_%2").arg(pair).arg(version), stale);
            writeFolder(QStringLiteral("res/animation"), name, version, stale);
            writeFolder(QStringLiteral("res/flash"), name, version, stale);
            writeFolder(QStringLiteral("res/flashext"), name, version, stale);
        }
    }
}

/** Where a client's log lines go: a file. */
void logToFile(QtMsgType, const QMessageLogContext&, const QString& text)
{
    static QFile file(QStringLiteral("log.txt"));
    if (file.isOpen() || file.open(QIODevice::WriteOnly))
        file.write(text.toUtf8() + '\n');
}

struct Times
{
    double run = 0; // milliseconds
    double pauses = 0;
};

Times measure()
{
    Times times;
    const auto milliseconds = [](const QElapsedTimer& timer) {
        return double(timer.nsecsElapsed()) / 1e6;
    };
    std::thread pauses([&] {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < entries; ++i)
            QThread::msleep(1);
        times.pauses = milliseconds(timer);
    });
    QElapsedTimer timer;
    timer.start();
    zTidyMgr::getInstance().startThread();
    zTidyMgr::getInstance().wait();
    times.run = milliseconds(timer);
    pauses.join();
    return times;
}

int entriesLeft()
{
    const QDir::Filters all = QDir::AllEntries | QDir::NoDotAndDotDot;
    int count = 0;
    for (const char* folder : {"dataTable", "animation", "flash", "flashext"})
        count += QDir(QStringLiteral("res/") + QLatin1String(folder)).entryList(all).size();
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    qInstallMessageHandler(logToFile);
    QTextStream out(stdout);
    out << "Tidying " << entries << " entries; goal: own work at most 15 % of the run\n\n"
        << "| stale | run, ms | the pauses alone, ms | own work, ms | share |\n"
        << "|---|---:|---:|---:|---:|\n";
    for (const Mix& mix : mixes) {
        writeCache(mix.stalePairs);
        const Times times = measure();
        if (entriesLeft() != entries - 4 * mix.stalePairs)
            qFatal("%d entries left, %s were stale", entriesLeft(), mix.name);
        const double work = times.run - times.pauses;
        out << QStringLiteral("| %1 | %2 | %3 | %4 | %5 % |\n")
                   .arg(QLatin1String(mix.name), QString::number(times.run, 'f', 0),
                        QString::number(times.pauses, 'f', 0), QString::number(work, 'f', 0),
                        QString::number(100 * work / times.run, 'f', 1));
        out.flush();
    }
    QDir::setCurrent(QDir::rootPath());
    qInstallMessageHandler(nullptr);
    return 0;
}
