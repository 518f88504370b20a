#include "lines/pixel_mesh.h"

#include <cmath>

namespace pelorin::lines {
namespace {

using swath::GroundPoint;
using swath::PixelPoint;

constexpr int kCornersPerDeg = 4;
constexpr double kMostErrorPixels = 0.1;
/// Nearer to the poles meridians run together too fast.
constexpr double kLastLatitudeDeg = 84;

std::uint32_t KeyOf(int row, int column) {
  constexpr int perRow = 2 * 360 * kCornersPerDeg;
  return static_cast<std::uint32_t>(row * perRow + column);
}

GroundPoint GroundAt(double row, double column) {
  return {row / kCornersPerDeg - 90, column / kCornersPerDeg - 180};
}

/// Steps of a row's cells in longitude, so that they stay about as wide as high.
int WidthOf(int row) {
  const double latitude = std::abs(GroundAt(row + 0.5, 0).LatitudeDeg);
  return latitude < 60 ? 1 : latitude < 75 ? 2 : 4;
}

PixelPoint Between(const PixelPoint& a, const PixelPoint& b, double share) {
  return {a.Column + share * (b.Column - a.Column), a.Row + share * (b.Row - a.Row)};
}

}  // namespace

std::optional<PixelPoint> PixelMesh::PixelOf(const GroundPoint& ground) {
  if (!(std::abs(ground.LatitudeDeg) < kLastLatitudeDeg)) return exact_.PixelOf(ground);
  const double north = (ground.LatitudeDeg + 90) * kCornersPerDeg;
  const double east = (ground.LongitudeDeg + 180) * kCornersPerDeg;
  const int row = static_cast<int>(north), width = WidthOf(row);
  const int column = static_cast<int>(east) / width * width;
  const Corner key = KeyOf(row, column);
  if (last_ == nullptr || key != lastKey_) {
    auto cell = cells_.find(key);
    if (cell == cells_.end()) cell = cells_.emplace(key, MadeCell(row, column, width)).first;
    last_ = &cell->second;
    lastKey_ = key;
  }
  if (!last_->IsBilinear) return exact_.PixelOf(ground);
  const double x = (east - column) / width;
  return Between(Between(last_->SouthWest, last_->SouthEast, x),
                 Between(last_->NorthWest, last_->NorthEast, x), north - row);
}

PixelMesh::Cell PixelMesh::MadeCell(int row, int column, int width) {
  const auto southWest = PixelOfCorner(row, column), southEast = PixelOfCorner(row, column + width);
  const auto northWest = PixelOfCorner(row + 1, column), northEast = PixelOfCorner(row + 1, column + width);
  if (!southWest || !southEast || !northWest || !northEast) return {};
  const auto middle = exact_.PixelOf(GroundAt(row + 0.5, column + width / 2.0));
  if (!middle) return {};
  const PixelPoint bilinear =
      Between(Between(*southWest, *southEast, 0.5), Between(*northWest, *northEast, 0.5), 0.5);
  const double error = std::hypot(middle->Column - bilinear.Column, middle->Row - bilinear.Row);
  return {error <= kMostErrorPixels, *southWest, *southEast, *northWest, *northEast};
}

const std::optional<PixelPoint>& PixelMesh::PixelOfCorner(int row, int column) {
  const auto [corner, isNew] = corners_.try_emplace(KeyOf(row, column));
  if (isNew) corner->second = exact_.PixelOf(GroundAt(row, column));
  return corner->second;
}

}  // namespace pelorin::lines
