#include "swath/ground_track.h"

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"

// The helpers of the loop over a line's points must be part of it, or the compiler works on one point at a
// time.
#if defined(__GNUC__)
#define PELORIN_INTO_LOOP [[gnu::always_inline]] inline
#else
#define PELORIN_INTO_LOOP inline
#endif

namespace pelorin::swath {
namespace {

using namespace orbit;

constexpr double kPolarRadius = XKMPER * kOneMinusFlattening;
/// Bowring's terms: e'²·b and e²·a.
constexpr double kPolarTerm = kEccentricitySquared / (1 - kEccentricitySquared) * kPolarRadius;
constexpr double kEquatorTerm = kEccentricitySquared * XKMPER;

/// Sine-like and cosine-like parts of the geodetic latitude of a point `r` from the axis and `z` above the
/// equator.
struct LatitudeParts {
  double up, out;
};

PELORIN_INTO_LOOP LatitudeParts GeodeticLatitude(double r, double z) {
  const double s = z * XKMPER, c = r * kPolarRadius;
  const double scale = 1 / std::sqrt(s * s + c * c);
  const double sinBeta = s * scale, cosBeta = c * scale;
  return {z + kPolarTerm * sinBeta * sinBeta * sinBeta, r - kEquatorTerm * cosBeta * cosBeta * cosBeta};
}

/// Two-argument arctangent within 1e-7 radians (0.0003 minutes of arc), without branches, so that a compiler
/// works on several points at a time: a polynomial for the first octant and its reflections.
PELORIN_INTO_LOOP double QuickAtan2(double y, double x) {
  const double ax = std::fabs(x), ay = std::fabs(y);
  const double high = ax > ay ? ax : ay, low = ax > ay ? ay : ax;
  const double a = low / (high + 1e-300);
  const double s = a * a;
  double angle = -0.004668773306886;
  angle = angle * s + 0.02416618951946;
  angle = angle * s - 0.05936710078513;
  angle = angle * s + 0.09906096895759;
  angle = angle * s - 0.1401658504196;
  angle = angle * s + 0.1996923539477;
  angle = angle * s - 0.3333195972432;
  angle = (angle * s + 0.9999998977539) * a;
  angle = ay > ax ? kPi / 2 - angle : angle;
  angle = x < 0 ? kPi - angle : angle;
  return y < 0 ? -angle : angle;
}

Vector TurnedToEarth(const Vector& v, double sinTheta, double cosTheta) {
  return {v.x * cosTheta + v.y * sinTheta, v.y * cosTheta - v.x * sinTheta, v.z, 0};
}

}  // namespace

GroundTrack TrackAt(const TSatellite& satellite, double julianDate) {
  GroundTrack track;
  track.Inertial = SatelliteStateKm(satellite, julianDate);
  SatLatLonAlt(track.Inertial.Position, julianDate, track.Below);
  const double theta = ThetaGOfJulianDate(julianDate);
  const double sinTheta = std::sin(theta), cosTheta = std::cos(theta);
  track.Position = TurnedToEarth(track.Inertial.Position, sinTheta, cosTheta);
  Vector across = Cross(track.Inertial.Position, track.Inertial.Velocity);
  Magnitude(across);
  across = {across.x / across.w, across.y / across.w, across.z / across.w, 0};
  track.Across = TurnedToEarth(across, sinTheta, cosTheta);
  return track;
}

GroundPoint PointAcross(const GroundTrack& track, double scanKm) {
  const Vector p = PointAlong(track.Position, track.Across, scanKm);
  const LatitudeParts parts = GeodeticLatitude(std::hypot(p.x, p.y), p.z);
  return {Degrees(std::atan2(parts.up, parts.out)), Degrees(std::atan2(p.y, p.x))};
}

// Machines of the last ten years work on four points at a time; which code runs is decided when the program
// starts.
#if defined(__x86_64__) && defined(__linux__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__)
[[gnu::target_clones("default", "avx2")]]
#endif
void FillGroundLine(const GroundTrack& track, const ScanDistances& distances, GroundLine& line) {
  constexpr double minutesPerRadian = kMinutesOfTurn / kTwoPi;
  const Vector p = track.Position, n = track.Across;
  // Latitudes as minutes from the pole and longitudes as minutes from 360° W are positive: adding a half and
  // cutting rounds them to the nearest.
  std::array<double, kScanPositions> south, east;
  for (std::size_t i = 0; i < kScanPositions; ++i) {
    const double d = distances[i];
    const double x = p.x + d * n.x, y = p.y + d * n.y, z = p.z + d * n.z;
    const double r = std::sqrt(x * x + y * y);
    const LatitudeParts parts = GeodeticLatitude(r, z);
    south[i] = (kPi / 2 - QuickAtan2(parts.up, parts.out)) * minutesPerRadian + 0.5;
    east[i] = QuickAtan2(y, x) * minutesPerRadian + (kMinutesOfTurn + 0.5);
  }
  for (std::size_t i = 0; i < kScanPositions; ++i) {
    // Written so that what is no number becomes 0: whatever comes in, the minutes point into maps.
    const auto southMin = static_cast<std::int32_t>(south[i] > 0 && south[i] < 10801 ? south[i] : 0.0);
    const auto eastMin = static_cast<std::int32_t>(east[i] > 0 && east[i] < 43201 ? east[i] : 0.0);
    line.SouthMin[i] = southMin > 10800 ? 10800 : southMin;
    line.EastMin[i] = eastMin >= kMinutesOfTurn ? eastMin - kMinutesOfTurn : eastMin;
  }
}

}  // namespace pelorin::swath
