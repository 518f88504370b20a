#include "overlay/ground_colour.h"

#include <algorithm>

#include "overlay/elevation_colours.h"
#include "overlay/overlay_master.h"
#include "overlay/palette.h"

namespace pelorin::overlay {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;

bool HasDirectColours(const QImage& image) {
  return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32 ||
         image.format() == QImage::Format_RGB888;
}

}  // namespace

Marks ChosenMarks(bool linesOnly, bool showOverlay) {
  if (linesOnly) return Marks::Lines;
  return showOverlay ? Marks::All : Marks::None;
}

GroundColours::GroundColours(GroundSource source, const MasterView* master, Marks marks)
    : elevations_(source.Elevations), master_(master) {
  SetMarks(marks);
  if (source.BaseImage && HasDirectColours(*source.BaseImage)) {
    base_ = source.BaseImage->convertToFormat(QImage::Format_RGB32);
  }
}

std::uint32_t GroundColours::BaseColour(int southMin, int eastMin, BaseRow& row) const {
  if (elevations_) {
    if (!elevations_->KnownLayout()) return kUnknownGroundColour;
    const ElevationColours& colours = AtlasColours();
    const int elevation = elevations_->ElevationAt(southMin, eastMin);
    return colours[static_cast<std::size_t>(std::clamp(elevation, 0, static_cast<int>(colours.size()) - 1))];
  }
  if (base_.isNull()) return 0;
  const auto scaled = [](int size, int minutes, int range) {
    return std::min(static_cast<int>(std::int64_t{size} * minutes / range), size - 1);
  };
  const int number = scaled(base_.height(), southMin, swath::kMinutesOfTurn / 2);
  if (number != row.number) row = {number, reinterpret_cast<const QRgb*>(base_.constScanLine(number))};
  return row.pixels[scaled(base_.width(), swath::MinutesFromDateLine(eastMin), swath::kMinutesOfTurn)];
}

void GroundColours::ColourLine(const swath::GroundLine& line, std::span<std::uint32_t> colours,
                               std::span<std::uint8_t> indices) const {
  BaseRow row;
  for (std::size_t i = 0; i < colours.size(); ++i) {
    const int southMin = line.SouthMin[i], eastMin = line.EastMin[i];
    const std::uint8_t index = master_ ? master_->IndexAt(southMin, eastMin) : std::uint8_t{kBackground};
    indices[i] = index;
    const bool covered = (marks_ == Marks::All && index != kBackground) ||
                         (marks_ == Marks::Lines && (index == kBoundary || index == kGrid));
    colours[i] = kOpaque | (covered ? master_->Colours()[index] : BaseColour(southMin, eastMin, row));
  }
}

}  // namespace pelorin::overlay
