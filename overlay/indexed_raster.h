#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "picture/indexed_bitmap.h"

namespace pelorin::overlay {

/// A pixel, column from the left and row from the top; it may lie outside the image.
struct PixelPoint {
  int X, Y;

  bool operator==(const PixelPoint&) const = default;
};

/// Draws in one image of indices. What lies outside the image is cut off, pixel by pixel, so that a shape
/// keeps its course.
class IndexedRaster {
 public:
  explicit IndexedRaster(picture::IndexedImage& image);

  /// From `a` up to, and without, `b`.
  void Line(PixelPoint a, PixelPoint b, std::uint8_t pen);
  /// Lines from point to point; the very last pixel stays undrawn.
  void Polyline(std::span<const PixelPoint> points, std::uint8_t pen);
  /// The inside by the even-odd rule, then the closed outline over it. Fewer than two points draw nothing.
  void Polygon(std::span<const PixelPoint> points, std::uint8_t pen, std::uint8_t brush);

 private:
  void Fill(std::span<const PixelPoint> points, std::uint8_t brush);

  picture::IndexedImage& image_;
  std::vector<std::vector<int>> crossings_;  // columns where outlines cross a row; empty between calls
};

}  // namespace pelorin::overlay
