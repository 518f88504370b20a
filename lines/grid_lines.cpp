#include "lines/grid_lines.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <utility>

namespace pelorin::lines {
namespace {

QString DegreesText(int degrees, const char* positive, const char* negative) {
  const bool isOwnOpposite = degrees == 0 || degrees == -180;
  return QStringLiteral("%1°%2")
      .arg(std::abs(degrees))
      .arg(QLatin1StringView(isOwnOpposite ? ""
                             : degrees > 0 ? positive
                                           : negative));
}

/// The runs of numbers below `count` for which `has` is true, as [first, end).
std::vector<std::pair<int, int>> Runs(int count, const std::function<bool(int)>& has) {
  std::vector<std::pair<int, int>> runs;
  for (int i = 0; i < count; ++i) {
    if (!has(i)) continue;
    if (runs.empty() || runs.back().second != i) runs.emplace_back(i, i);
    runs.back().second = i + 1;
  }
  return runs;
}

/// The same on a ring: a run over its seam is one, and ends beyond `count`.
std::vector<std::pair<int, int>> RunsRound(int count, const std::function<bool(int)>& has) {
  std::vector<std::pair<int, int>> runs = Runs(count, has);
  if (runs.size() > 1 && runs.front().first == 0 && runs.back().second == count) {
    runs.back().second += runs.front().second;
    runs.erase(runs.begin());
  }
  return runs;
}

int LastLatitude(int longitude) { return longitude % 90 == 0 ? 90 : longitude % 10 == 0 ? 89 : 80; }

}  // namespace

std::vector<GridLine> GridLinesIn(const LineTiles& tiles, int stepDeg) {
  std::vector<GridLine> lines;
  // A line along a side belongs to the tiles on both sides.
  for (int latitude = -90 + stepDeg; latitude < 90; latitude += stepDeg) {
    const int north = (latitude + 90) / kTileDeg, south = (latitude + 89) / kTileDeg;
    const auto has = [&](int column) { return tiles.Has({north, column}) || tiles.Has({south, column}); };
    for (const auto& [first, end] : RunsRound(kTileColumns, has)) {
      const double parallel = latitude;
      lines.push_back({DegreesText(latitude, "N", "S"),
                       {parallel, LineTile{0, first}.WestDeg()},
                       {parallel, LineTile{0, end}.WestDeg()}});
    }
  }
  for (int longitude = -180; longitude < 180; longitude += stepDeg) {
    const int east = (longitude + 180) / kTileDeg;
    const int west = (longitude + 179 + 360) / kTileDeg % kTileColumns;
    const auto has = [&](int row) { return tiles.Has({row, east}) || tiles.Has({row, west}); };
    for (const auto& [first, end] : Runs(kTileRows, has)) {
      const double last = LastLatitude(longitude), meridian = longitude;
      const double from = std::max(LineTile{first, 0}.SouthDeg(), -last);
      const double to = std::min(LineTile{end, 0}.SouthDeg(), last);
      if (from < to) lines.push_back({DegreesText(longitude, "E", "W"), {from, meridian}, {to, meridian}});
    }
  }
  return lines;
}

}  // namespace pelorin::lines
