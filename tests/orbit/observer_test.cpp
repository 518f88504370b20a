#include "orbit/observer.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/look_angles.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"
#include "orbit/sun.h"
#include "tests/support/tables.h"

namespace pelorin::orbit {
namespace {

/// Difference of two angles in degrees, −180 … 180.
double Apart(double a, double b) { return std::remainder(a - b, 360.0); }

TEST(LookAngles, AgreeWithTheReferenceTable) {
  for (const auto& row : tests::ReadTable("lookangles.csv")) {
    SCOPED_TRACE(row.Text("satellite") + " from " + row.Text("station"));
    const double jd = row.Number("jd");
    Vector position{row.Number("x_km"), row.Number("y_km"), row.Number("z_km"), 0};
    Vector velocity{row.Number("vx_km_s"), row.Number("vy_km_s"), row.Number("vz_km_s"), 0};
    Observer observer =
        ObserverFromDegrees(row.Number("lat_deg"), row.Number("lon_deg"), row.Number("height_m"));
    LookAngleSet look;
    bool visible = false;
    LookAngles(position, velocity, observer, jd, look, visible);
    EXPECT_EQ(visible, row.Text("visible") == "1");
    const double azimuthTolerance = row.Number("true_el_deg") > 80 ? 1e-4 : 1e-5;
    EXPECT_NEAR(Apart(Degrees(look.Azimuth), row.Number("az_deg")), 0, azimuthTolerance);
    EXPECT_NEAR(Degrees(look.Elevation), row.Number("el_deg"), 1e-5);
    EXPECT_NEAR(Degrees(ElevationFrame(observer).Elevation(position, jd)), row.Number("el_deg"), 1e-5);
    EXPECT_NEAR(look.Range, row.Number("range_km"), 1e-4);
    EXPECT_NEAR(look.RangeRate, row.Number("range_rate_km_s"), 1e-6);
    EXPECT_NEAR(DopplerHz(look.RangeRate), row.Number("doppler_hz"), 0.01);
    EXPECT_NEAR(SignalDbm(look.Range, visible), row.Number("signal_dbm"), 1e-4);
    Geodetic below;
    SatLatLonAlt(position, jd, below);
    EXPECT_NEAR(Degrees(below.Latitude), row.Number("sat_lat_deg"), 1e-5);
    EXPECT_NEAR(Apart(Degrees(below.Longitude), row.Number("sat_lon_deg")), 0, 1e-5);
    EXPECT_NEAR(below.Altitude, row.Number("sat_alt_km"), 1e-4);
    double latitude = 0, longitude = 0;
    SatGeocentricLatLon(position, jd, latitude, longitude);
    EXPECT_NEAR(Degrees(latitude), row.Number("sat_geocentric_lat_deg"), 1e-5);

    // The same by an independent almanac, from the elements.
    TSatellite satellite = tests::ReferenceSatellite(row.Text("satellite"));
    const SatelliteState state = SatelliteStateKm(satellite, jd);
    EXPECT_NEAR(state.Position.x, position.x, 0.002);
    EXPECT_NEAR(look.Range, row.Number("skyfield_range_km"), 0.25);
    EXPECT_NEAR(look.RangeRate, row.Number("skyfield_rate_km_s"), 0.001);
  }
}

TEST(LookAngles, TheZenithIsWhereTheArcSineEnds) {
  Observer observer = ObserverFromDegrees(-33.9, -3, 150);
  Vector site, velocity;
  ObserverPosVel(observer, 2459633.3, site, velocity);
  // Up is along the ellipsoid's normal.
  const Vector up{std::cos(observer.Latitude) * std::cos(observer.Theta),
                  std::cos(observer.Latitude) * std::sin(observer.Theta), std::sin(observer.Latitude), 0};
  LookAngleSet look;
  bool visible = false;
  LookAngles(PointAlong(site, up, 850), velocity, observer, 2459633.3, look, visible);
  EXPECT_TRUE(visible);
  EXPECT_NEAR(Degrees(look.Elevation), 90, 1e-3);
  EXPECT_NEAR(look.Range, 850, 1e-6);
}

TEST(SubSatellitePoint, HoldsOverThePolesAndForAbsurdPositions) {
  Geodetic below;
  for (const double z : {7200.0, -7200.0}) {
    SatLatLonAlt({0, 0, z, 0}, 2459633.3, below);
    EXPECT_NEAR(Degrees(below.Latitude), std::copysign(90, z), 1e-4);
    EXPECT_NEAR(below.Altitude, 7200 - 6356.7505, 1e-3);
  }
  SatLatLonAlt({1, 1, 1, 0}, 2459633.3, below);  // without an answer; the iteration must end
  SatLatLonAlt({std::nan(""), 0, 0, 0}, 2459633.3, below);
  EXPECT_TRUE(std::isnan(below.Latitude));
}

TEST(Sun, AgreesWithTheAlmanac) {
  for (const auto& row : tests::ReadTable("sun.csv")) {
    SCOPED_TRACE(row.Text("utc"));
    Vector sun;
    SunPosition(row.Number("jd"), sun);
    const double ra = Degrees(FMod2p(AcTan(sun.y, sun.x))), dec = Degrees(ArcSin(sun.z / sun.w));
    EXPECT_NEAR(sun.x, row.Number("x_km"), 1);
    EXPECT_NEAR(sun.z, row.Number("z_km"), 1);
    EXPECT_NEAR(Apart(ra, row.Number("ra_deg")), 0, 1e-6);
    EXPECT_NEAR(Apart(ra, row.Number("almanac_ra_deg")), 0, 0.02);
    EXPECT_NEAR(dec, row.Number("almanac_dec_deg"), 0.02);
    EXPECT_NEAR(sun.w, row.Number("almanac_dist_km"), 12000);
  }
}

}  // namespace
}  // namespace pelorin::orbit
