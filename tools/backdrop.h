#pragma once

#include <QImage>
#include <vector>

#include "overlay/countries.h"
#include "tools/elevation_grid.h"

namespace pelorin::tools {

/// The Earth as an atlas plate: `width` × `width`/2 pixels, RGB, 180° W at the left edge, north up, equal
/// degrees. Land and lakes are where the records say, heights and depths come from the grid.
QImage RenderBackdrop(const std::vector<overlay::TPolyObject>& records, const ElevationGrid& heights,
                      int width);

}  // namespace pelorin::tools
