#include "map/footprint.h"

#include <array>
#include <cmath>
#include <cstdlib>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"

namespace pelorin::map {
namespace {

struct Bearing {
  float Cosine, Sine;
};

/// Bearings 0°, 10° … 360°.
using BearingTable = std::array<Bearing, 37>;

const BearingTable& Bearings() {
  static const BearingTable table = [] {
    BearingTable made;
    for (std::size_t i = 0; i < made.size(); ++i) {
      const double angle = orbit::Radians(10.0 * static_cast<double>(i));
      made[i] = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    }
    return made;
  }();
  return table;
}

}  // namespace

std::vector<Stroke> Footprint(const MapFrame& frame, double latitudeDeg, double longitudeDeg,
                              double altitudeKm) {
  std::vector<Stroke> strokes;
  if (frame.IsEmpty() || !(altitudeKm >= 0)) return strokes;
  const double cosRadius = orbit::XKMPER / (orbit::XKMPER + altitudeKm);
  const double sinRadius = std::sqrt(1 - cosRadius * cosRadius);
  const double latitude = orbit::Radians(latitudeDeg), longitude = orbit::Radians(longitudeDeg);
  const double sinLat = std::sin(latitude), cosLat = std::cos(latitude);
  Stroke stroke;
  const auto finish = [&] {
    if (stroke.size() > 1) strokes.push_back(stroke);
    stroke.clear();
  };
  int previousX = -frame.Width;
  for (const Bearing& bearing : Bearings()) {
    const double north = sinRadius * static_cast<double>(bearing.Cosine);
    const double east = sinRadius * static_cast<double>(bearing.Sine);
    const double outward = cosRadius * cosLat - north * sinLat;
    const double degreesNorth = orbit::Degrees(orbit::ArcSin(cosRadius * sinLat + north * cosLat));
    // Brought back to −180 … 180, or the half of the circle beyond 180° W would lie left of the map.
    const double degreesEast = orbit::Degrees(orbit::SignedAngle(longitude + std::atan2(east, outward)));
    const QPoint point = MapPoint(frame, degreesNorth, degreesEast);
    if (std::abs(point.x() - previousX) > frame.Width / 5) finish();
    stroke.push_back(point);
    previousX = point.x();
  }
  finish();
  return strokes;
}

}  // namespace pelorin::map
