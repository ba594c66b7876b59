#include "datatable/Cells.h"
#include "host/ZGlobalConfig.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

// Three dates a row, as the gift table has them: what reading them costs beside reading the table.

namespace {

constexpr int rowCount = 3000;
constexpr int rounds = 5;
constexpr unsigned long untilForgotten = 1100; // milliseconds; what is remembered of the zone

/** Dates of two years, in no order. */
QStringList someDates()
{
    std::mt19937 random(1);
    const QDateTime from(QDate(2025, 1, 1), QTime(0, 0));
    QStringList dates;
    for (int i = 0; i < 3 * rowCount; ++i) {
        const int days = static_cast<int>(random() % 730);
        const int seconds = static_cast<int>(random() % 86400);
        dates.append(
            from.addDays(days).addSecs(seconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    }
    return dates;
}

QByteArray tableOf(const QStringList& dates)
{
    QJsonArray rows;
    for (int i = 0; i < dates.size(); i += 3)
        rows.append(QJsonArray {i, dates.at(i), dates.at(i + 1), dates.at(i + 2)});
    const QJsonArray columns {QStringLiteral("id"), QStringLiteral("from"), QStringLiteral("to"),
                              QStringLiteral("changed")};
    return QJsonDocument(
               QJsonObject {{QStringLiteral("columns"), columns}, {QStringLiteral("rows"), rows}})
        .toJson(QJsonDocument::Compact);
}

/** Nanoseconds of one run: the median of the rounds, with a pause in milliseconds before each. */
template <class Run>
double measured(unsigned long pause, Run run)
{
    std::vector<qint64> times;
    for (int round = 0; round < rounds; ++round) {
        QThread::msleep(pause);
        QElapsedTimer clock;
        clock.start();
        run();
        times.push_back(clock.nsecsElapsed());
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return static_cast<double>(times.at(rounds / 2));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList dates = someDates();
    const QByteArray table = tableOf(dates);
    const QString format = QStringLiteral("yyyy-MM-dd HH:mm:ss");
    qint64 plainSum = 0;
    qint64 ourSum = 0;

    const double reading = measured(0, [&] {
        QHash<QString, int> header;
        QJsonArray rows;
        ZGlobalConfig::readTableFile(table, header, rows);
    });
    const double plain = measured(0, [&] {
        plainSum = 0;
        for (const QString& date : dates)
            plainSum += QDateTime::fromString(date, format).toSecsSinceEpoch();
    });
    const auto readAll = [&] {
        ourSum = 0;
        for (const QString& date : dates)
            ourSum += Cells::secondsOfDate(date);
    };
    const double first = measured(untilForgotten, readAll);
    const double again = measured(0, readAll);

    QString figures;
    QTextStream out(&figures);
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(2);
    const auto line = [&](const QString& how, double time) {
        out << "| " << how << " | " << time / dates.size() / 1000 << QStringLiteral(" µs | ")
            << time / reading << " |\n";
    };
    out << "\n| three dates a row, " << rowCount
        << " rows | a date | all, in times of reading the table |\n|---|---|---|\n";
    line(QStringLiteral("`QDateTime::fromString`"), plain);
    line(QStringLiteral("as read here, first table"), first);
    line(QStringLiteral("as read here, within a second of it"), again);
    if (plainSum != ourSum)
        out << "\nThe two disagree.\n";
    std::fputs(figures.toUtf8().constData(), stdout);
    return plainSum == ourSum ? 0 : 1;
}
