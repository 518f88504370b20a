#include "overlay/picture_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "swath/apt_line.h"

namespace pelorin::overlay {

PaneBoxes BoxesSideBySide(QSize area) {
  // Half of what the gap leaves: with half of the whole, the right box would lose its scroll bar.
  const int width = std::max(0, (area.width() - kPaneGap) / 2);
  return {{0, 0, width, area.height()}, {width + kPaneGap, 0, width, area.height()}};
}

swath::Recording MapOf(const swath::Recording& picture, double minutes) {
  constexpr int mostChannels = 4;
  swath::Recording map = picture;
  if (map.Rows == 0) map.Rows = map.LinesOf(minutes);
  if (map.SeenBy.Line.Law == swath::ScanLaw::EvenAngles) {
    map.Columns = map.SeenBy.Line.Columns;
    map.FirstColumn = 0;
  } else {
    map.Columns = std::clamp(picture.Columns, swath::kUsualLineWidth, mostChannels * swath::kUsualLineWidth);
    map.FirstColumn = swath::kImageBegin;
  }
  return map;
}

int FittedMapHeight(QSize map, int width) {
  return static_cast<int>(std::int64_t{map.height()} * width / map.width());
}

int FittedPictureHeight(QSize picture, QSize map, int mapWidth) {
  const double scale = static_cast<double>(map.width()) / mapWidth;
  return static_cast<int>(std::lround(picture.height() / scale));
}

}  // namespace pelorin::overlay
