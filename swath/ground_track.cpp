#include "swath/ground_track.h"

#include <cmath>

#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"
#include "swath/geodetic_latitude.h"

namespace pelorin::swath {
namespace {

using namespace orbit;

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
  return {Degrees(std::atan2(parts.Up, parts.Out)), Degrees(std::atan2(p.y, p.x))};
}

}  // namespace pelorin::swath
