#include "swath/ground_track.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/julian_date.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"
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

TEST(GroundTrack, PositivePositionsLieEastWhenFlyingSouth) {
  int southBound = 0, northBound = 0;
  AlongOneOrbit([&](double, const GroundTrack& track, const ScanDistances&) {
    if (std::fabs(Degrees(track.Below.Latitude)) > 60) return;
    const double east = Apart(PointAcross(track, 500).LongitudeDeg, Degrees(track.Below.Longitude));
    const bool south = track.Inertial.Velocity.z < 0;
    EXPECT_GT(south ? east : -east, 3);
    (south ? southBound : northBound) += 1;
  });
  EXPECT_GT(southBound, 5);
  EXPECT_GT(northBound, 5);
}

TEST(GroundTrack, WholeLinesAgreeWithSinglePoints) {
  AlongOneOrbit([](double, const GroundTrack& track, const ScanDistances& distances) {
    GroundLine line;
    FillGroundLine(track, distances, line);
    for (int s = -kHalfLinePixels; s <= kHalfLinePixels; ++s) {
      const std::size_t i = ScanIndex(s);
      const GroundPoint point = PointAcross(track, distances[ScanIndex(s)]);
      ASSERT_NEAR(line.SouthMin[i], (90 - point.LatitudeDeg) * 60, 0.501) << s;
      ASSERT_GE(line.EastMin[i], 0);
      ASSERT_LT(line.EastMin[i], 21600);
      ASSERT_NEAR(Apart(line.EastMin[i] / 60.0, point.LongitudeDeg) * 60, 0, 0.501) << s;
    }
  });
}

/// A ray from the scanner to the ellipsoid, independent of the table's flat detour: half a pixel apart at the
/// most near the middle, a kilometre or two at the edge of the swath.
TEST(GroundTrack, AgreesWithARayToTheEllipsoid) {
  AlongOneOrbit([](double jd, const GroundTrack& track, const ScanDistances& distances) {
    const Vector p = track.Position;
    const double r = std::sqrt(Dot(p, p));
    const double steps[] = {8, 6, 4, 3, 2};
    const int ends[] = {78, 188, 271, 333, 454};
    double angle = 0, worst = 0;
    for (int s = 1, law = 0; s <= kHalfLinePixels; ++s) {
      if (s > ends[law]) ++law;
      angle += Radians(steps[law] * 55.37 / 2047);
      // Straight down for this scanner is towards the Earth's centre.
      const double down = -std::cos(angle), side = std::sin(angle);
      const Vector ray{down * p.x / r + side * track.Across.x, down * p.y / r + side * track.Across.y,
                       down * p.z / r + side * track.Across.z, 0};
      const double f = 1 / kOneMinusFlattening;
      const double a = ray.x * ray.x + ray.y * ray.y + ray.z * ray.z * f * f;
      const double b = 2 * (p.x * ray.x + p.y * ray.y + p.z * ray.z * f * f);
      const double c = p.x * p.x + p.y * p.y + p.z * p.z * f * f - XKMPER * XKMPER;
      const double way = (-b - std::sqrt(b * b - 4 * a * c)) / (2 * a);
      Geodetic seen;
      SatLatLonAlt({p.x + way * ray.x, p.y + way * ray.y, p.z + way * ray.z, 0}, jd, seen);
      const double longitude = Degrees(seen.Longitude + ThetaGOfJulianDate(jd));
      const GroundPoint point = PointAcross(track, distances[ScanIndex(s)]);
      const double northKm = Radians(point.LatitudeDeg - Degrees(seen.Latitude)) * 6371;
      const double eastKm = Radians(Apart(point.LongitudeDeg, longitude)) * 6371 * std::cos(seen.Latitude);
      worst = std::fmax(worst, std::hypot(northKm, eastKm));
      if (s < 100) {
        ASSERT_LT(std::hypot(northKm, eastKm), 3.5) << s << " at " << Degrees(track.Below.Latitude);
      }
    }
    EXPECT_LT(worst, 12) << Degrees(track.Below.Latitude);
  });
}

}  // namespace
}  // namespace pelorin::swath
