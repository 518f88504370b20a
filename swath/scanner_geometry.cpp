#include "swath/scanner_geometry.h"

#include <cmath>
#include <cstdlib>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"

namespace pelorin::swath {
namespace {

/// The scanner's angle law: from `first` pixel on, each pixel turns by `step` units of half-angle/2047.
struct AngleStep {
  int first, step;
};
constexpr std::array<AngleStep, 5> kAngleLaw{{{1, 8}, {79, 6}, {189, 4}, {272, 3}, {334, 2}}};

}  // namespace

ScannerFamily ScannerFamilyOf(std::string_view name) {
  if (name.starts_with("METEOR")) return ScannerFamily::Meteor;
  if (name.starts_with("RESURS")) return ScannerFamily::Resurs;
  if (name.starts_with("NOAA 1") || name.starts_with("NOAA-1")) return ScannerFamily::Noaa;
  return ScannerFamily::Other;
}

double FamilyHalfAngle(ScannerFamily family) {
  switch (family) {
    case ScannerFamily::Noaa:
      return 55.37;
    case ScannerFamily::Resurs:
      return 48.0;
    case ScannerFamily::Meteor:
      return 39.0;
    case ScannerFamily::Other:
      break;
  }
  return 45.0;
}

double ScanAngleToGroundDistance(double alpha, double h) {
  const double t = orbit::Tan(alpha);
  const double sinHorizonAngle = orbit::XKMPER / (orbit::XKMPER + h);
  if (std::fabs(std::sin(alpha)) >= sinHorizonAngle) {
    // The ray passes the Earth: the tangent of the central angle of the horizon.
    const double cosHorizonAngle = std::sqrt(std::fmax(1 - sinHorizonAngle * sinHorizonAngle, 0));
    return std::copysign(cosHorizonAngle / sinHorizonAngle * (orbit::XKMPER + h), alpha);
  }
  const double b = -2 * (orbit::XKMPER + h) / t;
  const double c = h * h + 2 * orbit::XKMPER * h;
  const double a = 1 / (t * t) + 1;
  const double discriminant = std::fmax(b * b - 4 * a * c, 0);
  const double y = (-b - std::copysign(std::sqrt(discriminant), -b)) / (2 * a);
  // The tangent of the central angle, whose sine is y / R, without the detour through the angle.
  const double sinGamma = y / orbit::XKMPER;
  return sinGamma / std::sqrt(1 - sinGamma * sinGamma) * (orbit::XKMPER + h);
}

ScanDistances ScanDistancesOf(ScannerFamily family, double heightKm) {
  return ScanDistancesFor(FamilyHalfAngle(family), heightKm);
}

ScanDistances ScanDistancesFor(double halfAngleDeg, double heightKm) {
  ScanDistances distances{};
  double angleDeg = 0;
  const AngleStep* law = kAngleLaw.begin();
  for (int i = 1; i <= kHalfLinePixels; ++i) {
    if (law + 1 != kAngleLaw.end() && i == law[1].first) ++law;
    angleDeg += law->step * halfAngleDeg / 2047;
    const double distance = ScanAngleToGroundDistance(orbit::Radians(angleDeg), heightKm);
    distances[ScanIndex(i)] = distance;
    distances[ScanIndex(-i)] = -distance;
  }
  return distances;
}

void BuildScanTable(orbit::TSatellite& satellite, int n, double heightKm) {
  const ScannerFamily family = ScannerFamilyOf(satellite.Name);
  const ScanDistances line = ScanDistancesOf(family, heightKm);
  satellite.ScanTable.assign(line.begin() + kHalfLinePixels, line.end());
  for (int i = kHalfLinePixels + 1; i <= n; ++i) {
    const double angle = orbit::Radians(i * FamilyHalfAngle(family) / n);
    satellite.ScanTable.push_back(ScanAngleToGroundDistance(angle, heightKm));
  }
}

double CrossTrackOffset(const orbit::TSatellite& satellite, int i) {
  const double distance = satellite.ScanTable[static_cast<std::size_t>(std::abs(i))];
  return i < 0 ? -distance : distance;
}

}  // namespace pelorin::swath
