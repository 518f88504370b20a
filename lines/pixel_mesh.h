#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "lines/pixel_lines.h"

namespace pelorin::lines {

/// The pixels of very many ground points near each other, from those of few: a picture's geometry costs a
/// search in time for each point, and a coast has many points in a pixel's neighbourhood.
///
/// Cells of some 28 km get exact pixels at their corners and are bilinear between them, where that holds in
/// their middle to a tenth of a pixel; the error of a smooth projection is greatest there. Elsewhere (at the
/// ends of what is seen, at gaps between lines, near the poles) every point is exact.
class PixelMesh {
 public:
  /// `exact` must outlive the mesh.
  explicit PixelMesh(const PictureView& exact) : exact_(exact) {}

  /// As PictureView::PixelOf. Longitudes −180 … 180.
  std::optional<swath::PixelPoint> PixelOf(const swath::GroundPoint& ground);

 private:
  struct Cell {
    bool IsBilinear = false;
    swath::PixelPoint SouthWest{}, SouthEast{}, NorthWest{}, NorthEast{};
  };
  /// Corners count in quarters of a degree from 90° S, 180° W.
  using Corner = std::uint32_t;

  Cell MadeCell(int row, int column, int width);
  const std::optional<swath::PixelPoint>& PixelOfCorner(int row, int column);

  const PictureView& exact_;
  std::unordered_map<Corner, std::optional<swath::PixelPoint>> corners_;
  std::unordered_map<Corner, Cell> cells_;  ///< by the corner in the south-west
  Corner lastKey_ = 0;
  const Cell* last_ = nullptr;  ///< points of a line mostly lie in the cell of the one before
};

}  // namespace pelorin::lines
