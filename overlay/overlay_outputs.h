#pragma once

#include <QString>
#include <QStringList>

#include "overlay/overlay_generator.h"

namespace pelorin::overlay {

/// Writes a map's files into a folder, each replacing an earlier one only when it is complete: "Result.jpg"
/// (quality 33), "ovl.bmp" if the index image has more than one line, and, if `passDetails`, "pass.dat" and
/// "ovl.txt". Returns the paths written. Raises FileError.
QStringList WriteOverlayOutputs(const OverlayResult& result, bool passDetails, const QString& folder);

}  // namespace pelorin::overlay
