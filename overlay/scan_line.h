#pragma once

#include <cstdint>
#include <span>

#include "overlay/ground_colour.h"

namespace pelorin::overlay {

/// What the space band shows: nothing, or the first or second second of a minute.
enum class MinuteMarker { None, Black, White };

MinuteMarker MarkerAt(double secondsOfMinute);

/// One line of the map from its left end on: sync, space band, image, filler. `pixels` (0xFFRRGGBB) and
/// `indices` are of one length, 995 or more. With `turned` the line is written from right to left.
class ScanLineWriter {
 public:
  explicit ScanLineWriter(const GroundColours& colours) : colours_(colours) {}

  void Write(const swath::GroundLine& ground, MinuteMarker marker, bool turned,
             std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices) const;

 private:
  const GroundColours& colours_;
};

}  // namespace pelorin::overlay
