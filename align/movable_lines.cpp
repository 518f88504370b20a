#include "align/movable_lines.h"

#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include "lines/map_lines.h"

namespace pelorin::align {

using lines::PixelLine;
using swath::PixelPoint;
using swath::Recording;

namespace {

/// Coasts have some twenty points in a pixel of the old format. So far beside its place a line may run for
/// fewer; islands that are smaller are left out.
constexpr double kThinPixels = 0.25, kCoarsePixels = 0.5;

double BesideStep(const PixelPoint& place, const PixelPoint& from, const PixelPoint& to) {
  const double dx = to.Column - from.Column, dy = to.Row - from.Row, length = std::hypot(dx, dy);
  const double x = place.Column - from.Column, y = place.Row - from.Row;
  // A closed line is measured from where it begins.
  return length == 0 ? std::hypot(x, y) : std::fabs(x * dy - y * dx) / length;
}

/// With as few points as do (Ramer, 1972; Douglas and Peucker, 1973).
PixelLine Thinned(const PixelLine& line, double pixels) {
  std::vector<bool> isKept(line.size(), false);
  isKept.front() = isKept.back() = true;
  std::vector<std::pair<std::size_t, std::size_t>> steps{{0, line.size() - 1}};
  while (!steps.empty()) {
    const auto [from, to] = steps.back();
    steps.pop_back();
    double most = pixels;
    std::size_t farthest = from;
    for (std::size_t i = from + 1; i < to; ++i) {
      const double beside = BesideStep(line[i], line[from], line[to]);
      if (beside <= most) continue;
      most = beside;
      farthest = i;
    }
    if (farthest == from) continue;
    isKept[farthest] = true;
    steps.emplace_back(from, farthest);
    steps.emplace_back(farthest, to);
  }
  PixelLine thinned;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (isKept[i]) thinned.push_back(line[i]);
  }
  const bool isSpeck = thinned.size() == 2 && BesideStep(thinned[1], thinned[0], thinned[0]) < pixels;
  return isSpeck ? PixelLine() : thinned;
}

/// Not in the frame beside the scanner's columns.
bool IsOfScanner(const Recording& recording, PixelPoint pixel) {
  const double column = swath::InFile(recording, pixel).Column - recording.FirstColumn;
  return column >= -0.5 && column <= recording.SeenBy.Line.Columns - 0.5;
}

}  // namespace

MovableLines::MovableLines(const Recording& base, const lines::FineLines& file) : base_(base), near_(base) {
  lines::MapLines map = lines::MapLinesOf(near_.WholePass(), &file, {});
  map.Coasts.insert(map.Coasts.end(), std::make_move_iterator(map.Lakes.begin()),
                    std::make_move_iterator(map.Lakes.end()));
  // One after the other: what is coarse comes of what is thinned already.
  for (const auto& [level, pixels] : {std::pair{&fine_, kThinPixels}, std::pair{&coarse_, kCoarsePixels}}) {
    level->Shores = SeenOf(map.Coasts, pixels);
    level->Borders = SeenOf(map.Borders, pixels);
  }
}

std::vector<MovableLines::SeenLine> MovableLines::SeenOf(std::vector<PixelLine>& lines, double pixels) const {
  std::vector<SeenLine> seen;
  for (PixelLine& line : lines) {
    line = Thinned(line, pixels);
    SeenLine& added = seen.emplace_back();
    added.reserve(line.size());
    for (const PixelPoint& place : line) added.push_back(near_.At(place));
  }
  std::erase_if(lines, [](const PixelLine& line) { return line.empty(); });
  std::erase_if(seen, [](const SeenLine& line) { return line.empty(); });
  return seen;
}

MovedLines MovableLines::In(const Recording& corrected) const {
  return {Moved(fine_.Shores, corrected), Moved(fine_.Borders, corrected)};
}

MovedLines MovableLines::QuickIn(const Recording& corrected) const {
  return {Moved(coarse_.Shores, corrected), Moved(coarse_.Borders, corrected)};
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
      const auto pixel = near_.PixelIn(place, corrected);
      if (pixel && IsOfScanner(corrected, *pixel)) {
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
