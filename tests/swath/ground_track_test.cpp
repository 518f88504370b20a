#include "swath/ground_track.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/scalar_math.h"
#include "tests/support/tables.h"

namespace pelorin::swath {
namespace {

using namespace orbit;

/// Degrees between two longitudes, −180 … 180.
double Apart(double a, double b) { return std::remainder(a - b, 360.0); }

/// A whole orbit in steps that meet both poles, the date line and Greenwich.
template <class Check>
void AlongOneOrbit(Check check) {
  const TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
  for (int minute = 0; minute < 102; minute += 3) {
    const GroundTrack track = TrackAt(satellite, satellite.Epoch + minute / 1440.0);
    check(satellite.Epoch, track, ScanDistancesOf(ScannerFamily::Noaa, track.Below.Altitude));
  }
}

/// The point as the map's own formulas have it: geodetic point below a point along the orbit normal.
TEST(GroundTrack, PointsLieBelowTheOrbitNormal) {
  AlongOneOrbit([](double jd, const GroundTrack& track, const ScanDistances& distances) {
    const Vector normal = Cross(track.Inertial.Position, track.Inertial.Velocity);
    Geodetic below;
    SatLatLonAlt(track.Inertial.Position, jd, below);
    for (const int s : {-454, -100, 0, 7, 300, 454}) {
      const double km = distances[ScanIndex(s)];
      Geodetic expected;
      SatLatLonAlt(PointAlong(track.Inertial.Position, normal, km), jd, expected);
      const GroundPoint point = PointAcross(track, km);
      EXPECT_NEAR(point.LatitudeDeg, Degrees(expected.Latitude), 1e-6) << s;
      const double eastOfTrack = Apart(point.LongitudeDeg, Degrees(track.Below.Longitude));
      EXPECT_NEAR(Apart(eastOfTrack, Degrees(expected.Longitude - below.Longitude)), 0, 1e-5) << s;
    }
  });
}

TEST(GroundTrack, WholeLinesAgreeWithSinglePoints) {
  AlongOneOrbit([](double, const GroundTrack& track, const ScanDistances& distances) {
    GroundLine line;
    FillGroundLine(track, distances, line);
    for (int s = -kHalfLinePixels; s <= kHalfLinePixels; ++s) {
      const std::size_t i = ScanIndex(s);
      const GroundPoint point = PointAcross(track, distances[i]);
      ASSERT_NEAR(line.SouthMin[i], (90 - point.LatitudeDeg) * 60, 0.501) << s;
      ASSERT_GE(line.EastMin[i], 0);
      ASSERT_LT(line.EastMin[i], 21600);
      ASSERT_NEAR(Apart(line.EastMin[i] / 60.0, point.LongitudeDeg) * 60, 0, 0.501) << s;
    }
  });
}

}  // namespace
}  // namespace pelorin::swath
