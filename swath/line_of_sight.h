#pragma once

#include <optional>

#include "orbit/propagation.h"
#include "orbit/vector.h"
#include "swath/ground_track.h"
#include "swath/scanner.h"

/// Rays from a scanner to the ellipsoid, 6378.135 km, 1/298.26.
namespace pelorin::swath {

/// How an instrument sits in space at one moment: its axes in a frame that turns with the Earth (x through
/// Greenwich), km.
///
/// Straight down is the ellipsoid's normal through the satellite (geodetic nadir), not the direction to the
/// Earth's centre: the two are up to 0.2 degrees apart. Left is along position × velocity, made level;
/// forward is left × up. Satellites that steer in yaw have the velocity over the turning ground, the others
/// that in space. The axes are turned by the attitude, yaw first, then pitch; roll is a part of the angle.
struct ScannerAxes {
  orbit::Vector Origin;
  orbit::Vector Down, Left, Forward;  ///< unit vectors
};

ScannerAxes AxesAt(const orbit::SatelliteState& inertial, double julianDate, bool steersInYaw,
                   const Attitude& attitude);

/// The ground point that a ray meets, `angle` radians from down towards the left, roll included; nothing when
/// the ray passes the Earth.
std::optional<GroundPoint> PointSeen(const ScannerAxes& axes, double angle);

}  // namespace pelorin::swath
