#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "orbit/date_time.h"
#include "orbit/observer.h"
#include "orbit/pass_info.h"
#include "orbit/satellite.h"
#include "passes/pass_details.h"

namespace pelorin::passes {

/// What a report is about. The satellites are copies, so that whatever happens to the list they came from
/// while the report is made, it goes on.
struct EphemerisRequest {
  std::vector<orbit::TSatellite> Satellites;
  orbit::TDateTime StartDate;  ///< only its day counts
  int Days = 1;
  orbit::Observer Station;
  double MinElevationDeg = 0;
};

/// A day of the report: its lines, and its passes in the same order. The lines of all days one after the
/// other are the report; those of every day but the first begin with the two empty lines between days.
struct EphemerisDay {
  int Number = 1;  ///< 1 … EphemerisRequest::Days
  QStringList Lines;
  std::vector<PassDetails> Passes;
};

/// Makes the report day by day: `afterDay` gets each day as it is made, and ends the work by false.
///
/// A day has the passes longer than 300 seconds whose culmination lies in it, in the order of their stamps
/// "mmddhhnnss". As the stamps have no year, a pass that rose in the last minutes of 31 December stands at
/// the end of the first of January.
void MakeEphemeris(EphemerisRequest request, const std::function<bool(EphemerisDay)>& afterDay);

/// "3.20°W, 55.91°N".
QString StationText(const orbit::Observer& station);

/// The five lines above a day's rows.
QStringList DayHeading(orbit::TDateTime day, const orbit::Observer& station);

/// The row of a pass: the search's record, with the true maximum elevation in place of the record's.
QString ReportRow(const orbit::PassInfo& record, double maxElevationDeg);

}  // namespace pelorin::passes
