#pragma once

#include <cmath>

#include "orbit/model_constants.h"

// Helpers of the loop over a line's points must be part of it, or the compiler works on one point at a time.
#if defined(__GNUC__)
#define PELORIN_INTO_LOOP [[gnu::always_inline]] inline
#else
#define PELORIN_INTO_LOOP inline
#endif

namespace pelorin::swath {

/// Sine-like and cosine-like parts of a geodetic latitude.
struct LatitudeParts {
  double Up, Out;
};

/// Of a point `r` from the axis and `z` above the equator, km; Bowring's (1976) closed form, exact to a
/// millimetre at satellite heights.
PELORIN_INTO_LOOP LatitudeParts GeodeticLatitude(double r, double z) {
  constexpr double polarRadius = orbit::XKMPER * orbit::kOneMinusFlattening;
  // Bowring's terms: e'²·b and e²·a.
  constexpr double polarTerm = orbit::kEccentricitySquared / (1 - orbit::kEccentricitySquared) * polarRadius;
  constexpr double equatorTerm = orbit::kEccentricitySquared * orbit::XKMPER;
  const double s = z * orbit::XKMPER, c = r * polarRadius;
  const double scale = 1 / std::sqrt(s * s + c * c);
  const double sinBeta = s * scale, cosBeta = c * scale;
  return {z + polarTerm * sinBeta * sinBeta * sinBeta, r - equatorTerm * cosBeta * cosBeta * cosBeta};
}

}  // namespace pelorin::swath
