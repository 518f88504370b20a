#include "overlay/picture_blend.h"

#include <algorithm>
#include <cstdint>

#include "overlay/scan_line_layout.h"
#include "swath/recording.h"

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
  if (pictureWidth >= kImageEnd) return southBound ? 0 : mapWidth - pictureWidth;
  return southBound ? kImageBegin : mapWidth - kImageEnd;
}

int MapRowAtPictureTop(int pictureHeight, int mapHeight, bool southBound) {
  return swath::RowOfLine(0, mapHeight, southBound) - swath::RowOfLine(0, pictureHeight, southBound);
}

QImage BlendRows(const QImage& picture, const MapLayer& layer, int opacityPercent, int first, int end) {
  QImage blend = picture.copy(0, first, picture.width(), end - first);
  const auto share = static_cast<std::uint32_t>(std::clamp(opacityPercent, 0, 100) * 256 / 100);
  const int shift = MapColumnAtPictureLeft(picture.width(), layer.Map.width(), layer.SouthBound);
  const int firstColumn = std::max(0, -shift);
  const int endColumn = std::min(picture.width(), layer.Map.width() - shift);
  const int down = MapRowAtPictureTop(picture.height(), layer.Map.height(), layer.SouthBound);
  const int firstMade = (layer.SouthBound ? 0 : layer.Map.height() - layer.LinesMade) - down;
  const int endMade = std::min(end, firstMade + layer.LinesMade);
  for (int y = std::max(first, firstMade); y < endMade; ++y) {
    auto* row = reinterpret_cast<QRgb*>(blend.scanLine(y - first));
    const QRgb* map = reinterpret_cast<const QRgb*>(layer.Map.constScanLine(y + down));
    for (int x = firstColumn; x < endColumn; ++x) row[x] = Mixed(row[x], map[x + shift], share);
  }
  return blend;
}

QImage BlendPicture(const QImage& picture, const MapLayer& layer, int opacityPercent) {
  return BlendRows(picture, layer, opacityPercent, 0, picture.height());
}

}  // namespace pelorin::overlay
