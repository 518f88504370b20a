#pragma once

#include "orbit/observer.h"
#include "orbit/vector.h"

namespace pelorin::orbit {

/// How a satellite is seen from the station.
struct LookAngleSet {
  double Azimuth = 0;    ///< radians, [0, 2π), from north through east
  double Elevation = 0;  ///< radians; refracted when visible, true otherwise
  double Range = 0;      ///< km
  double RangeRate = 0;  ///< km/s, positive receding
};

/// Look angles of a satellite's position (km) and velocity (km/s). Visible means that the refracted elevation
/// is not below 0.
void LookAngles(const Vector& satPosition, const Vector& satVelocity, Observer& observer, double julianDate,
                LookAngleSet& look, bool& visible);

/// True elevation to apparent, radians (Saemundsson, 1986).
double RefractedElevation(double trueElevation);

/// Shift of the 137.5 MHz downlink for a range rate in km/s.
double DopplerHz(double rangeRate);

/// Received level over a range in km; 0 when not visible.
double SignalDbm(double range, bool visible);

/// What the elevation of a satellite needs, with the station's part worked out once: pass searches ask for it
/// thousands of times.
class ElevationFrame {
 public:
  explicit ElevationFrame(const Observer& observer);

  /// Elevation in radians as LookAngles reports it, of a position in km.
  double Elevation(const Vector& satPosition, double julianDate) const;

 private:
  double longitude_, sinLat_, cosLat_;
  StationDistances station_;
};

}  // namespace pelorin::orbit
