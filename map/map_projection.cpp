#include "map/map_projection.h"

#include <cmath>

#include "orbit/scalar_math.h"

namespace pelorin::map {
namespace {

/// The nearest integer, of two the even one, as the rounding mode that everyone leaves alone has it.
int Nearest(double pixel) { return static_cast<int>(std::lrint(pixel)); }

}  // namespace

bool IsPacificCentred(double stationLongitudeDeg) {
  const double east = orbit::Modulus(stationLongitudeDeg, 360);
  return east > 150 && east < 210;
}

int MapX(const MapFrame& frame, double longitudeDeg) {
  double east = frame.PacificCentred ? longitudeDeg + 180 : longitudeDeg;
  if (east > 180) east -= 360;
  return Nearest((east + 180) * frame.Width / 360);
}

int MapY(const MapFrame& frame, double latitudeDeg) {
  return Nearest((90 - latitudeDeg) * frame.Height / 180);
}

QPoint MapPoint(const MapFrame& frame, double latitudeDeg, double longitudeDeg) {
  return {MapX(frame, longitudeDeg), MapY(frame, latitudeDeg)};
}

}  // namespace pelorin::map
