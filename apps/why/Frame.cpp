#include "decoration/ZImageFrameInfoListMgr.h"
#include "lint/Schedules.h"
#include "why/Subjects.h"
#include "why/Why.h"

namespace {

QString clock(const QTime& time)
{
    return time.toString(QStringLiteral("HH:mm:ss"));
}

QString wordsOf(const stFramePeriod& period)
{
    if (!period.start.isValid() || !period.end.isValid())
        return QStringLiteral("a time of it is not written as \"HH:mm:ss\", so it holds none");
    return QStringLiteral("%1 to %2, %3")
        .arg(clock(period.start), clock(period.end),
             period.icon.isEmpty() ? QStringLiteral("no picture") : period.icon);
}

/** One period after the other until one holds the time; answers its number, or 0. */
int askPeriods(const QVector<stFramePeriod>& periods, const QTime& at,
               Why::Explanation& explanation)
{
    int inForce = 0;
    for (int i = 0; i < periods.size(); ++i) {
        Why::Step step {QStringLiteral("period %1 holds the time").arg(i + 1),
                        Why::Step::NotReached, QString()};
        if (inForce == 0) {
            const bool holds = periods.at(i).holds(at);
            step.answer = holds ? Why::Step::Yes : Why::Step::No;
            step.value = wordsOf(periods.at(i));
            inForce = holds ? i + 1 : 0;
        }
        explanation.steps.append(step);
        if (inForce == i + 1)
            explanation.deciding = static_cast<int>(explanation.steps.size()) - 1;
    }
    return inForce;
}

void describe(const ZImageFrameInfo& frame, const QTime& at, Why::Explanation& explanation)
{
    ZImageFrameInfoListMgr* frames = ZImageFrameInfoListMgr::getInstance();
    const QVector<stFramePeriod> periods =
        ZImageFrameInfoListMgr::periodsOf(frame.timePeriodConfig);
    const int inForce = askPeriods(periods, at, explanation);
    const QString icon = frames->getEffectiveIconAt(frame.headFrameId, at);
    const QString source = inForce == 0 ? QStringLiteral("its own, since no period holds the time")
                                        : QStringLiteral("that of period %1").arg(inForce);
    explanation.holds = !icon.isEmpty();
    explanation.verdict = QStringLiteral("%1 shows %2 at %3: %4")
                              .arg(Why::called(explanation.subject),
                                   icon.isEmpty() ? QStringLiteral("no picture") : icon, clock(at),
                                   periods.isEmpty() ? QStringLiteral("its own, always") : source);
    if (icon.isEmpty())
        explanation.resources.append(Why::noResource(
            QStringLiteral("picture"),
            inForce == 0 ? QStringLiteral("icon2 is empty")
                         : QStringLiteral("icon1 of period %1 is empty").arg(inForce)));
    else
        explanation.resources.append(Why::resourceAt(
            QStringLiteral("picture"), frames->getEffectiveFramePathAt(frame.headFrameId, at),
            frames->getEffectiveFrameUrlAt(frame.headFrameId, at)));
    if (!frame.timePeriodConfig.isEmpty() && periods.isEmpty())
        explanation.remarks.append(
            {QStringLiteral("schedule"), QStringLiteral("timePeriodConfig lists no periods")});
    const QStringList gaps = periods.isEmpty() ? QStringList() : Schedules::gaps(periods);
    if (!gaps.isEmpty())
        explanation.remarks.append({QStringLiteral("no period"), gaps.join(QStringLiteral(", "))});
}

Why::Explanation explain(const Why::Subject& subject, const Why::RawTable& table,
                         const QDateTime& moment)
{
    const auto& frames = ZImageFrameInfoListMgr::getInstance()->getImageFrameMap();
    const auto frame = frames.constFind(subject.id.toInt());
    Why::Explanation explanation = Why::explanationOf(subject, table);
    askForRecord(explanation, table, frame != frames.constEnd());
    if (explanation.isDecided())
        explanation.verdict =
            QStringLiteral("%1 is not known: %2")
                .arg(Why::called(subject), explanation.steps.at(explanation.deciding).value);
    else
        describe(*frame, moment.time(), explanation);
    return explanation;
}

} // namespace

Why::Reply Why::frame(const QString& idOrName, const QDateTime& moment, const Failures& failures,
                      const Files& files)
{
    return replyTo(QStringLiteral("frame"), idOrName, failures, files,
                   [&moment](const Subject& subject, const RawTable& table) {
                       return explain(subject, table, moment);
                   });
}
