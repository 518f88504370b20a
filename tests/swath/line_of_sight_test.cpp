#include "swath/line_of_sight.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "orbit/scalar_math.h"
#include "tests/support/tables.h"

namespace pelorin::swath {
namespace {

/// Those of the reference table.
struct Instrument {
  LineShape Line;
  bool SteersInYaw;
};
const std::map<std::string, Instrument> kInstruments{
    {"AVHRR APT", {{kZoneColumns, 110.74, ScanLaw::Zones}, false}},
    {"AVHRR", {{2048, 110.74 * 2048 / 2047, ScanLaw::EvenAngles}, false}},
    {"AVHRR steered", {{2048, 110.74 * 2048 / 2047, ScanLaw::EvenAngles}, true}},
    {"MSU-MR LRPT", {{1568, 110.1, ScanLaw::EvenAngles}, false}},
    {"MSU-MR HRPT", {{1572, 110.4, ScanLaw::EvenAngles}, false}},
};

double KmApart(const GroundPoint& a, const GroundPoint& b) {
  const double east = std::remainder(a.LongitudeDeg - b.LongitudeDeg, 360);
  return std::hypot(a.LatitudeDeg - b.LatitudeDeg, east * std::cos(orbit::Radians(b.LatitudeDeg))) * 111.2;
}

TEST(LineOfSight, AgreesWithTheReferenceTable) {
  for (const tests::Row& row : tests::ReadTable("swath.csv")) {
    const Instrument& instrument = kInstruments.at(row.Text("instrument"));
    orbit::TSatellite satellite = tests::ReferenceSatellite(row.Text("satellite"), "swath-elements.2li");
    const double jd = row.Number("jd_utc");
    const Attitude attitude{row.Number("roll_deg"), row.Number("pitch_deg"), row.Number("yaw_deg")};
    const ScannerAxes axes = AxesAt(SatelliteStateKm(satellite, jd), jd, instrument.SteersInYaw, attitude);
    const auto point = PointSeen(
        axes, ColumnAngle(instrument.Line, row.Number("column")) + orbit::Radians(attitude.RollDeg));
    ASSERT_TRUE(point);
    SCOPED_TRACE(row.Text("satellite") + ' ' + row.Text("jd_utc") + ' ' + row.Text("column") + ' ' +
                 row.Text("yaw_deg"));
    const GroundPoint published{row.Number("latitude_deg"), row.Number("longitude_deg")};
    EXPECT_LT(KmApart(*point, published), 3e-4);
    if (row.Text("instrument") != "AVHRR APT" || attitude.YawDeg != 0) continue;
    // An overlay's lines do without the ray: some kilometres apart.
    const GroundTrack track = TrackAt(satellite, jd);
    const ScanDistances distances = ScanDistancesOf(ScannerFamily::Noaa, track.Below.Altitude);
    const int position = static_cast<int>(row.Number("column")) - kHalfLinePixels;
    EXPECT_LT(KmApart(PointAcross(track, distances[ScanIndex(position)]), published), 12);
  }
}

}  // namespace
}  // namespace pelorin::swath
