#include "overlay/picture_blend.h"

#include <algorithm>
#include <cstdint>

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

int MapColumnAtPictureLeft(const MapLayer& layer, int pictureWidth) {
  const int later = layer.Recording.FirstColumn - layer.FirstColumnOfPicture;
  return layer.Recording.RunsLeft() ? layer.Map.width() - pictureWidth - later : later;
}

int MapRowAtPictureTop(const MapLayer& layer, int pictureHeight) {
  return layer.Recording.Lies.Turned ? layer.Map.height() - pictureHeight : 0;
}

QImage BlendRows(const QImage& picture, const MapLayer& layer, int opacityPercent, int first, int end) {
  QImage blend = picture.copy(0, first, picture.width(), end - first);
  const auto share = static_cast<std::uint32_t>(std::clamp(opacityPercent, 0, 100) * 256 / 100);
  const int shift = MapColumnAtPictureLeft(layer, picture.width());
  const int firstColumn = std::max(0, -shift);
  const int endColumn = std::min(picture.width(), layer.Map.width() - shift);
  const int down = MapRowAtPictureTop(layer, picture.height());
  const int firstMade = (layer.Recording.Lies.Turned ? layer.Map.height() - layer.LinesMade : 0) - down;
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
