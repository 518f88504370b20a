#pragma once

#include <vector>

#include "map/drawing_list.h"
#include "map/map_projection.h"

/// The map's grid: meridians and parallels every 30°, and the tropics.
namespace pelorin::map {

struct MapGrid {
  std::vector<Stroke> Lines;    ///< solid
  std::vector<Stroke> Tropics;  ///< dotted
  std::vector<PlacedText> Labels;
};

/// The lines are white, the labels have no ground of their own. A map without a size has an empty grid.
MapGrid GridOf(const MapFrame& frame, const MeasureText& measure);

}  // namespace pelorin::map
