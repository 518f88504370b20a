#pragma once

/// Greenwich mean sidereal time (Aoki and others, 1982) and the difference between ephemeris and universal
/// time.
namespace pelorin::orbit {

/// Sidereal angle of an element epoch, and the epoch's days since 1950 January 0.5, which the
/// deep-space model counts its lunar and solar angles from.
struct EpochSidereal {
  double AngleRad;
  double DaysSince1950;
};

/// For an epoch "yyddd.dddddddd". The angle is in [0, 2π).
EpochSidereal ThetaG(double epoch);

/// Greenwich mean sidereal angle in [0, 2π).
double ThetaGOfJulianDate(double jd);

/// ET − UT in seconds for a decimal year (a fit to 1950 … 1991 that is carried on).
double DeltaET(double year);

}  // namespace pelorin::orbit
