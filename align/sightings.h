#pragma once

#include <optional>
#include <vector>

#include "lines/pixel_lines.h"
#include "swath/pixel_geometry.h"
#include "swath/recording.h"

namespace pelorin::align {

/// When and where a scanner sees a place on the ground, whatever its recorder made of it.
struct Sighting {
  double Seconds;  ///< after Start, true ones
  double Angle;    ///< from down to the left, roll included, radians; by the table on a sphere the scanner's
                   ///< column
  double SecondsPerYawDeg, AnglePerYawDeg;  ///< what a little more yaw makes of both
};

/// The ground of a pass as its scanner sees it, and where that lies in the pictures that differ from a
/// recording in what may be corrected: time, drift, shift and roll, which count exactly, and yaw, which
/// counts in proportion, good to a tenth of a pixel for a degree. It is cheap enough to move a whole map of
/// lines with the mouse.
///
/// Gaps between lines, and lines that were lost, belong to the recorder: every place of the pass has a
/// sighting.
class Sightings {
 public:
  /// Of a recording that has its size, scanner and elements.
  explicit Sightings(const swath::Recording& base);
  Sightings(const Sightings&) = delete;
  Sightings& operator=(const Sightings&) = delete;

  /// Reaches some 20 seconds and columns beyond the picture; nothing for what is not seen.
  std::optional<Sighting> Of(const swath::GroundPoint& ground) const;

  /// In pictures of the recording's pass; nothing where lines are missing.
  std::optional<swath::PixelPoint> PixelIn(const Sighting& sighting, const swath::Recording& corrected) const;
  /// The scanner's column alone, as lines are received.
  double ColumnIn(const Sighting& sighting, const swath::Recording& corrected) const;
  /// The true seconds after Start alone, at the recording's yaw.
  double SecondsIn(const Sighting& sighting, const swath::Recording& corrected) const;

  /// The pass with all its lines, as received and without a frame, for lines to be drawn in; see At. Borrowed
  /// from this object.
  lines::PictureView WholePass() const;
  /// Of a place in WholePass.
  Sighting At(swath::PixelPoint place) const;

  /// By how many lines a degree of yaw moves the farther edge of the picture.
  double LinesPerYawDeg() const { return linesPerYawDeg_; }

 private:
  /// Yaw's doing, in lines and columns of a degree.
  swath::PixelPoint YawAt(swath::PixelPoint place) const;
  void FindYaw(const swath::PixelGeometry& more, const swath::PixelGeometry& less);

  swath::Recording base_, pass_;
  bool isSphere_;
  swath::PixelGeometry geometry_;  ///< of the whole pass
  int yawRows_ = 0;
  std::vector<swath::PixelPoint> yaw_;  ///< on a mesh, row by row
  double linesPerYawDeg_ = 0;
};

}  // namespace pelorin::align
