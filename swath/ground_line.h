#pragma once

#include <cstdint>
#include <vector>

#include "swath/ground_track.h"
#include "swath/recording.h"
#include "swath/scanner_geometry.h"

/// The ground below whole lines, in minutes of arc, as maps are coloured.
namespace pelorin::swath {

inline constexpr int kMinutesOfTurn = 21600;

/// Minutes east of 180° W, where world images begin, of minutes east of Greenwich; both 0 … 21599.
constexpr int MinutesFromDateLine(int eastMin) {
  constexpr int half = kMinutesOfTurn / 2;
  return eastMin >= half ? eastMin - half : eastMin + half;
}

/// A line in the order of reception: minutes south of the north pole, 0 … 10800, and minutes east of
/// Greenwich, 0 … 21599, both to the nearest; one of each for every column of the scanner.
struct GroundLine {
  std::vector<std::int32_t> SouthMin, EastMin;
};

/// Finds the ground below a recording's lines, fit for millions of points a second. What looks past the Earth
/// gets its edge.
class GroundLineFinder {
 public:
  /// The recording's scanner and elements must be known.
  explicit GroundLineFinder(const Recording& recording);

  /// For a moment (Julian date). Answers where the satellite is; `line` means nothing when that is not above
  /// the Earth.
  GroundTrack Find(double julianDate, GroundLine& line);

 private:
  void FollowHeight(double heightKm);

  Recording recording_;
  std::vector<double> cos_, sin_;     ///< of each column's angle with the roll
  std::vector<double> south_, east_;  ///< minutes, before rounding
  ScanDistances distances_{};         ///< for the table on a sphere
  double distancesFor_;               ///< the height, km
};

}  // namespace pelorin::swath
