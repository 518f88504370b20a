#include "align/moves.h"

#include "swath/pixel_geometry.h"

namespace pelorin::align {

swath::Recording Moved(const swath::Recording& recording, const Moves& moves) {
  swath::Recording moved = recording;
  moved.OffsetS += moves.TimeS;
  moved.ShiftColumns += moves.ShiftColumns;
  moved.Offsets.RollDeg += moves.RollDeg;
  moved.Offsets.YawDeg += moves.YawDeg;
  return moved;
}

bool TurnsWithAttitude(const swath::Recording& recording) {
  return recording.SeenBy.Line.Law != swath::ScanLaw::ZonesSphere;
}

std::vector<PlaceMoves> MovesOf(const Frame& frame, const std::vector<swath::PixelPoint>& places) {
  // A part of a pixel: what is a small move is nearly straight.
  constexpr Moves steps{0.1, 0.25, 0.02, 0.05};
  const swath::PixelGeometry geometry(frame.Recording);
  std::vector<PlaceMoves> result(places.size());
  std::vector<std::optional<swath::GroundPoint>> grounds;
  for (const swath::PixelPoint& place : places) {
    grounds.push_back(geometry.GroundOf({frame.PixelColumn(place.Column), place.Row}));
  }
  for (std::size_t move = 0; move < Moves::kCount; ++move) {
    std::array<double, Moves::kCount> step{};
    step[move] = steps.AsArray()[move];
    const swath::PixelGeometry moved(Moved(frame.Recording, Moves::Of(step)));
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (!grounds[i]) continue;
      const auto pixel = moved.PixelOf(*grounds[i]);
      if (!pixel) continue;
      result[i].Rows[move] = (pixel->Row - places[i].Row) / step[move];
      result[i].Columns[move] = (frame.X(pixel->Column) - places[i].Column) / step[move];
    }
  }
  return result;
}

}  // namespace pelorin::align
