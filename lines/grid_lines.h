#pragma once

#include <QString>
#include <vector>

#include "lines/line_tiles.h"
#include "swath/ground_track.h"

namespace pelorin::lines {

/// A meridian or parallel, or as much of it as lies in some tiles.
struct GridLine {
  QString Text;                 ///< "50°N", "10°W", "0°", "180°"
  swath::GroundPoint From, To;  ///< straight between; longitudes −180 … 540
};

/// The grid's lines every `stepDeg`, a divisor of 90, in those tiles. Towards the poles, where meridians
/// would run together, most of them end: at 80°, those of every tenth degree at 89°; only every ninetieth
/// reaches the pole.
std::vector<GridLine> GridLinesIn(const LineTiles& tiles, int stepDeg);

}  // namespace pelorin::lines
