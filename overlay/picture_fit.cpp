#include "overlay/picture_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "overlay/scan_line_layout.h"

namespace pelorin::overlay {

PaneBoxes BoxesSideBySide(QSize area) {
  // Half of what the gap leaves: with half of the whole, the right box would lose its scroll bar.
  const int width = std::max(0, (area.width() - kPaneGap) / 2);
  return {{0, 0, width, area.height()}, {width + kPaneGap, 0, width, area.height()}};
}

int MapWidthFor(int pictureWidth) {
  constexpr int mostChannels = 4;
  return std::clamp(pictureWidth, kUsualLineWidth, mostChannels * kUsualLineWidth);
}

int FittedMapHeight(QSize map, int width) {
  return static_cast<int>(std::int64_t{map.height()} * width / map.width());
}

int FittedPictureHeight(QSize picture, QSize map, int mapWidth) {
  const double scale = static_cast<double>(map.width()) / mapWidth;
  return static_cast<int>(std::lround(picture.height() / scale));
}

}  // namespace pelorin::overlay
