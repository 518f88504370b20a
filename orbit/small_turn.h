#pragma once

#include <cmath>

namespace pelorin::orbit {

struct SinCos {
  double sin, cos;
};

inline SinCos SinCosOf(double angle) { return {std::sin(angle), std::cos(angle)}; }

/// Sine and cosine of a known angle turned by another, which is nearly always small: corrections within an
/// orbit are thousandths of a radian, where a few terms give every bit of a double for a third of the cost of
/// the library's pair.
inline SinCos TurnedBy(SinCos angle, double turn) {
  SinCos by;
  if (std::fabs(turn) < 0.02) {
    const double q = turn * turn;
    by = {turn * (1 - q / 6 * (1 - q / 20 * (1 - q / 42))),
          1 - q / 2 * (1 - q / 12 * (1 - q / 30 * (1 - q / 56)))};
  } else {
    by = SinCosOf(turn);
  }
  return {angle.sin * by.cos + angle.cos * by.sin, angle.cos * by.cos - angle.sin * by.sin};
}

}  // namespace pelorin::orbit
