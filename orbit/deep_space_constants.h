#pragma once

/// Constants of the deep-space model: Hoots and Roehrich, "Spacetrack Report No. 3" (1980). Radians, minutes.
namespace pelorin::orbit {

inline constexpr double ZNS = 1.19459e-5;     ///< Sun's mean motion
inline constexpr double kTwoZES = 0.0335;     ///< twice its eccentricity
inline constexpr double ZNL = 0.00015835218;  ///< Moon's mean motion
inline constexpr double kTwoZEL = 0.1098;     ///< twice its eccentricity
inline constexpr double THDT = 0.0043752691;  ///< Earth's rotation
inline constexpr double kIntegratorStep = 720;

/// Epoch inclinations below this take the lunar and solar terms through Lyddane's variables.
inline constexpr double kLyddaneInclination = 0.2;

}  // namespace pelorin::orbit
