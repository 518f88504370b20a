#pragma once

#include <bitset>
#include <cstddef>

#include "swath/ground_track.h"

/// The Earth in tiles of 5° by 5°, by which the fine lines are kept, so that a pass reads only its own.
namespace pelorin::lines {

inline constexpr int kTileDeg = 5;
inline constexpr int kTileRows = 180 / kTileDeg;
inline constexpr int kTileColumns = 360 / kTileDeg;
inline constexpr int kTileCount = kTileRows * kTileColumns;

/// Row 0 begins at the south pole, column 0 at 180° W.
struct LineTile {
  int Row = 0, Column = 0;

  std::size_t Number() const { return static_cast<std::size_t>(Row * kTileColumns + Column); }
  double SouthDeg() const { return Row * kTileDeg - 90; }
  double WestDeg() const { return Column * kTileDeg - 180; }
};

/// Some of the tiles.
class LineTiles {
 public:
  /// Those that meet a box, its edges included. Latitudes beyond the poles are cut off; longitudes may be of
  /// any turn. A box whose west is east of its east goes across 180°; one of 360° or more goes round.
  void AddBox(double southDeg, double westDeg, double northDeg, double eastDeg);

  /// Those that meet a circle on the sphere, and some of those beside it.
  void AddCircle(const swath::GroundPoint& middle, double radiusDeg);

  bool Has(const LineTile& tile) const { return tiles_[tile.Number()]; }
  std::size_t Count() const { return tiles_.count(); }

 private:
  std::bitset<kTileCount> tiles_;
};

}  // namespace pelorin::lines
