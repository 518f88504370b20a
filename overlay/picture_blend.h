#pragma once

#include <QImage>

/// The map laid over the received picture.
namespace pelorin::overlay {

/// A map as it lies on a picture, line for line.
struct MapLayer {
  QImage Map;  ///< Format_RGB32
  bool SouthBound = true;
  int LinesMade = 0;  ///< rows beyond them have nothing to show
};

/// Column of the map that lies on the picture's first one. A picture too narrow for a line's frame holds the
/// image alone.
int MapColumnAtPictureLeft(int pictureWidth, int mapWidth, bool southBound);

/// The picture with so much of the map over it, 0 … 100 %. Of the picture's size; Format_RGB32, as both must
/// be.
QImage BlendPicture(const QImage& picture, const MapLayer& layer, int opacityPercent);

}  // namespace pelorin::overlay
