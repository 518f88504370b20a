#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>

/// The picture under the map.
namespace pelorin::map {

/// A backdrop as it was found: plate carrée with 180° W at its left edge.
struct Backdrop {
  QImage Picture;             ///< Format_RGB32; null when there is none
  bool IsUserBitmap = false;  ///< it came from "UserMap.bmp", so ground images may take it for the ground
  QStringList Tried;          ///< the JPEG files that were read, by their names; the last one it is, if any
  QStringList Messages;       ///< for the user: files that could not be used, or that there is none
};

/// The path of the best of several files, named best first; empty when none of them exists.
using FindFile = std::function<QString(const QStringList& names)>;

/// Loads "UserMap.jpg", one of the two sized maps, the smaller first when there is topography to be held in
/// memory as well, or "UserMap.bmp". A file that is no picture is told, and the next is tried.
Backdrop LoadBackdrop(bool hasTopography, const FindFile& findFile);

/// The picture for a Pacific-centred map: its right half to the left, its left half to the right.
QImage TurnedByHalf(const QImage& picture);

}  // namespace pelorin::map
