#include "orbit/observer.h"

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"

namespace pelorin::orbit {
namespace {

/// The latitude settles in four or five rounds at the height of any satellite; the bound is for positions
/// near the Earth's centre, where it need not settle at all.
constexpr int kLatitudeRounds = 50;

/// The ellipsoid's normal from the axis to the surface, km.
double NormalKm(double sinLatitude) {
  return XKMPER / std::sqrt(1 - kEccentricitySquared * sinLatitude * sinLatitude);
}

}  // namespace

StationDistances DistancesOfStation(const Observer& observer) {
  const double sinLat = std::sin(observer.Latitude);
  const double normal = NormalKm(sinLat);
  return {(normal + observer.Height) * std::cos(observer.Latitude),
          (normal * kOneMinusFlattening * kOneMinusFlattening + observer.Height) * sinLat};
}

Observer ObserverFromDegrees(double latitudeDeg, double longitudeDeg, double heightM) {
  return {Radians(latitudeDeg), Radians(Modulus(longitudeDeg, 360)), heightM * 0.001, 0};
}

void ObserverPosVel(Observer& observer, double julianDate, Vector& position, Vector& velocity) {
  observer.Theta = FMod2p(ThetaGOfJulianDate(julianDate) + observer.Longitude);
  const auto [fromAxis, aboveEquator] = DistancesOfStation(observer);
  position = {fromAxis * std::cos(observer.Theta), fromAxis * std::sin(observer.Theta), aboveEquator, 0};
  velocity = {-kEarthRotationRadPerS * position.y, kEarthRotationRadPerS * position.x, 0, 0};
  Magnitude(position);
  Magnitude(velocity);
}

void SatLatLonAlt(const Vector& p, double julianDate, Geodetic& geodetic) {
  geodetic.Theta = AcTan(p.y, p.x);
  geodetic.Longitude = FMod2p(geodetic.Theta - ThetaGOfJulianDate(julianDate));
  const double r = std::sqrt(p.x * p.x + p.y * p.y);
  double latitude = AcTan(p.z, r);
  if (r == 0) latitude = p.z > 0 ? kPi / 2 : -kPi / 2;
  double normal = XKMPER;
  for (int round = 0; round < kLatitudeRounds; ++round) {
    const double before = latitude;
    const double sinLat = std::sin(before);
    normal = NormalKm(sinLat);
    latitude = std::atan2(p.z + normal * kEccentricitySquared * sinLat, r);
    if (!(std::fabs(latitude - before) >= 1e-10)) break;
  }
  geodetic.Latitude = latitude;
  // Above a pole r / cos(latitude) is 0 / 0; the polar form holds there.
  const double sinLat = std::sin(latitude);
  geodetic.Altitude = r > std::fabs(p.z) * 1e-6 ? r / std::cos(latitude) - normal
                                                : p.z / sinLat - normal * (1 - kEccentricitySquared);
}

void SatGeocentricLatLon(const Vector& p, double julianDate, double& latitude, double& longitude) {
  latitude = std::atan2(p.z, std::sqrt(p.x * p.x + p.y * p.y));
  longitude = FMod2p(AcTan(p.y, p.x) - ThetaGOfJulianDate(julianDate));
}

}  // namespace pelorin::orbit
