#include "lint/Schedules.h"

#include "decoration/ZImageFrameInfoListMgr.h"
#include "lint/Findings.h"
#include "lint/Wording.h"

#include <QTime>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace {

constexpr int day = 24 * 60 * 60 * 1000; // milliseconds

/** A stretch of the day in milliseconds since midnight, both ends included. */
struct Span
{
    int from;
    int to;
    int period; // from 1
};

QString clock(int milliseconds)
{
    return QTime::fromMSecsSinceStartOfDay(milliseconds % day)
        .toString(QStringLiteral("HH:mm:ss.zzz"));
}

QVector<Span> spansOf(const QVector<stFramePeriod>& periods)
{
    QVector<Span> spans;
    for (int i = 0; i < periods.size(); ++i) {
        const int from = periods.at(i).start.msecsSinceStartOfDay();
        const int to = periods.at(i).end.msecsSinceStartOfDay();
        if (!periods.at(i).start.isValid() || !periods.at(i).end.isValid())
            continue;
        if (from <= to) {
            spans.append({from, to, i + 1});
            continue;
        }
        spans.append({from, day, i + 1});
        spans.append({0, to, i + 1});
    }
    std::sort(spans.begin(), spans.end(),
              [](const Span& left, const Span& right) { return left.from < right.from; });
    return spans;
}

void checkPeriod(const stFramePeriod& period, int number, const Place& place, Findings& findings)
{
    const QString name = QStringLiteral("period %1 ").arg(number);
    if (!period.start.isValid() || !period.end.isValid())
        findings.add(
            Rule::BadSchedule, place,
            name
                + QStringLiteral("lacks a time written as \"HH:mm:ss\"; a client passes it "
                                 "over"));
    else if (period.icon.isEmpty())
        findings.add(Rule::BadSchedule, place,
                     name + QStringLiteral("has no \"icon1\"; a client shows no picture then"));
    else if (period.start == period.end)
        findings.add(Rule::UselessPeriod, place,
                     name
                         + QStringLiteral("ends when it begins, at %1; a client shows it for that "
                                          "moment only")
                               .arg(clock(period.start.msecsSinceStartOfDay())));
}

/** A moment that two periods share does no harm: the first has it. */
void checkOverlaps(const QVector<Span>& spans, const Place& place, Findings& findings)
{
    for (int i = 0; i < spans.size(); ++i) {
        for (int j = i + 1; j < spans.size(); ++j) {
            const int from = std::max(spans.at(i).from, spans.at(j).from);
            const int to = std::min(spans.at(i).to, spans.at(j).to);
            if (from >= to)
                continue;
            const int first = std::min(spans.at(i).period, spans.at(j).period);
            const int second = std::max(spans.at(i).period, spans.at(j).period);
            findings.add(
                Rule::ScheduleOverlap, place,
                QStringLiteral("periods %1 and %2 both hold %3 to %4; a client takes "
                               "period %1")
                    .arg(QString::number(first), QString::number(second), clock(from), clock(to)));
        }
    }
}

QVector<Span> gapsOf(const QVector<Span>& spans)
{
    QVector<Span> gaps;
    int reached = 0;
    const auto gapTo = [&](int to) {
        if (to > reached)
            gaps.append({reached, to, 0});
    };
    for (const Span& span : spans) {
        gapTo(span.from);
        reached = std::max(reached, span.to);
    }
    gapTo(day);
    return gaps;
}

/** Where half of the day and more is left to the frame's own picture, that is the plan. */
void checkGaps(const QVector<Span>& spans, const Place& place, Findings& findings)
{
    const QVector<Span> gaps = gapsOf(spans);
    const int open = std::accumulate(gaps.begin(), gaps.end(), 0, [](int sum, const Span& gap) {
        return sum + gap.to - gap.from;
    });
    if (open >= day / 2)
        return;
    for (const Span& gap : gaps)
        findings.add(Rule::ScheduleGap, place,
                     QStringLiteral("no period holds what lies between %1 and %2; a client shows "
                                    "the default then")
                         .arg(clock(gap.from), clock(gap.to)));
}

} // namespace

QStringList Schedules::gaps(const QVector<stFramePeriod>& periods)
{
    QStringList gaps;
    for (const Span& gap : gapsOf(spansOf(periods)))
        gaps.append(QStringLiteral("%1 to %2").arg(clock(gap.from), clock(gap.to)));
    return gaps;
}

void Schedules::check(const QString& schedule, const Place& place, Findings& findings)
{
    const QVector<stFramePeriod> periods = ZImageFrameInfoListMgr::periodsOf(schedule);
    if (periods.isEmpty())
        findings.add(Rule::BadSchedule, place,
                     QStringLiteral("%1 lists no \"periodConfigs\"; a client always shows the "
                                    "default")
                         .arg(Wording::shown(schedule)));
    for (int i = 0; i < periods.size(); ++i)
        checkPeriod(periods.at(i), i + 1, place, findings);
    const QVector<Span> spans = spansOf(periods);
    if (spans.isEmpty())
        return;
    checkOverlaps(spans, place, findings);
    checkGaps(spans, place, findings);
}
