#include "Heap.h"
#include "SampleTables.h"

#include "datatable/ZDataTableMgr.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <vector>

// Loading tables, beside what Qt needs for parsing the same bytes. Names are subject/side/size, the
// size in rows; the options are Google Benchmark's, where a file for the figures has to be named by
// a whole path: the program works in a folder of its own.

namespace {

using benchmark::State;

bool allAreRight = true;

void fail(State& state, const QString& cause)
{
    allAreRight = false;
    std::fprintf(stderr, "%s\n", qPrintable(cause));
    state.SkipWithError("not what it should be");
}

QString written(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s: %s", qPrintable(path), qPrintable(file.errorString()));
    return path;
}

/** A table of some rows, as a file for us and as bytes for Qt. */
class Sample
{
public:
    Sample(const TableStatus& table, int rows)
        : m_table(table)
        , m_bytes(SampleTables::bytes(table, rows))
        , m_path(written(table.table, m_bytes))
        , m_emptyPath(
              written(table.table + QStringLiteral(" empty"), SampleTables::bytes(table, 0)))
    {
    }

    bool load() const { return m_table.declaration->load(m_path); }

    /** The manager as before the first load, and nothing under way that a load has begun. */
    void unload() const
    {
        m_table.declaration->load(m_emptyPath);
        QCoreApplication::processEvents();
    }

    const QByteArray& bytes() const { return m_bytes; }

private:
    TableStatus m_table;
    QByteArray m_bytes;
    QString m_path;
    QString m_emptyPath;
};

void loadFirst(State& state, const TableStatus& table, int rows)
{
    const Sample sample(table, rows);
    for (auto _ : state) {
        state.PauseTiming();
        sample.unload();
        state.ResumeTiming();
        benchmark::DoNotOptimize(sample.load());
    }
    state.SetItemsProcessed(state.iterations() * rows);
    sample.unload();
    const auto before = heapInUse();
    if (!sample.load())
        return fail(state, table.table + QStringLiteral(" cannot be loaded"));
    if (const auto after = heapInUse())
        state.counters["heap_per_byte"] = (*after - *before) / sample.bytes().size();
    if (rows > 1000) // what is right for these is right for more of them
        return sample.unload();
    const QString difference = SampleTables::difference(table, sample.bytes());
    if (!difference.isEmpty())
        fail(state, difference);
    sample.unload();
}

/** The same on a heap as a new process has it, where memory is still to be had from the system. */
void loadInNewProcess(State& state, const TableStatus& table, int rows)
{
    const Sample sample(table, rows);
    for (auto _ : state) {
        state.PauseTiming();
        sample.unload();
        returnUnusedHeap();
        state.ResumeTiming();
        benchmark::DoNotOptimize(sample.load());
    }
    sample.unload();
}

void parse(State& state, const TableStatus& table, int rows)
{
    const QByteArray bytes = SampleTables::bytes(table, rows);
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(bytes));
    state.SetItemsProcessed(state.iterations() * rows);
}

void readValue(const QJsonValue& cell)
{
    if (cell.isString())
        benchmark::DoNotOptimize(cell.toString());
    else if (cell.isDouble())
        benchmark::DoNotOptimize(cell.toInt());
    else
        benchmark::DoNotOptimize(cell.toBool());
}

