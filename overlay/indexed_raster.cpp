#include "overlay/indexed_raster.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace pelorin::overlay {

IndexedRaster::IndexedRaster(picture::IndexedImage& image)
    : image_(image), crossings_(static_cast<std::size_t>(image.Height)) {}

void IndexedRaster::Line(PixelPoint a, PixelPoint b, std::uint8_t pen) {
  const int dx = std::abs(b.X - a.X), dy = -std::abs(b.Y - a.Y);
  const int stepX = a.X < b.X ? 1 : -1, stepY = a.Y < b.Y ? 1 : -1;
  int error = dx + dy;
  while (a != b) {
    if (a.X >= 0 && a.X < image_.Width && a.Y >= 0 && a.Y < image_.Height) image_.Row(a.Y)[a.X] = pen;
    const int twice = 2 * error;
    if (twice >= dy) {
      error += dy;
      a.X += stepX;
    }
    if (twice <= dx) {
      error += dx;
      a.Y += stepY;
    }
  }
}

void IndexedRaster::Polyline(std::span<const PixelPoint> points, std::uint8_t pen) {
  for (std::size_t i = 1; i < points.size(); ++i) Line(points[i - 1], points[i], pen);
}

void IndexedRaster::Polygon(std::span<const PixelPoint> points, std::uint8_t pen, std::uint8_t brush) {
  if (points.size() < 2) return;
  Fill(points, brush);
  Polyline(points, pen);
  Line(points.back(), points.front(), pen);
}

void IndexedRaster::Fill(std::span<const PixelPoint> points, std::uint8_t brush) {
  int top = image_.Height, bottom = -1;
  PixelPoint from = points.back();
  for (const PixelPoint to : points) {
    const PixelPoint low = from.Y < to.Y ? from : to, high = from.Y < to.Y ? to : from;
    from = to;
    // An edge is crossed by the rows from its upper end to above its lower one, so that corners count once.
    const int first = std::max(low.Y, 0), last = std::min(high.Y, image_.Height) - 1;
    if (first > last) continue;
    top = std::min(top, first);
    bottom = std::max(bottom, last);
    const std::int64_t dx = high.X - low.X, dy = high.Y - low.Y;
    for (int y = first; y <= last; ++y) {
      const std::int64_t product = dx * (y - low.Y);
      // Rounded up: pixels at and right of the edge are inside.
      const std::int64_t offset = product >= 0 ? (product + dy - 1) / dy : -(-product / dy);
      crossings_[static_cast<std::size_t>(y)].push_back(low.X + static_cast<int>(offset));
    }
  }
  for (int y = top; y <= bottom; ++y) {
    std::vector<int>& row = crossings_[static_cast<std::size_t>(y)];
    std::sort(row.begin(), row.end());
    for (std::size_t i = 0; i + 1 < row.size(); i += 2) {
      const int x0 = std::clamp(row[i], 0, image_.Width), x1 = std::clamp(row[i + 1], 0, image_.Width);
      if (x1 > x0) std::memset(image_.Row(y) + x0, brush, static_cast<std::size_t>(x1 - x0));
    }
    row.clear();
  }
}

}  // namespace pelorin::overlay
