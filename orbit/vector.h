#pragma once

#include <cmath>

namespace pelorin::orbit {

/// A Cartesian vector; `w` is the magnitude once Magnitude() has been applied. The unit and frame are the
/// owner's affair: kilometres and kilometres per second outside the propagator.
struct Vector {
  double x = 0, y = 0, z = 0, w = 0;
};

inline double Dot(const Vector& a, const Vector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// Cross product; `w` is not set.
inline Vector Cross(const Vector& a, const Vector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x, 0};
}

/// Sets v.w to the vector's length.
inline void Magnitude(Vector& v) { v.w = std::sqrt(Dot(v, v)); }

/// The point at `distance` from `origin` in the direction given (any length but 0); `w` is not set.
inline Vector PointAlong(const Vector& origin, const Vector& direction, double distance) {
  const double scale = distance / std::sqrt(Dot(direction, direction));
  return {origin.x + scale * direction.x, origin.y + scale * direction.y, origin.z + scale * direction.z, 0};
}

}  // namespace pelorin::orbit
