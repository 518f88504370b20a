#pragma once

#include <span>
#include <vector>

#include "align/sightings.h"
#include "swath/pixel_geometry.h"
#include "swath/recording.h"

/// The correction of a recording by points that somebody has found in its picture.
namespace pelorin::align {

/// A place on the ground, and the pixel of the file in which the picture shows it.
struct TiePoint {
  swath::GroundPoint Ground;
  swath::PixelPoint Pixel;
  double Weight = 1;  ///< more than 0: a point that counts twice is as good as two
};

/// What is fitted beside time and shift, when the points can tell it.
enum class Third { Yaw, Drift };

/// Why the third is not fitted.
enum class Untold {
  Nothing,   ///< it is
  TooFew,    ///< by one point
  TooClose,  ///< points at much the same distance from the track tell no yaw, points in much the same lines
             ///< no drift
  DoesNotTurn,  ///< the table on a sphere knows no yaw
};

struct PointFit {
  swath::Recording Fitted;
  /// Of each point: how many pixels Fitted has its ground beside its pixel. NaN for one that is of no use:
  /// its ground is not seen, or its line was lost.
  std::vector<double> MisfitPixels;
  std::vector<bool> IsLeftOut;  ///< those of no use, and those that contradict the others
  Untold WhyNoThird = Untold::TooFew;
};

/// No correction by points takes more of these than so much, each to either side of the recording's own; time
/// and attitude besides have the limits that they have everywhere (kOffsetLimitS, kMostTurnedDeg).
inline constexpr double kMostYawDeg = 3, kMostDriftPpm = 5000, kMostShiftColumns = 100;

/// A recording moved by least squares until it shows the points where they were found.
///
/// Time and shift across follow from one point. The shift is a roll, and where attitude does not turn the
/// picture it is ShiftColumns: points cannot tell the two apart, nor a pitch from time. The third needs two
/// points; it stays the recording's own unless an error of a pixel in each of the points would leave it known
/// to four lines, at the picture's farther edge (yaw) or its ends (drift): two points must be apart by more
/// than a third of half the width or length.
///
/// A point contradicts the others when it is off by more than three pixels, and by more than four times their
/// own scatter, in the fit that they make without it. Such points are left out one by one, the one first
/// whose absence helps most, as long as the others are enough to outvote it: two for time and shift, three
/// with the third.
PointFit FitPoints(const swath::Recording& recording, std::span<const TiePoint> points, Third third);

/// The same in some microseconds, for points that are on the move: with the sightings of a recording near the
/// one looked for, and those points left out that are given.
PointFit FollowPoints(const swath::Recording& recording, const Sightings& near,
                      std::span<const TiePoint> points, Third third, const std::vector<bool>& leftOut);

}  // namespace pelorin::align
