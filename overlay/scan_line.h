#pragma once

#include <cstdint>
#include <span>

#include "overlay/ground_colour.h"

namespace pelorin::overlay {

/// What the space band shows: nothing, or the first or second second of a minute.
enum class MinuteMarker { None, Black, White };

MinuteMarker MarkerAt(double secondsOfMinute);

/// One line of the map. Where the image does not begin with the first column, the line has the frame of the
/// old picture format: sync, space band, image, filler. `pixels` (0xFFRRGGBB) and `indices` are of one
/// length, which has room for the image. With `runsLeft` the line is written from right to left.
class ScanLineWriter {
 public:
  ScanLineWriter(const GroundColours& colours, int firstColumn)
      : colours_(colours), firstColumn_(static_cast<std::size_t>(firstColumn)) {}

  void Write(const swath::GroundLine& ground, MinuteMarker marker, bool runsLeft,
             std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices) const;

 private:
  static void WriteFrame(MinuteMarker marker, std::size_t imageEnd, std::span<std::uint32_t> pixels,
                         std::span<std::uint8_t> indices);

  const GroundColours& colours_;
  std::size_t firstColumn_;
};

}  // namespace pelorin::overlay
