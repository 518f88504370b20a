#pragma once

#include <QRect>
#include <QSize>

#include "swath/recording.h"

/// Sizes of map and picture on the page, in pixels.
namespace pelorin::overlay {

/// Between map and picture.
inline constexpr int kPaneGap = 8;

/// The boxes of map (left) and picture on an area: equal widths, a gap between them.
struct PaneBoxes {
  QRect Map, Picture;
};
PaneBoxes BoxesSideBySide(QSize area);

/// The map that is made for a picture, `minutes` long where there is no picture to be as high as. It is of
/// the picture's size; but maps of the old picture format have their frame: they are neither narrower than a
/// channel's line nor, since what follows the frame is filler, much wider.
swath::Recording MapOf(const swath::Recording& picture, double minutes);

/// Height of a bitmap, not empty, shown at a width with its own proportions.
int FittedMapHeight(QSize map, int width);

/// Height of a picture beside a map that is shown `mapWidth` wide. The picture takes the map's scale, not its
/// own, so that a line of the one is level with the same line of the other.
int FittedPictureHeight(QSize picture, QSize map, int mapWidth);

}  // namespace pelorin::overlay
