#pragma once

#include <array>
#include <cstdint>

#include "orbit/observer.h"
#include "orbit/propagation.h"
#include "swath/scanner_geometry.h"

/// The ground below one scan line.
namespace pelorin::swath {

/// A satellite at one moment as a scan line needs it: in axes that turn with the Earth (x through Greenwich),
/// km.
struct GroundTrack {
  orbit::Vector Position;
  orbit::Vector Across;   ///< unit vector along position × velocity (inertial): to the left of the flight
  orbit::Geodetic Below;  ///< sub-satellite point
  orbit::SatelliteState Inertial;
};

GroundTrack TrackAt(const orbit::TSatellite& satellite, double julianDate);

/// A ground point in degrees: geodetic latitude, longitude −180 … 180.
struct GroundPoint {
  double LatitudeDeg, LongitudeDeg;
};

/// Ground point below the point `scanKm` from the satellite along the orbit normal (ScanDistancesOf gives
/// it). Flattened Earth, the latitude is the geodetic one; Bowring's (1976) closed form, exact to a
/// millimetre at satellite heights.
GroundPoint PointAcross(const GroundTrack& track, double scanKm);

inline constexpr int kMinutesOfTurn = 21600;

/// Minutes east of 180° W, where world images begin, of minutes east of Greenwich; both 0 … 21599.
constexpr int MinutesFromDateLine(int eastMin) {
  constexpr int half = kMinutesOfTurn / 2;
  return eastMin >= half ? eastMin - half : eastMin + half;
}

/// A whole line in minutes of arc, by ScanIndex: minutes south of the north pole, 0 … 10800,
/// and minutes east of Greenwich, 0 … 21599, both to the nearest.
struct GroundLine {
  std::array<std::int32_t, kScanPositions> SouthMin, EastMin;
};

/// PointAcross for every position of a line at once, fit for millions of points a second.
void FillGroundLine(const GroundTrack& track, const ScanDistances& distances, GroundLine& line);

}  // namespace pelorin::swath
