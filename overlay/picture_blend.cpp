#include "overlay/picture_blend.h"

#include <algorithm>
#include <cstdint>

#include "overlay/scan_line_layout.h"

namespace pelorin::overlay {
namespace {

/// `share` of 256 parts of one colour over another, channel by channel.
QRgb Mixed(QRgb below, QRgb above, std::uint32_t share) {
  const auto mixed = [&](std::uint32_t mask) {
    return (((above & mask) * share + (below & mask) * (256 - share)) >> 8) & mask;
  };
  return 0xFF000000U | mixed(0x00FF00FFU) | mixed(0x0000FF00U);
}

}  // namespace

int MapColumnAtPictureLeft(int pictureWidth, int mapWidth, bool southBound) {
  if (pictureWidth >= kImageEnd) return 0;
  return southBound ? kImageBegin : mapWidth - kImageEnd;
}

QImage BlendPicture(const QImage& picture, const MapLayer& layer, int opacityPercent) {
  QImage blend = picture.copy();
  const auto share = static_cast<std::uint32_t>(std::clamp(opacityPercent, 0, 100) * 256 / 100);
  const int shift = MapColumnAtPictureLeft(picture.width(), layer.Map.width(), layer.SouthBound);
  const int columns = std::min(picture.width(), layer.Map.width() - shift);
  const int firstRow = layer.SouthBound ? 0 : layer.Map.height() - layer.LinesMade;
  const int endRow = std::min(picture.height(), firstRow + layer.LinesMade);
  for (int y = firstRow; y < endRow; ++y) {
    auto* row = reinterpret_cast<QRgb*>(blend.scanLine(y));
    const QRgb* map = reinterpret_cast<const QRgb*>(layer.Map.constScanLine(y)) + shift;
    for (int x = 0; x < columns; ++x) row[x] = Mixed(row[x], map[x], share);
  }
  return blend;
}

}  // namespace pelorin::overlay
