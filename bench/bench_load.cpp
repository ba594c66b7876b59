// Thousands of clients at once bring themselves up to date over an edge and an origin, as the
// examples configure them: what reaches the origin, what goes over the line, how long it takes;
// and, at an edge that refuses what is too much, what random pauses before the further tries are
// worth. Clients and servers share this machine.

#include "EdgeAndOrigin.h"
#include "LoadClient.h"
#include "Published.h"

#include "host/RetryPolicy.h"
#include "host/ZHttpComm.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <QTimer>

#include <ctime>
#include <memory>
#include <stdexcept>
#include <vector>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

constexpr int connectionsOfClient = 6;
constexpr int filesBesides = 200;        // that this process has open beside its connections
constexpr int patience = 10 * 60 * 1000; // milliseconds

[[noreturn]] void fail(const QString& why)
{
    throw std::runtime_error(why.toStdString());
}

/** In the order in which a client asks for them. */
QStringList filesOfClient()
{
    return QStringList {Published::versionsFile()} + Published::tableFiles();
}

/** How many files this process, and those that it starts, may have open. */
int openFilesAllowed()
{
#ifdef Q_OS_UNIX
    rlimit limit {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = qMin<rlim_t>(limit.rlim_max, 100 * 1000);
    setrlimit(RLIMIT_NOFILE, &limit);
    getrlimit(RLIMIT_NOFILE, &limit);
    return static_cast<int>(limit.rlim_cur);
#else
    return 8 * 1024;
#endif
}

/** Processor time of the servers that have ended so far, in seconds. */
double secondsOfServers()
{
#ifdef Q_OS_UNIX
    rusage usage {};
    getrusage(RUSAGE_CHILDREN, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
        + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
#else
    return 0;
#endif
}

struct Result
{
    LoadCount count;
    double seconds = 0;        ///< until the last client was done
    double ownSeconds = 0;     ///< processor time of the clients
    double serversSeconds = 0; ///< and of the edge and the origin
    QStringList atOrigin;      ///< a log line for each request
};

using Pause = std::function<int(int retry)>;

/** The pauses of the library's tries. */
int randomPause(int retry)
{
    return RetryPolicy {ZHttpComm::defaultRetries, ZHttpComm::defaultRetryTime}.pauseBefore(retry,
                                                                                            0);
}

/** As long as the random ones in the mean, and the same for all clients. */
int samePause(int retry)
{
    static const QVector<int> means = [] {
        constexpr int draws = 1000;
        QVector<int> all;
        for (int number = 1; randomPause(number) >= 0; ++number) {
            qint64 sum = 0;
            for (int i = 0; i < draws; ++i)
                sum += randomPause(number);
            all.append(static_cast<int>(sum / draws));
        }
        return all;
    }();
    return means.value(retry - 1, -1);
}

LoadPlan planFor(int port, bool asksForGzip, const Pause& pauseBefore)
{
    LoadPlan plan {port, {}, asksForGzip, pauseBefore};
    const QJsonObject versions =
        QJsonDocument::fromJson(Published::bytesOf(Published::versionsFile()))
            .object()
            .value(QStringLiteral("versions"))
            .toObject();
    plan.targets.append('/' + Published::versionsFile().toUtf8());
    for (const QString& file : Published::tableFiles()) {
        const QString version = QString::number(versions.value(QFileInfo(file).fileName()).toInt());
        plan.targets.append(QStringLiteral("/%1?%2").arg(file, version).toUtf8());
    }
    return plan;
}

Result run(int clients, bool asksForGzip, int mostPerSecond, const Pause& pauseBefore)
{
    const double before = secondsOfServers();
    EdgeAndOrigin servers(mostPerSecond);
    const LoadPlan plan = planFor(servers.port(), asksForGzip, pauseBefore);
    Result result;
    QEventLoop loop;
    int missing = clients;
    std::vector<std::unique_ptr<LoadClient>> all;
    for (int i = 0; i < clients; ++i)
        all.push_back(std::make_unique<LoadClient>(plan, result.count, [&] {
            if (--missing == 0)
                loop.quit();
        }));
    QTimer::singleShot(patience, &loop, [&] { loop.exit(1); });
    QElapsedTimer timer;
    timer.start();
    const std::clock_t begin = std::clock();
    for (const auto& client : all)
        client->start();
    if (loop.exec() != 0)
        fail(QStringLiteral("%1 clients never came to an end").arg(missing));
    result.seconds = double(timer.nsecsElapsed()) / 1e9;
    result.ownSeconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    all.clear();
    result.atOrigin = servers.endAndTellRequests();
    result.serversSeconds = secondsOfServers() - before;
    return result;
}

struct Load
{
    int clients;
    bool asksForGzip;
};

/** Throws unless all clients got all of everything, and the origin was asked for each table once.
 */
void check(const Result& result, const Load& load)
{
    qint64 bytes = 0;
    for (const QString& file : filesOfClient()) {
        const QByteArray plain = Published::bytesOf(file);
        bytes +=
            load.clients * qint64(load.asksForGzip ? Published::gzip(plain).size() : plain.size());
    }
    // Unpacked on the way, a body comes in chunks.
    if (result.count.failedClients > 0 || result.count.bodies < bytes
        || (load.asksForGzip && result.count.bodies != bytes))
        fail(QStringLiteral("%1 clients failed; %2 bytes came and %3 were to come")
                 .arg(result.count.failedClients)
                 .arg(result.count.bodies)
                 .arg(bytes));
    const int tables = result.atOrigin.filter(QStringLiteral("GET /app/resources/")).size();
    if (tables != Published::tableFiles().size())
        fail(QStringLiteral("the origin was asked for %1 tables").arg(tables));
}

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

void printLoad(const QVector<Load>& loads)
{
    out() << "All " << filesOfClient().size()
          << " files for each client, nothing in the edge's cache at first\n\n"
             "| clients at once | gzip | requests to the origin | bytes a client | seconds to the "
             "last | requests/s | servers' microseconds a request | clients' share of a core |\n"
             "|---:|---|---:|---:|---:|---:|---:|---:|\n";
    for (const Load& load : loads) {
        const Result result = run(load.clients, load.asksForGzip, 0, &randomPause);
        check(result, load);
        const auto answered = double(result.count.answered);
        out() << "| " << load.clients << " | " << (load.asksForGzip ? "yes" : "no") << " | "
              << result.atOrigin.size() << " | " << result.count.received / load.clients << " | "
              << QString::number(result.seconds, 'f', 2) << " | "
              << QString::number(answered / result.seconds, 'f', 0) << " | "
              << QString::number(1e6 * result.serversSeconds / answered, 'f', 1) << " | "
              << QString::number(100 * result.ownSeconds / result.seconds, 'f', 0) << " % |\n";
        out().flush();
    }
}

/** At an edge that could answer all within a second, if they came evenly. */
void printRefusals(int clients)
{
    const int mostPerSecond = clients * filesOfClient().size();
    out() << "\n"
          << clients << " clients at once, at an edge that answers " << mostPerSecond
          << " requests a second and refuses the others with 503\n\n"
             "| pauses | refused at the first try | at the second | at the third | clients that "
             "failed | seconds to the last |\n|---|---:|---:|---:|---:|---:|\n";
    const auto line = [&](const QString& how, const Pause& pauseBefore) {
        const Result result = run(clients, true, mostPerSecond, pauseBefore);
        out() << "| " << how << " |";
        for (size_t retry = 0; retry < 3; ++retry)
            out() << ' ' << result.count.refused.at(retry) << " |";
        out() << ' ' << result.count.failedClients << " | "
              << QString::number(result.seconds, 'f', 2) << " |\n";
        out().flush();
    };
    line(QStringLiteral("the same for all"), &samePause);
    line(QStringLiteral("random, as in the library"), &randomPause);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_NO_GLIB", "1"); // whose list of sockets is slow with thousands
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption most(QStringLiteral("clients"),
                                  QStringLiteral("How many at once, at most."),
                                  QStringLiteral("number"), QStringLiteral("3000"));
    parser.addOption(most);
    parser.process(application);
    const int wanted = qMax(30, parser.value(most).toInt());
    const int possible = qMin(wanted, (openFilesAllowed() - filesBesides) / connectionsOfClient);
    try {
        if (possible < wanted)
            out() << "Only " << possible << " clients, for want of open files.\n\n";
        printLoad({{possible / 3, true}, {possible / 3, false}, {possible, true}});
        printRefusals(possible / 30);
    } catch (const std::exception& fault) {
        out().flush();
        QTextStream(stderr) << fault.what() << '\n';
        return 1;
    }
    return 0;
}
