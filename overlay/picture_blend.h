#pragma once

#include <QImage>

#include "swath/recording.h"

/// The map laid over the received picture.
namespace pelorin::overlay {

/// A map as it lies on a picture: line on line, however many either has.
struct MapLayer {
  QImage Map;                    ///< Format_RGB32
  swath::Recording Recording;    ///< of the map
  int FirstColumnOfPicture = 0;  ///< where the picture's lines have the scanner's first column
  int LinesMade = 0;             ///< rows beyond them have nothing to show
};

/// Column of the map that lies on the picture's first one; below 0 when the map lies inside the picture.
int MapColumnAtPictureLeft(const MapLayer& layer, int pictureWidth);

/// Row of the map that lies on the picture's first one, so that both begin with the same line: on top, or at
/// the bottom when both are turned. Below 0 when the map begins further down.
int MapRowAtPictureTop(const MapLayer& layer, int pictureHeight);

/// The picture's rows from `first` up to `end` with so much of the map over them, 0 … 100 %. Format_RGB32, as
/// both must be; without a map the rows as they are.
QImage BlendRows(const QImage& picture, const MapLayer& layer, int opacityPercent, int first, int end);

/// All rows.
QImage BlendPicture(const QImage& picture, const MapLayer& layer, int opacityPercent);

}  // namespace pelorin::overlay
