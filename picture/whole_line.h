#pragma once

#include <QImage>
#include <array>

namespace pelorin::picture {

/// Columns of a whole line of the old picture format: two channels side by side, each with its sync, space
/// band, image and telemetry.
inline constexpr int kWholeLineWidth = 2080;

/// Whether a picture of this width holds both channels; some recorders add or leave out up to 20 columns.
constexpr bool HoldsWholeLines(int width) {
  return width >= kWholeLineWidth - 20 && width <= kWholeLineWidth + 20;
}

/// A picture of whole lines cut in its middle, left half first: channel A when the picture is as it was
/// received, channel B when it was turned by 180° or mirrored.
std::array<QImage, 2> CutWholeLines(const QImage& picture);

}  // namespace pelorin::picture
