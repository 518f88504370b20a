#include "orbit/look_angles.h"

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"

namespace pelorin::orbit {
namespace {

/// Elevation as reported: the apparent one where that is not below the horizon. Returns whether it is.
bool ApplyRefraction(double trueElevation, double& elevation) {
  const double apparent = RefractedElevation(trueElevation);
  const bool visible = apparent >= 0;
  elevation = visible ? apparent : trueElevation;
  return visible;
}

}  // namespace

double RefractedElevation(double trueElevation) {
  const double degrees = Degrees(trueElevation);
  // Far below the horizon the formula passes through its pole (−5.11°); nothing is seen there.
  if (degrees < -2) return trueElevation;
  return trueElevation + Radians(1.02 / Tan(Radians(degrees + 10.3 / (degrees + 5.11))) / 60);
}

void LookAngles(const Vector& satPosition, const Vector& satVelocity, Observer& observer, double julianDate,
                LookAngleSet& look, bool& visible) {
  Vector site, siteVelocity;
  ObserverPosVel(observer, julianDate, site, siteVelocity);
  Vector range{satPosition.x - site.x, satPosition.y - site.y, satPosition.z - site.z, 0};
  const Vector rate{satVelocity.x - siteVelocity.x, satVelocity.y - siteVelocity.y,
                    satVelocity.z - siteVelocity.z, 0};
  Magnitude(range);
  const double sinLat = std::sin(observer.Latitude), cosLat = std::cos(observer.Latitude);
  const double sinTheta = std::sin(observer.Theta), cosTheta = std::cos(observer.Theta);
  const double south = sinLat * cosTheta * range.x + sinLat * sinTheta * range.y - cosLat * range.z;
  const double east = -sinTheta * range.x + cosTheta * range.y;
  const double up = cosLat * cosTheta * range.x + cosLat * sinTheta * range.y + sinLat * range.z;
  look.Azimuth = FMod2p(std::atan2(east, -south));
  look.Range = range.w;
  look.RangeRate = Dot(range, rate) / range.w;
  visible = ApplyRefraction(ArcSin(up / range.w), look.Elevation);
}

double DopplerHz(double rangeRate) { return -kDownlinkHz * rangeRate / kSpeedOfLightKmPerS; }

double SignalDbm(double range, bool visible) {
  return visible ? kTransmitterDbm - (20 * std::log10(range * kDownlinkHz / 1e9) + kFreeSpaceLossDb) : 0;
}

ElevationFrame::ElevationFrame(const Observer& observer)
    : longitude_(observer.Longitude),
      sinLat_(std::sin(observer.Latitude)),
      cosLat_(std::cos(observer.Latitude)),
      station_(DistancesOfStation(observer)) {}

double ElevationFrame::Elevation(const Vector& sat, double julianDate) const {
  const double theta = ThetaGOfJulianDate(julianDate) + longitude_;
  const double sinTheta = std::sin(theta), cosTheta = std::cos(theta);
  const double x = sat.x - station_.FromAxis * cosTheta, y = sat.y - station_.FromAxis * sinTheta,
               z = sat.z - station_.AboveEquator;
  const double up = cosLat_ * (cosTheta * x + sinTheta * y) + sinLat_ * z;
  double elevation = 0;
  ApplyRefraction(ArcSin(up / std::sqrt(x * x + y * y + z * z)), elevation);
  return elevation;
}

}  // namespace pelorin::orbit
