#pragma once

#include <QString>

class Findings;
struct Place;

/** The periods of a day that a cell holds. */
namespace Schedules {

/** What cannot be read, what two periods share, and what none of them holds. */
void check(const QString& schedule, const Place& place, Findings& findings);

} // namespace Schedules
