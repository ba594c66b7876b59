#include "Measured.h"

#include "datatable/Cells.h"
#include "host/ZGlobalConfig.h"

#include <QDateTime>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>

#include <random>

// Three dates a row, as the gift table has them: reading them beside Qt's own reading, and beside
// reading the table that they stand in.

namespace {

constexpr int dateCount = 9000;
constexpr char zone[] = "Asia/Shanghai";
constexpr char sameZone[] = ":Asia/Shanghai"; // written otherwise, so nothing known of it holds

/** Dates of two years, in no order. */
QStringList someDates()
{
    std::mt19937 random(1);
    const QDateTime from(QDate(2025, 1, 1), QTime(0, 0));
    QStringList dates;
    for (int i = 0; i < dateCount; ++i) {
        const int days = static_cast<int>(random() % 730);
        const int seconds = static_cast<int>(random() % 86400);
        dates.append(
            from.addDays(days).addSecs(seconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    }
    return dates;
}

const QStringList& dates()
{
    static const QStringList dates = someDates();
    return dates;
}

QByteArray tableOfDates()
{
    QJsonArray rows;
    for (int i = 0; i < dates().size(); i += 3)
        rows.append(QJsonArray {i, dates().at(i), dates().at(i + 1), dates().at(i + 2)});
    const QJsonArray columns {QStringLiteral("id"), QStringLiteral("from"), QStringLiteral("to"),
                              QStringLiteral("changed")};
    return QJsonDocument(
               QJsonObject {{QStringLiteral("columns"), columns}, {QStringLiteral("rows"), rows}})
        .toJson(QJsonDocument::Compact);
}

qint64 sumRead()
{
    const Cells::OneTimeZone oneZone; // as a load has it
    qint64 sum = 0;
    for (const QString& date : dates())
        sum += Cells::secondsOfDate(date);
    return sum;
}

qint64 sumFromString()
{
    const QString format = QStringLiteral("yyyy-MM-dd HH:mm:ss");
    qint64 sum = 0;
    for (const QString& date : dates())
        sum += QDateTime::fromString(date, format).toSecsSinceEpoch();
    return sum;
}

void ours(benchmark::State& state)
{
    Measured::same("dates", sumRead(), sumFromString());
    for (auto _ : state)
        benchmark::DoNotOptimize(sumRead());
}

void oursFirst(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const bool same = qgetenv("TZ") == sameZone;
        qputenv("TZ", same ? zone : sameZone);
        state.ResumeTiming();
        benchmark::DoNotOptimize(sumRead());
    }
}

void fromString(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(sumFromString());
}

void table(benchmark::State& state)
{
    const QByteArray table = tableOfDates();
    for (auto _ : state) {
        QHash<QString, int> header;
        QJsonArray rows;
        if (!ZGlobalConfig::readTableFile(table, header, rows))
            state.SkipWithError("the table cannot be read");
    }
}

BENCHMARK(ours)->Name("dates/ours/9000");
BENCHMARK(fromString)->Name("dates/QDateTime/9000");
BENCHMARK(table)->Name("dates/table/9000");
BENCHMARK(oursFirst)->Name("first_dates/ours/9000");
BENCHMARK(fromString)->Name("first_dates/QDateTime/9000");
BENCHMARK(table)->Name("first_dates/table/9000");

} // namespace

int main(int argc, char** argv)
{
    qputenv("TZ", zone);
    return Measured::run(argc, argv);
}
