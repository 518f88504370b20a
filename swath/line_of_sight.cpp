#include "swath/line_of_sight.h"

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/observer.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"

namespace pelorin::swath {
namespace {

using orbit::Vector;

Vector Sum(const Vector& a, double s, const Vector& b, double t) {
  return {a.x * s + b.x * t, a.y * s + b.y * t, a.z * s + b.z * t, 0};
}

Vector Unit(const Vector& v) { return Sum(v, 1 / std::sqrt(Dot(v, v)), v, 0); }

Vector TurnedToEarth(const Vector& v, double theta) {
  const double s = std::sin(theta), c = std::cos(theta);
  return {v.x * c + v.y * s, v.y * c - v.x * s, v.z, 0};
}

}  // namespace

ScannerAxes AxesAt(const orbit::SatelliteState& inertial, double julianDate, bool steersInYaw,
                   const Attitude& attitude) {
  const double theta = orbit::ThetaGOfJulianDate(julianDate);
  ScannerAxes axes;
  axes.Origin = TurnedToEarth(inertial.Position, theta);
  Vector velocity = TurnedToEarth(inertial.Velocity, theta);
  if (steersInYaw) {
    velocity.x += orbit::kEarthRotationRadPerS * axes.Origin.y;
    velocity.y -= orbit::kEarthRotationRadPerS * axes.Origin.x;
  }
  orbit::Geodetic below;
  SatLatLonAlt(inertial.Position, julianDate, below);
  const double cosLat = std::cos(below.Latitude);
  const Vector up{cosLat * std::cos(below.Longitude), cosLat * std::sin(below.Longitude),
                  std::sin(below.Latitude), 0};
  const Vector across = Cross(axes.Origin, velocity);
  const Vector left = Unit(Sum(across, 1, up, -Dot(across, up)));
  const Vector forward = Cross(left, up);

  const double yaw = orbit::Radians(attitude.YawDeg), pitch = orbit::Radians(attitude.PitchDeg);
  axes.Left = Sum(left, std::cos(yaw), forward, std::sin(yaw));
  const Vector turned = Sum(forward, std::cos(yaw), left, -std::sin(yaw));
  axes.Down = Sum(up, -std::cos(pitch), turned, std::sin(pitch));
  axes.Forward = Sum(turned, std::cos(pitch), up, std::sin(pitch));
  return axes;
}

std::optional<GroundPoint> PointSeen(const ScannerAxes& axes, double angle) {
  // In a frame stretched along the axis until the ellipsoid is a sphere.
  constexpr double stretch = 1 / orbit::kOneMinusFlattening;
  Vector ray = Sum(axes.Down, std::cos(angle), axes.Left, std::sin(angle));
  Vector from = axes.Origin;
  ray.z *= stretch;
  from.z *= stretch;
  const double a = Dot(ray, ray), b = Dot(from, ray), c = Dot(from, from) - orbit::XKMPER * orbit::XKMPER;
  const double discriminant = b * b - a * c;
  if (!(discriminant >= 0) || b >= 0) return std::nullopt;
  const Vector met = Sum(from, 1, ray, (-b - std::sqrt(discriminant)) / a);
  // The normal of the ellipsoid leans by the stretch's square against the true place, by the stretch against
  // the stretched one.
  return GroundPoint{orbit::Degrees(std::atan2(met.z * stretch, std::hypot(met.x, met.y))),
                     orbit::Degrees(std::atan2(met.y, met.x))};
}

}  // namespace pelorin::swath
