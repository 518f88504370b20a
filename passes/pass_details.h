#pragma once

#include <QString>

#include "orbit/pass_search.h"

namespace pelorin::passes {

/// A pass as calendars and spreadsheets want it. The culmination is the true one, to a tenth of a second;
/// the record of a pass has the search's own, which may lie a minute earlier and some degrees lower.
struct PassDetails {
  QString Satellite;
  QString CatalogueNumber;
  orbit::TDateTime Rise, Culmination, Set;  ///< UTC
  double RiseAzimuthDeg = 0, CulminationAzimuthDeg = 0, SetAzimuthDeg = 0;
  double MaxElevationDeg = 0;
  bool SouthBound = false;
  int DurationSeconds = 0;
};

PassDetails DetailsOf(const orbit::Pass& pass, const orbit::TSatellite& satellite,
                      const orbit::Observer& observer);

}  // namespace pelorin::passes