void parseAndReadCells(State& state, const TableStatus& table, int rows)
{
    const QByteArray bytes = SampleTables::bytes(table, rows);
    for (auto _ : state) {
        const QJsonObject whole = QJsonDocument::fromJson(bytes).object();
        for (const QJsonValue& row : whole.value(QLatin1String("rows")).toArray()) {
            const QJsonArray cells = row.toArray();
            for (int i = 0; i < cells.size(); ++i)
                readValue(cells.at(i));
        }
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

void loadAgain(State& state, const TableStatus& table, int rows)
{
    const Sample sample(table, rows);
    sample.load();
    for (auto _ : state) {
        state.PauseTiming();
        QCoreApplication::processEvents();
        state.ResumeTiming();
        benchmark::DoNotOptimize(sample.load());
    }
    sample.unload();
}

/** What a thousand reloads leave behind, counted once the first has left what stays for good. */
void loadAThousandTimes(State& state, const TableStatus& table, int rows)
{
    const Sample sample(table, rows);
    sample.load();
    sample.load();
    const auto before = heapInUse();
    for (auto _ : state) {
        for (int i = 0; i < 1000; ++i)
            benchmark::DoNotOptimize(sample.load());
    }
    if (const auto after = heapInUse())
        state.counters["heap_left_bytes"] = *after - *before;
    sample.unload();
}

QVector<TableStatus> readTables()
{
    QVector<TableStatus> tables;
    for (const TableStatus& status : ZDataTableMgr::getInstance()->getTableStatuses()) {
        if (status.declaration != nullptr)
            tables.append(status);
    }
    return tables;
}

/** The bytes of every table of the start-up load. */
using Content = QHash<QString, QByteArray>;

Content exampleContent()
{
    Content content;
    for (const TableStatus& table : readTables()) {
        QFile file(QStringLiteral(ZGLOBAL_EXAMPLES "/content/app/resources/") + table.table);
        if (table.loadedAtStart && file.open(QIODevice::ReadOnly))
            content.insert(table.table, file.readAll());
    }
    return content;
}

/** One large table, some of middle size, many small ones. */
Content mixedContent()
{
    static const int sizes[] {30, 1000, 200, 30, 3000, 30, 200};
    Content content;
    for (const TableStatus& table : readTables()) {
        const int rows = table.table == QLatin1String("CS_GiftList")
            ? 5000
            : sizes[content.size() % (sizeof(sizes) / sizeof(*sizes))];
        if (table.loadedAtStart)
            content.insert(table.table, SampleTables::bytes(table, rows));
    }
    return content;
}

void loadAll(State& state, Content (*make)())
{
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    const Content content = make();
    std::vector<Sample> samples;
    for (const TableStatus& table : readTables()) {
        if (table.loadedAtStart) {
            written(table.path, content.value(table.table));
            samples.emplace_back(table, 0);
        }
    }
    for (auto _ : state) {
        state.PauseTiming();
        for (const Sample& sample : samples)
            sample.unload();
        state.ResumeTiming();
        benchmark::DoNotOptimize(tables->loadAllTables());
    }
    for (const TableStatus& table : readTables()) {
        if (table.loadedAtStart && table.state != TableStatus::Loaded)
            fail(state, table.table + QStringLiteral(" was not loaded"));
    }
    for (const Sample& sample : samples)
        sample.unload();
}

void parseAll(State& state, Content (*make)())
{
    const Content content = make();
    for (auto _ : state) {
        for (const QByteArray& bytes : content)
            benchmark::DoNotOptimize(QJsonDocument::fromJson(bytes));
    }
}

template <class... Arguments>
void add(const QString& subject, const char* side, int size, Arguments... arguments)
{
    const QString name =
        subject + QLatin1Char('/') + QLatin1String(side) + QLatin1Char('/') + QString::number(size);
    benchmark::RegisterBenchmark(qPrintable(name), arguments...)->Unit(benchmark::kMillisecond);
}

void addTable(const TableStatus& table)
{
    const bool isGiftTable = table.table == QLatin1String("CS_GiftList");
    const QString load = QStringLiteral("load_") + table.table;
    const QString reload = QStringLiteral("reload_") + table.table;
    const QVector<int> sizes = isGiftTable ? QVector<int> {1000, 5000, 10000, 50000, 100000}
                                           : QVector<int> {1000, 10000, 100000};
    for (const int rows : sizes) {
        add(load, "ours", rows, &loadFirst, table, rows);
        add(load, "parse", rows, &parse, table, rows);
        if (isGiftTable || rows == 10000)
            add(load, "cells", rows, &parseAndReadCells, table, rows);
    }
    for (const int rows : isGiftTable ? QVector<int> {5000, 50000} : QVector<int> {10000}) {
        add(reload, "ours", rows, &loadAgain, table, rows);
        add(reload, "first", rows, &loadInNewProcess, table, rows);
    }
    if (isGiftTable)
        add(QStringLiteral("reload_thousandfold"), "ours", 200, &loadAThousandTimes, table, 200);
}

void addAll()
{
    for (const TableStatus& table : readTables())
        addTable(table);
    const int count = exampleContent().size();
    add(QStringLiteral("loadAllTables_examples"), "ours", count, &loadAll, &exampleContent);
    add(QStringLiteral("loadAllTables_examples"), "parse", count, &parseAll, &exampleContent);
    add(QStringLiteral("loadAllTables_mixed"), "ours", count, &loadAll, &mixedContent);
    add(QStringLiteral("loadAllTables_mixed"), "parse", count, &parseAll, &mixedContent);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    const QTemporaryDir folder;
    if (!folder.isValid() || !QDir::setCurrent(folder.path())
        || !QDir().mkpath(QStringLiteral("res/dataTable")))
        qFatal("cannot make a folder: %s", qPrintable(folder.errorString()));
    QLoggingCategory::setFilterRules(QStringLiteral("zglobal.*=false"));
    addAll();
    benchmark::RunSpecifiedBenchmarks();
    QDir::setCurrent(QDir::rootPath()); // a folder that is worked in cannot be removed everywhere
    return allAreRight ? 0 : 1;
}
