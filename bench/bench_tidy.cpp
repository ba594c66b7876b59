#include "Measured.h"

#include "tidy/zTidyMgr.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QThread>

#include <benchmark/benchmark.h>

#include <thread>
#include <utility>

// How much of a tidying run is work and how much its pauses: the run is timed side by side with a
// thread that does nothing but the same number of pauses, so that both wait for the same machine.
// Removing waits for the disk; a client's cache is rarely as stale as the last line has it.

namespace {

/** Pairs of an old and a new entry in each of four folders; the old one of some is stale, and with
 *  it three files where it is a folder. */
struct Mix
{
    const char* name;
    int pairs;
    int stalePairs;

    int entries() const { return 4 * 2 * pairs; }
};

constexpr Mix mixes[] = {
    {"tidy_none_stale", 10, 0},
    {"tidy_none_stale", 125, 0},
    {"tidy_tenth_stale", 125, 25},
    {"tidy_half_stale", 125, 125},
};

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

void writeCache(const Mix& mix)
{
    QDir(QStringLiteral("res")).removeRecursively();
    QDir().mkpath(QStringLiteral("res/dataTable"));
    for (int pair = 0; pair < mix.pairs; ++pair) {
        for (int version = 0; version < 2; ++version) {
            const bool stale = version == 0 && pair < mix.stalePairs;
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

int entriesLeft()
{
    const QDir::Filters all = QDir::AllEntries | QDir::NoDotAndDotDot;
    int count = 0;
    for (const char* folder : {"dataTable", "animation", "flash", "flashext"})
        count += QDir(QStringLiteral("res/") + QLatin1String(folder)).entryList(all).size();
    return count;
}

/** Of the run's time, and of the pauses' alone, in seconds. */
std::pair<double, double> timedRun(int entries)
{
    double pausesAlone = 0;
    const auto seconds = [](const QElapsedTimer& timer) {
        return static_cast<double>(timer.nsecsElapsed()) / 1e9;
    };
    std::thread pauses([&] {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < entries; ++i)
            QThread::msleep(1);
        pausesAlone = seconds(timer);
    });
    QElapsedTimer timer;
    timer.start();
    zTidyMgr::getInstance().startThread();
    zTidyMgr::getInstance().wait();
    const double run = seconds(timer);
    pauses.join();
    return {run, pausesAlone};
}

void tidy(benchmark::State& state, const Mix& mix)
{
    double run = 0;
    double pauses = 0;
    for (auto _ : state) {
        writeCache(mix);
        const auto times = timedRun(mix.entries());
        state.SetIterationTime(times.first);
        run += times.first;
        pauses += times.second;
        Measured::same(mix.name, entriesLeft(), mix.entries() - 4 * mix.stalePairs);
    }
    state.counters["own_share"] = (run - pauses) / run;
}

} // namespace

int main(int argc, char** argv)
{
    return Measured::run(argc, argv, [] {
        qInstallMessageHandler(logToFile);
        QLoggingCategory::setFilterRules({});
        for (const Mix& mix : mixes) {
            benchmark::RegisterBenchmark(
                qPrintable(Measured::name(mix.name, "ours", mix.entries())),
                [&mix](benchmark::State& state) { tidy(state, mix); })
                ->UseManualTime()
                ->Iterations(1);
        }
    });
}
