#pragma once

#include <QString>

#include "elements/satellite_list.h"

namespace pelorin::elements {

/// Elements older than this many days are stale.
inline constexpr int kStaleAfterDays = 60;

/// The help topic behind the warning.
inline constexpr int kStaleElementsHelp = 280;

/// Age in whole days of the oldest element set at a Julian date by the clock on the wall; 0 when none has an
/// age.
int LargestElementAge(const TSatelliteList& satellites, double localNowJd);

/// The warning when the largest age exceeds kStaleAfterDays. Its lines are parted by CR.
QString StaleElementsText();

}  // namespace pelorin::elements
