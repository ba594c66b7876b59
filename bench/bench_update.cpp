// How long an update of all tables takes beside curl on the same addresses, over HTTP/1.1 and over
// HTTP/2 in front of the same server. Each repetition has servers of its own, so that nobody finds
// a connection open, and goes all ways in turn. curl is timed from its start to its end, less the
// time of a curl that copies an empty file.

#include "DelayedServer.h"
#include "Published.h"
#include "Spread.h"
#include "TlsFront.h"

#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "file/WholeFile.h"
#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <functional>
#include <stdexcept>

namespace {

constexpr int answerDelay = 20; // milliseconds
constexpr int patience = 60 * 1000;
constexpr int timesCurrent = 20;

[[noreturn]] void fail(const QString& why)
{
    throw std::runtime_error(why.toStdString());
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void emptyFolder(const QString& name)
{
    QDir(name).removeRecursively();
    QDir().mkpath(name);
}

double milliseconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/** The addresses, without the server. */
QStringList targets()
{
    QStringList all;
    for (const QString& file : Published::tableFiles())
        all.append(QStringLiteral("/%1?1").arg(file));
    return all;
}

/** Throws unless the files have the bytes of the published tables, in the order of these. */
void check(const QStringList& files)
{
    const QStringList published = Published::tableFiles();
    for (int i = 0; i < published.size(); ++i)
        if (contentOf(files.value(i)) != Published::bytesOf(published.at(i)))
            fail(QStringLiteral("other bytes than published in ") + files.value(i));
}

/** Milliseconds from the call to the promise, or to the end of the last of so many requests, if
 *  that is later: one table is not waited for. */
double update(int requests)
{
    QEventLoop loop;
    int missing = requests + 1;
    const auto done = [&] {
        if (--missing == 0)
            loop.quit();
    };
    bool ok = false;
    QObject::connect(ZHttpComm::getInstance(), &ZHttpComm::sigRequestFinished, &loop, done);
    QElapsedTimer timer;
    timer.start();
    ZDataTableMgr::getInstance()
        ->updateAllDataTable()
        .then([&] {
            ok = true;
            done();
        })
        .fail([&] { loop.quit(); });
    loop.exec();
    const double time = milliseconds(timer);
    QCoreApplication::processEvents(); // that one table may have to be stored yet
    if (!ok)
        fail(QStringLiteral("the update failed"));
    return time;
}

double ourUpdate(const QString& server)
{
    emptyFolder(QStringLiteral("res"));
    ZGlobalConfig::getInstance().setConfig(QStringLiteral("cmsServer"), server + QLatin1Char('/'));
    const double time = update(TableCatalogue::types().size());
    QStringList files;
    for (const QString& name : ZDataTableMgr::getInstance()->getAllTableName())
        files.append(QStringLiteral("res/dataTable/") + name);
    check(files);
    return time;
}

/** Milliseconds from curl's start to its end. */
double curlOf(const QString& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer timer;
    timer.start();
    process.start(QStringLiteral("curl"),
                  QStringLiteral("-fsS --compressed --cacert %1 --parallel %2")
                      .arg(TlsFront::certificate(), arguments)
                      .split(QLatin1Char(' ')));
    const bool ended = process.waitForFinished(patience);
    const double time = milliseconds(timer);
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        fail(QStringLiteral("curl failed: ") + QString::fromUtf8(process.readAll()));
    return time;
}

double curl(const QString& server, const QString& options)
{
    emptyFolder(QStringLiteral("curl"));
    QFile list(QStringLiteral("curl.txt"));
    if (!list.open(QIODevice::WriteOnly))
        fail(list.errorString());
    QStringList files;
    for (const QString& target : targets()) {
        files.append(QStringLiteral("curl/%1").arg(files.size()));
        list.write(
            QStringLiteral("url = %1%2\noutput = %3\n").arg(server, target, files.last()).toUtf8());
    }
    list.close();
    const double time = curlOf(options + QStringLiteral(" --config ") + list.fileName());
    check(files);
    return time;
}

double curlSixConnections(const QString& server)
{
    return curl(server, QStringLiteral("--http1.1 --parallel-max 6"));
}

double curlOneConnection(const QString& server)
{
    return curl(server, QStringLiteral("--http2 --parallel-max 48"));
}

/** What the disk takes of an update: the same files, whole or not at all. */
double writing()
{
    emptyFolder(QStringLiteral("written"));
    QVector<QByteArray> tables;
    for (const QString& file : Published::tableFiles())
        tables.append(Published::bytesOf(file));
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < tables.size(); ++i) {
        const QString fault = WholeFile::write(QStringLiteral("written/%1").arg(i), tables.at(i));
        if (!fault.isEmpty())
            fail(fault);
    }
    return milliseconds(timer);
}

double curlOfNothing()
{
    QFile empty(QStringLiteral("empty"));
    if (!empty.open(QIODevice::WriteOnly))
        fail(empty.errorString());
    return curlOf(QStringLiteral("--output nothing file://") + QFileInfo(empty).absoluteFilePath());
}

/** A way to get all tables. */
struct Way
{
    QString name;
    bool isOverTls;
    bool isCurl;
    double (*fetch)(const QString& server);
    QVector<double> times = {}; // milliseconds, by repetition
};

struct Figures
{
    QVector<Way> ways {
        {QStringLiteral("curl, HTTP/1.1, six connections"), false, true, &curlSixConnections},
        {QStringLiteral("the update, HTTP/1.1"), false, false, &ourUpdate},
        {QStringLiteral("the update, HTTP/2"), true, false, &ourUpdate},
        {QStringLiteral("curl, HTTP/2"), true, true, &curlOneConnection},
    };
    Spread startOfCurl;
    Spread writing;
    Spread current;
};

void repeat(Figures& figures, int repetition)
{
    DelayedServer server(answerDelay);
    QStringList wanted = targets();
    wanted.sort();
    TlsFront front(server.port());
    const QString plain = QStringLiteral("http://127.0.0.1:%1").arg(server.port());
    const QString tls = QStringLiteral("https://127.0.0.1:%1").arg(front.port());

    figures.startOfCurl.add(curlOfNothing());
    figures.writing.add(writing());
    for (int i = 0; i < figures.ways.size(); ++i) {
        Way& way = figures.ways[(i + repetition) % figures.ways.size()];
        way.times.append(way.fetch(way.isOverTls ? tls : plain));
        if (server.takeTargets() != wanted)
            fail(way.name + QStringLiteral(" asked for other addresses"));
    }
    for (int i = 0; i < timesCurrent; ++i)
        figures.current.add(update(0));
    if (!server.takeTargets().isEmpty())
        fail(QStringLiteral("a current table was asked for"));
    const QStringList protocols = front.endAndTellProtocols();
    if (protocols.size() != protocols.count(QStringLiteral("HTTP/2.0")))
        fail(QStringLiteral("not all was HTTP/2: ") + protocols.join(QLatin1Char(' ')));
}

void print(const Figures& figures, int repetitions)
{
    QTextStream out(stdout);
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(2);
    out << TableCatalogue::types().size() << " tables, each answered after " << answerDelay
        << " ms, " << repetitions
        << " times; goals: at most 1.00 over HTTP/1.1, 0.50 over HTTP/2\n\n"
        << "| median | ms | times the first | least | most |\n|---|---:|---:|---:|---:|\n";
    const auto timeOf = [start = figures.startOfCurl.median()](const Way& way, int repetition) {
        return way.times.at(repetition) - (way.isCurl ? start : 0);
    };
    for (const Way& way : figures.ways) {
        Spread times;
        Spread shares; // of the first way's time in the same repetition
        for (int i = 0; i < repetitions; ++i) {
            times.add(timeOf(way, i));
            shares.add(timeOf(way, i) / timeOf(figures.ways.first(), i));
        }
        out << "| " << way.name << " | " << times.median() << " | " << shares.median() << " | "
            << shares.least() << " | " << shares.most() << " |\n";
    }
    out << "| writing the files alone, as the update does | " << figures.writing.median()
        << " | | | |\n| the update, every file current, no request | " << figures.current.median()
        << " | | | |\n\nTaken off curl's times, for its start: " << figures.startOfCurl.median()
        << " ms, the median.\n";
}

void measure(int repetitions)
{
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    TlsFront::makeCertificate();
    ZGlobalConfig::getInstance().setConfig(QStringLiteral("ServerType"), QStringLiteral("1002"));
    for (const auto type : TableCatalogue::types())
        ZDataTableMgr::getInstance()->setTableVersion(type, 1, false);

    Figures figures;
    for (int i = 0; i < repetitions; ++i)
        repeat(figures, i);
    print(figures, repetitions);
    QDir::setCurrent(QDir::rootPath());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption times(QStringLiteral("times"), QStringLiteral("Repetitions."),
                                   QStringLiteral("number"), QStringLiteral("15"));
    parser.addOption(times);
    parser.process(application);
    // What a client's log gets is no matter here, and costs the same whatever the way.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    try {
        measure(qMax(1, parser.value(times).toInt()));
    } catch (const std::exception& fault) {
        QTextStream(stderr) << fault.what() << '\n';
        return 1;
    }
    return 0;
}
