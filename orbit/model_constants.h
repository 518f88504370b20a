#pragma once

/// Constants of the model. Gravity: WGS-72 in the form of Hoots and Roehrich, "Spacetrack Report No. 3"
/// (1980).
namespace pelorin::orbit {

inline constexpr double XKMPER = 6378.135;  ///< Earth's equatorial radius, km
inline constexpr double AE = 1.0;           ///< distance unit, Earth radii
inline constexpr double XKE =
    0.07436691613317341;  ///< √(3600 · 398600.8 / XKMPER³), (Earth radii)^1.5 per minute
inline constexpr double CK2 = 0.0005413079;             ///< ½ J2
inline constexpr double k15CK2 = 0.00081196185;         ///< 1.5 CK2
inline constexpr double k3CK2 = 0.0016239237;           ///< 3 CK2
inline constexpr double k075CK2 = 0.000405980925;       ///< 0.75 CK2
inline constexpr double A3OVK2 = 0.004690140306468832;  ///< −J3 / CK2
inline constexpr double k125CK4 = 7.762359375e-7;       ///< 1.25 CK4, CK4 = −⅜ J4
inline constexpr double kTwoThirds = 2.0 / 3.0;

inline constexpr double kSecondsPerMinute = 60;

/// Orbits of this period (minutes) and longer are deep-space.
inline constexpr double kDeepSpacePeriodMinutes = 225;

/// Flattened Earth of the look angles: flattening 1/298.26.
inline constexpr double kOneMinusFlattening = 0.9966472205458325;
inline constexpr double kEccentricitySquared = 0.006694317778266722;
inline constexpr double kEarthRotationRadPerS = 7.292115855228083e-5;

/// The radio link of the status line.
inline constexpr double kDownlinkHz = 1.375e8;
inline constexpr double kSpeedOfLightKmPerS = 300000;
inline constexpr double kTransmitterDbm = 33.5;
inline constexpr double kFreeSpaceLossDb = 92.45;

}  // namespace pelorin::orbit
