#pragma once

#include <vector>

#include "map/drawing_list.h"
#include "map/map_projection.h"

namespace pelorin::map {

/// The circle on a spherical Earth within which a satellite stands above the horizon, as 36 chords. It is cut
/// where it leaves the map at one side and returns at the other. A frame without a size, and an altitude
/// below the ground, have none.
std::vector<Stroke> Footprint(const MapFrame& frame, double latitudeDeg, double longitudeDeg,
                              double altitudeKm);

}  // namespace pelorin::map
