#pragma once

#include <array>
#include <cstdint>

namespace pelorin::overlay {

/// Everything at sea level and below.
inline constexpr std::uint32_t kSeaColour = 0x3F74A8;
/// Ground whose elevation is not known.
inline constexpr std::uint32_t kUnknownGroundColour = 0x808080;

/// One colour per metre, 0x00RRGGBB: entry 0 is the sea, the last one is for all heights from there on.
using ElevationColours = std::array<std::uint32_t, 9001>;

/// The tints of a school atlas: greens in the lowlands, yellow and brown in the hills, grey to white in the
/// high mountains.
const ElevationColours& AtlasColours();

}  // namespace pelorin::overlay
