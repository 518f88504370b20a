#pragma once

#include "orbit/vector.h"

/// Ground points: the station, and the point below a satellite. Ellipsoid: 6378.135 km, 1/298.26.
namespace pelorin::orbit {

/// The station.
struct Observer {
  double Latitude = 0;   ///< radians, geodetic, north positive
  double Longitude = 0;  ///< radians, east positive, [0, 2π)
  double Height = 0;     ///< km above the ellipsoid
  double Theta = 0;      ///< radians: local sidereal angle of the last ObserverPosVel
};

/// The point below a satellite.
struct Geodetic {
  double Latitude = 0;   ///< radians, geodetic
  double Longitude = 0;  ///< radians, [0, 2π)
  double Altitude = 0;   ///< km above the ellipsoid
  double Theta = 0;      ///< radians: right ascension
};

/// Where a station stands in the Earth: its distances from the axis and from the equator's plane, km.
struct StationDistances {
  double FromAxis, AboveEquator;
};
StationDistances DistancesOfStation(const Observer& observer);

/// A station from degrees and metres; the longitude may be given as −180 … 180 or 0 … 360.
Observer ObserverFromDegrees(double latitudeDeg, double longitudeDeg, double heightM);

/// The station's inertial position (km) and velocity (km/s), magnitudes set; writes observer.Theta.
void ObserverPosVel(Observer& observer, double julianDate, Vector& position, Vector& velocity);

/// Geodetic sub-satellite point and height of a position in km. A position that is not finite gives NaN.
void SatLatLonAlt(const Vector& positionKm, double julianDate, Geodetic& geodetic);

/// Spherical latitude, (−π/2, π/2], and longitude, [0, 2π), of a position.
void SatGeocentricLatLon(const Vector& position, double julianDate, double& latitude, double& longitude);

}  // namespace pelorin::orbit
