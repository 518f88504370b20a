#include "swath/ground_track.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "swath/scanner_geometry.h"
#include "tests/support/tables.h"

namespace pelorin::swath {
namespace {

using namespace orbit;

/// Degrees between two longitudes, −180 … 180.
double Apart(double a, double b) { return std::remainder(a - b, 360.0); }

/// A whole orbit in steps that meet both poles, the date line and Greenwich.
TEST(GroundTrack, PointsLieBelowTheOrbitNormal) {
  const TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
  for (int minute = 0; minute < 102; minute += 3) {
    const double jd = satellite.Epoch + minute / 1440.0;
    const GroundTrack track = TrackAt(satellite, jd);
    const ScanDistances distances = ScanDistancesOf(ScannerFamily::Noaa, track.Below.Altitude);
    const Vector normal = Cross(track.Inertial.Position, track.Inertial.Velocity);
    for (std::size_t i = 0; i < kScanPositions; ++i) {
      SCOPED_TRACE(i);
      Geodetic expected;
      SatLatLonAlt(PointAlong(track.Inertial.Position, normal, distances[i]), jd, expected);
      const GroundPoint point = PointAcross(track, distances[i]);
      ASSERT_NEAR(point.LatitudeDeg, Degrees(expected.Latitude), 1e-6);
      ASSERT_NEAR(Apart(point.LongitudeDeg, Degrees(expected.Longitude)), 0, 1e-5);
    }
  }
}

/// Where the ray at `angle` from straight down meets the sphere, as an angle at the Earth's centre: the law
/// of sines.
double CentralAngle(double angle, double heightKm) {
  return std::asin(std::sin(angle) * (XKMPER + heightKm) / XKMPER) - angle;
}

TEST(ScannerGeometry, TheTableEndsWhereTheScannerDoes) {
  const std::pair<const char*, double> rows[] = {{"NOAA-17", 55.37}, {"NOAA 19", 55.37},  {"NOAA 9", 45},
                                                 {"METEOR 3-5", 39}, {"RESURS O1-4", 48}, {"OKEAN-O", 45}};
  for (const auto& [name, halfAngleDeg] : rows) {
    TSatellite s;
    s.Name = name;
    BuildScanTable(s, kHalfLinePixels, 850);
    EXPECT_EQ(CrossTrackOffset(s, 0), 0);
    EXPECT_EQ(CrossTrackOffset(s, -10), -CrossTrackOffset(s, 10));
    // 78 pixels of 8 units, then 110 of 6, 83 of 4, 62 of 3 and 121 of 2.
    for (const auto& [pixel, units] :
         {std::pair{78, 624}, {79, 630}, {189, 1288}, {272, 1619}, {300, 1703}, {334, 1804}, {454, 2044}}) {
      const double angle = Radians(halfAngleDeg * units / 2047);
      EXPECT_NEAR(CrossTrackOffset(s, pixel), std::tan(CentralAngle(angle, 850)) * (XKMPER + 850), 1e-6)
          << name << " " << pixel;
    }
  }
}

TEST(ScannerGeometry, ARayPastTheEarthEndsAtTheHorizon) {
  for (const double height : {850.0, 2000.0, 20200.0, 35786.0}) {
    const double horizon = std::asin(XKMPER / (XKMPER + height));
    const double expected = std::tan(kPi / 2 - horizon) * (XKMPER + height);
    EXPECT_NEAR(ScanAngleToGroundDistance(horizon * (1 - 1e-9), height), expected, expected * 1e-3) << height;
    EXPECT_NEAR(ScanAngleToGroundDistance(horizon + 0.01, height), expected, 1e-6) << height;
    EXPECT_NEAR(ScanAngleToGroundDistance(-1.2, height), -expected, 1e-6) << height;
  }
}

}  // namespace
}  // namespace pelorin::swath
