#pragma once

#include <QRect>
#include <QSize>

/// Sizes of map and picture on the page, in pixels.
namespace pelorin::overlay {

/// Between map and picture.
inline constexpr int kPaneGap = 8;

/// The boxes of map (left) and picture on an area: equal widths, a gap between them.
struct PaneBoxes {
  QRect Map, Picture;
};
PaneBoxes BoxesSideBySide(QSize area);

/// Width of the map for a picture: that of its lines, but neither less than a line nor, since what follows a
/// line's frame is filler, much more.
int MapWidthFor(int pictureWidth);

/// Height of a bitmap, not empty, shown at a width with its own proportions.
int FittedMapHeight(QSize map, int width);

/// Height of a picture beside a map that is shown `mapWidth` wide. The picture takes the map's scale, not its
/// own, so that a line of the one is level with the same line of the other.
int FittedPictureHeight(QSize picture, QSize map, int mapWidth);

}  // namespace pelorin::overlay
