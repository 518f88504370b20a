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

}  // namespace

Observer ObserverFromDegrees(double latitudeDeg, double longitudeDeg, double heightM) {
  return {Radians(latitudeDeg), Radians(Modulus(longitudeDeg, 360)), heightM * 0.001, 0};
}

void ObserverPosVel(Observer& observer, double julianDate, Vector& position, Vector& velocity) {
  observer.Theta = FMod2p(ThetaGOfJulianDate(julianDate) + observer.Longitude);
  const double sinLat = std::sin(observer.Latitude);
  const double c = 1 / std::sqrt(1 - kEccentricitySquared * sinLat * sinLat);
  const double sq = kOneMinusFlattening * kOneMinusFlattening * c;
  const double achcp = (XKMPER * c + observer.Height) * std::cos(observer.Latitude);
  position = {achcp * std::cos(observer.Theta), achcp * std::sin(observer.Theta),
              (XKMPER * sq + observer.Height) * sinLat, 0};
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
  double c = 1;
  for (int round = 0; round < kLatitudeRounds; ++round) {
    const double before = latitude;
    const double sinLat = std::sin(before);
    c = 1 / std::sqrt(1 - kEccentricitySquared * sinLat * sinLat);
    latitude = std::atan2(p.z + XKMPER * c * kEccentricitySquared * sinLat, r);
    if (!(std::fabs(latitude - before) >= 1e-10)) break;
  }
  geodetic.Latitude = latitude;
  // Above a pole r / cos(latitude) is 0 / 0; the polar form holds there.
  const double sinLat = std::sin(latitude);
  geodetic.Altitude = r > std::fabs(p.z) * 1e-6 ? r / std::cos(latitude) - XKMPER * c
                                                : p.z / sinLat - XKMPER * c * (1 - kEccentricitySquared);
}

void SatGeocentricLatLon(const Vector& p, double julianDate, double& latitude, double& longitude) {
  latitude = std::atan2(p.z, std::sqrt(p.x * p.x + p.y * p.y));
  longitude = FMod2p(AcTan(p.y, p.x) - ThetaGOfJulianDate(julianDate));
}

}  // namespace pelorin::orbit
