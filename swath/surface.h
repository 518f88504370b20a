#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "swath/ground_line.h"

namespace pelorin::swath {

/// What a coarse map of the world has at a point.
enum class Surface : std::uint8_t {
  Water,  ///< lakes are water
  Land,
  Unsure,  ///< a line is drawn there
};

/// Tells it of all points of a line; `surfaces` has the line's length.
using SurfaceOfLine = std::function<void(const GroundLine& line, std::span<Surface> surfaces)>;

}  // namespace pelorin::swath
