#pragma once

#include <array>
#include <vector>

#include "align/fine_land.h"

namespace pelorin::align {

/// What can be wrong of a recording, and by how much: to be added to it.
struct Moves {
  double TimeS = 0, ShiftColumns = 0, RollDeg = 0, YawDeg = 0;

  static constexpr std::size_t kCount = 4;
  std::array<double, kCount> AsArray() const { return {TimeS, ShiftColumns, RollDeg, YawDeg}; }
  static Moves Of(const std::array<double, kCount>& values) {
    return {values[0], values[1], values[2], values[3]};
  }
};

swath::Recording Moved(const swath::Recording& recording, const Moves& moves);

/// Whether attitude turns the lines of a recording on its map.
bool TurnsWithAttitude(const swath::Recording& recording);

/// How a place in a frame moves with the recording.
struct PlaceMoves {
  /// Rows and columns by a second, a column, a degree.
  std::array<double, Moves::kCount> Rows{}, Columns{};
};

/// Of places in a frame; a place that is not seen, or is not seen any more a little beside, does not move.
std::vector<PlaceMoves> MovesOf(const Frame& frame, const std::vector<swath::PixelPoint>& places);

}  // namespace pelorin::align
