#pragma once

#include <vector>

#include "align/plane.h"
#include "swath/recording.h"

namespace pelorin::align {

/// Samples of a recording at even distances, whatever its scanner: half a second along the flight, 3.3 km
/// across it, on the ground. In them a wrong start is a shift along the rows, and pictures of all scanners
/// look alike.
///
/// Rows count from the first line on, columns in the order of reception; a whole number is a sample's middle.
class SampleMesh {
 public:
  static constexpr double kRowS = 0.5;
  static constexpr double kColumnKm = 3.3;
  /// Of a coarse cell, either way.
  static constexpr int kPerCell = 4;

  /// The recording needs its scanner, and elements that give a position; without one there are no columns.
  explicit SampleMesh(const swath::Recording& recording);

  /// A multiple of kPerCell.
  int Columns() const { return static_cast<int>(edges_.size()) - 1; }
  /// Of the picture; recordings that are longer than a satellite is in sight count to half an hour.
  int Rows() const { return rows_; }

  /// The scanner's column at a place across the mesh, and the other way round; beyond the ends it goes on.
  double ScannerColumn(double x) const;
  double X(double scannerColumn) const;

  /// The same pass as a recording without gaps or a frame, in the order of reception: a line for each row,
  /// from `firstRow` on (which may be before the first line).
  swath::Recording Evenly(int firstRow, int rows) const;

  /// A picture in samples, each the mean of the values in it.
  struct Samples {
    Plane Grey;
    GreyPlane Seen;  ///< 1 where there was something
  };
  Samples Resampled(const GreyPlane& received) const;

 private:
  swath::Recording recording_;
  std::vector<double> edges_;  ///< between the samples, in the scanner's columns
  int rows_ = 0;
};

}  // namespace pelorin::align
