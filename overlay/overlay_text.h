#pragma once

#include <QString>
#include <array>
#include <cstdint>

#include "orbit/date_time.h"

/// The overlay's text lines: each line is a set of items, kept as bits.
namespace pelorin::overlay {

/// Saved settings hold these values; "at" came last and stands third in every line.
enum TextItem : std::uint8_t {
  kTextName = 1,
  kTextDate = 2,
  kTextTimes = 4,
  kTextDirection = 8,
  kTextElevation = 16,
  kTextAt = 32,
};

/// An item as the user sees it.
struct TextItemChoice {
  TextItem Item;
  QString Caption;
  QString Sample;  ///< ends in two blanks
};

/// The six items in the order in which lists show them and lines hold them.
const std::array<TextItemChoice, 6>& TextItemChoices();

/// The item bits of a stored value.
std::uint8_t MaskItems(int stored);

/// The sample line for a set of items.
QString PreviewText(std::uint8_t items);

/// What there is to say about a pass.
struct PassText {
  QString SatelliteName;
  orbit::TDateTime Start, End;  ///< UTC
  bool SouthBound = false;
  double ElevationDeg = 0;
};

/// The line for a set of items: the items joined by two blanks; the elevation ends in º (byte BA in files).
QString TextLine(std::uint8_t items, const PassText& pass);

}  // namespace pelorin::overlay
