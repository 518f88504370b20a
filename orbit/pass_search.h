#pragma once

#include <string>
#include <vector>

#include "orbit/date_time.h"
#include "orbit/observer.h"
#include "orbit/pass_info.h"
#include "orbit/satellite.h"

namespace pelorin::orbit {

/// A pass with its times as Julian dates. Culmination and record are the search's own, up to a minute before
/// the true culmination: RefineCulmination knows better.
struct Pass {
  double Aos = 0, Culmination = 0, Los = 0;
  PassInfo Record;
};

/// A pass's highest point.
struct TrueCulmination {
  double JulianDate = 0;
  double ElevationRad = 0;
};

inline constexpr double kHighestMinElevationDeg = 10;
/// Shorter passes are in no list, nor are those of just this length.
inline constexpr int kShortestPassSeconds = 300;

/// What `SearchPasses` asks for: passes longer than `MinimumDurationSeconds` whose culmination lies in `Days`
/// whole days from 00:00 UTC of `Start`'s date. The minimum elevation is brought into
/// 0 … kHighestMinElevationDeg degrees.
struct PassRequest {
  TDateTime Start;
  int Days = 1;
  double MinimumElevationDeg = 0;
  int MinimumDurationSeconds = kShortestPassSeconds;
};

/// Passes of one satellite in time order. Elements without an orbit, and satellites that do not set for a
/// turn, have none.
std::vector<Pass> SearchPasses(const TSatellite& satellite, const Observer& observer,
                               const PassRequest& request);

/// The same as records in comma text, for whoever wants text; the program itself works with the numbers.
void FindPasses(const TSatellite& satellite, int minimumDurationSeconds, int days, std::string& resultText,
                const Observer& observer, double minimumElevationDegrees, TDateTime startDateTime);

/// The pass's culmination to a tenth of a second.
TrueCulmination RefineCulmination(const TSatellite& satellite, const Observer& observer, const Pass& pass);

}  // namespace pelorin::orbit
