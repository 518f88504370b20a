#pragma once

#include "align/logged_alignment.h"

namespace pelorin::tests {

/// An alignment of NOAA 19's, found by its coasts, of a picture whose name tells the second.
inline align::LoggedAlignment LoggedAt(const char* start, double clockS, const char* picture = "a.png") {
  align::LoggedAlignment logged;
  logged.Picture = QString::fromUtf8(picture);
  logged.Satellite = QStringLiteral("NOAA 19");
  logged.CatalogueNumber = QStringLiteral("33591");
  logged.Start = orbit::ParseTimeString(start);
  logged.Columns = 1040;
  logged.Rows = 1200;
  logged.ScannerColumns = 909;
  logged.ClockS = clockS;
  logged.Offsets = {-0.25, 0.125, 0.5};
  logged.DriftPpm = 40;
  logged.ChancePeaks = 0.0002;
  logged.Accepted = orbit::ParseTimeString("20220301120000");
  return logged;
}

}  // namespace pelorin::tests
