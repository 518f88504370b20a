#pragma once

#include "picture/indexed_bitmap.h"

/// The overlay's indices and their colours. "ovl.bmp" and the overlay master share them, so that other
/// software can tell a coast from a grid line by the pixel's value.
namespace pelorin::overlay {

enum PaletteIndex : std::uint8_t {
  kBlack = 0,
  kLand = 1,
  kBackground = 2,  ///< water and everything else without a mark: the ground's own colour shows through
  kBoundary = 3,
  kGrid = 4,
  kGrey = 12,
  kWhite = 19
};

/// Colours as 0x00RRGGBB; indices without a meaning are black.
constexpr picture::ColourTable OverlayPalette() {
  picture::ColourTable colours{};
  colours[kLand] = 0x008000;
  colours[kBackground] = 0x000080;
  colours[kBoundary] = 0xFFFF00;
  colours[kGrid] = 0xFF0000;
  colours[kGrey] = 0x808080;
  colours[kWhite] = 0xFFFFFF;
  return colours;
}

}  // namespace pelorin::overlay
