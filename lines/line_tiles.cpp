#include "lines/line_tiles.h"

#include <algorithm>
#include <cmath>

#include "orbit/scalar_math.h"

namespace pelorin::lines {
namespace {

/// The tile, counted from `start`, in which a coordinate lies.
int TileFrom(double start, double degrees) {
  return static_cast<int>(std::floor((degrees - start) / kTileDeg));
}

}  // namespace

void LineTiles::AddBox(double southDeg, double westDeg, double northDeg, double eastDeg) {
  const int south = TileFrom(-90, std::max(southDeg, -90.0));
  const int north = std::min(TileFrom(-90, std::min(northDeg, 90.0)), kTileRows - 1);
  if (eastDeg < westDeg) eastDeg += 360;
  const int west = TileFrom(-180, westDeg);
  const int east = std::min(TileFrom(-180, eastDeg), west + kTileColumns - 1);
  for (int row = south; row <= north; ++row) {
    for (int column = west; column <= east; ++column) {
      const int turned = ((column % kTileColumns) + kTileColumns) % kTileColumns;
      tiles_.set(LineTile{row, turned}.Number());
    }
  }
}

void LineTiles::AddCircle(const swath::GroundPoint& middle, double radiusDeg) {
  const double south = middle.LatitudeDeg - radiusDeg;
  const double north = middle.LatitudeDeg + radiusDeg;
  if (south <= -90 || north >= 90) {
    AddBox(south, -180, north, 180);
    return;
  }
  // Where a meridian touches the circle.
  const double reach = orbit::Degrees(std::asin(
      std::min(1.0, std::sin(orbit::Radians(radiusDeg)) / std::cos(orbit::Radians(middle.LatitudeDeg)))));
  AddBox(south, middle.LongitudeDeg - reach, north, middle.LongitudeDeg + reach);
}

}  // namespace pelorin::lines
