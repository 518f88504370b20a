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
    EXPECT_NEAR(point->LatitudeDeg, row.Number("latitude_deg"), 2e-6);
    EXPECT_NEAR(std::remainder(point->LongitudeDeg - row.Number("longitude_deg"), 360) *
                    std::cos(orbit::Radians(point->LatitudeDeg)),
                0, 2e-6);
  }
}

}  // namespace
}  // namespace pelorin::swath
