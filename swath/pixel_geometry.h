#pragma once

#include <optional>
#include <vector>

#include "swath/ground_track.h"
#include "swath/line_of_sight.h"
#include "swath/recording.h"
#include "swath/scanner_geometry.h"

namespace pelorin::swath {

/// A place in a picture's file: a whole number is a pixel's centre, −0.5 the picture's left or upper edge.
struct PixelPoint {
  double Column, Row;
};

/// Where a place in the lines of a recording, as they were received, lies in its file; and the other way
/// round, for to turn twice is not to turn.
PixelPoint InFile(const Recording& recording, PixelPoint received);

/// Where the pixels of a recording lie on the ground, and the places of the ground in it. Both directions
/// agree within a hundredth of a pixel.
///
/// Ground points are geodetic, on the ellipsoid 6378.135 km, 1/298.26. How a scanner looks, attitude and
/// nadir included, is told with ScannerAxes.
class PixelGeometry {
 public:
  /// Of the recording as it is now: it must have its size, scanner and elements. With elements that give no
  /// position no pixel has a place.
  explicit PixelGeometry(const Recording& recording);

  int Columns() const { return recording_.Columns; }
  int Rows() const { return recording_.Rows; }

  /// Nothing where the pixel looks past the Earth, in a line that was lost, and beside the scanner's columns
  /// (the frame of old pictures).
  std::optional<GroundPoint> GroundOf(PixelPoint pixel) const;

  /// Also some way beyond the picture's edges, so that lines can be cut there. Nothing for what the satellite
  /// cannot see from there, and for what lies in a gap between lines.
  std::optional<PixelPoint> PixelOf(const GroundPoint& ground) const;

 private:
  /// The satellite at one moment.
  struct Knot {
    orbit::Vector Origin, Down, Left, Forward;
    double HeightKm;
  };
  Knot At(double seconds) const;
  /// How far a point lies before the line that is seen at a moment, km; it falls with time.
  double Ahead(double seconds, const orbit::Vector& point, const orbit::Vector& up) const;
  std::optional<double> SecondsAbeam(double from, double to, const orbit::Vector& point,
                                     const orbit::Vector& up) const;
  /// The scanner's column, with its fraction; nothing when the point is below the horizon.
  std::optional<double> ScannerColumn(double seconds, const orbit::Vector& point,
                                      const orbit::Vector& up) const;
  double JulianDateAt(double seconds) const;
  void MakeClassicTables();
  /// The classic distance of a column, and the column of a distance; both with fractions.
  double ClassicDistance(double heightKm, double column) const;
  double ClassicColumn(double heightKm, double distanceKm) const;

  Recording recording_;
  bool isClassic_;  ///< seen by the table on a sphere
  /// Classic tables for heights from the lowest one on, some kilometres apart.
  std::vector<ScanDistances> classic_;
  double lowestKm_ = 0;
  double firstS_, stepS_;  ///< the knots' seconds after the first line
  std::vector<Knot> knots_;
};

}  // namespace pelorin::swath
