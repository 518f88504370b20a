#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "orbit/date_time.h"
#include "orbit/observer.h"
#include "orbit/pass_search.h"
#include "orbit/satellite.h"

namespace pelorin::passes {

/// The passes of all satellites as list entries, "mmddhhnnss N|S longitude seconds name", in plain ordinal
/// order. As the stamps have no year, a list over the turn of the year begins with January.
QStringList PassListEntries(const std::vector<orbit::TSatellite>& satellites, const orbit::Observer& observer,
                            const orbit::PassRequest& request);

/// The first entry whose pass starts at or after `now` (UTC) within the year, or −1.
int FindNextPassIndex(const QStringList& entries, orbit::TDateTime now);

/// The help topic behind the warning below.
inline constexpr int kNoSatellitesHelp = 270;

/// The warning when the element folder gave no satellite. Its lines are parted by CR.
QString NoSatellitesText(const QString& elementFolder);

/// The message when no satellite is active.
QString NoActiveSatellitesText();

}  // namespace pelorin::passes
