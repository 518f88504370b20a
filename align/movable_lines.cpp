#include "align/movable_lines.h"

#include <cmath>
#include <iterator>
#include <utility>

#include "lines/map_lines.h"

namespace pelorin::align {

using lines::PixelLine;
using swath::Recording;

MovableLines::MovableLines(const Recording& base, const lines::FineLines& file) : base_(base), near_(base) {
  const lines::MapLines map = lines::MapLinesOf(near_.WholePass(), &file, {});
  shores_ = SeenOf(map.Coasts);
  for (auto& line : SeenOf(map.Lakes)) shores_.push_back(std::move(line));
  borders_ = SeenOf(map.Borders);
}

std::vector<MovableLines::SeenLine> MovableLines::SeenOf(const std::vector<PixelLine>& lines) const {
  std::vector<SeenLine> seen;
  for (const PixelLine& line : lines) {
    SeenLine& added = seen.emplace_back();
    added.reserve(line.size());
    for (const swath::PixelPoint& place : line) added.push_back(near_.At(place));
  }
  return seen;
}

MovedLines MovableLines::In(const Recording& corrected) const {
  return {Moved(shores_, corrected), Moved(borders_, corrected)};
}

std::vector<PixelLine> MovableLines::Moved(const std::vector<SeenLine>& lines,
                                           const Recording& corrected) const {
  std::vector<PixelLine> moved;
  moved.reserve(lines.size());
  PixelLine part;
  const auto end = [&] {
    if (part.size() > 1) moved.push_back(part);
    part.clear();
  };
  for (const SeenLine& line : lines) {
    for (const Sighting& place : line) {
      if (const auto pixel = near_.PixelIn(place, corrected)) {
        part.push_back(*pixel);
      } else {
        end();
      }
    }
    end();
  }
  return moved;
}

bool MovableLines::IsGoodFor(const Recording& corrected) const {
  // Within a part of the margins that were taken beyond the picture's edges.
  constexpr double mostS = 5, mostRollDeg = 0.5, mostColumns = 8, mostYawDeg = 0.05;
  const auto isNear = [](double a, double b, double most) { return std::fabs(a - b) <= most; };
  return isNear(corrected.OffsetS, base_.OffsetS, mostS) &&
         isNear(corrected.Offsets.RollDeg, base_.Offsets.RollDeg, mostRollDeg) &&
         isNear(corrected.ShiftColumns, base_.ShiftColumns, mostColumns) &&
         isNear(corrected.Offsets.YawDeg, base_.Offsets.YawDeg, mostYawDeg);
}

}  // namespace pelorin::align
