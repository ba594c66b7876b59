#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

struct stFramePeriod;
class Findings;
struct Place;

/** The periods of a day that a cell holds. */
namespace Schedules {

/** The parts of the day that no period holds, as "HH:mm:ss.zzz to HH:mm:ss.zzz". */
QStringList gaps(const QVector<stFramePeriod>& periods);

/** What cannot be read, what two periods share, and what none of them holds. */
void check(const QString& schedule, const Place& place, Findings& findings);

} // namespace Schedules
