#pragma once

#include <QString>

#include "orbit/date_time.h"

namespace pelorin::passes {

/// A pass of the list as map, picture and flight want it.
struct ChosenPass {
  orbit::TDateTime PassStart;   ///< UTC, to the minute
  bool SouthBound = false;      ///< moving south
  int PassDurationMinutes = 0;  ///< rounded up
  QString SatelliteName;
};

/// Reads a list entry. Entries have no year; they get that of `passListDate`, the list's first day. An entry
/// that is not of the list's form raises ConvertError.
ChosenPass ParseSelectedPass(const QString& entry, orbit::TDateTime passListDate);

}  // namespace pelorin::passes
