#include "overlay/picture_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace pelorin::overlay {

PaneBoxes BoxesSideBySide(QSize area) {
  const int width = std::max(0, (area.width() - kPaneGap) / 2);
  return {{0, 0, width, area.height()}, {width + kPaneGap, 0, width, area.height()}};
}

int FittedMapHeight(QSize map, int width) {
  return static_cast<int>(std::int64_t{map.height()} * width / map.width());
}

int FittedPictureHeight(QSize picture, QSize map, int mapWidth) {
  const double scale = static_cast<double>(map.width()) / mapWidth;
  return static_cast<int>(std::lround(picture.height() / scale));
}

}  // namespace pelorin::overlay
