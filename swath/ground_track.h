#pragma once

#include "orbit/observer.h"
#include "orbit/propagation.h"
#include "swath/scanner_geometry.h"

/// Where a satellite is, and the ground beside it.
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

}  // namespace pelorin::swath
