#include "orbit/scalar_math.h"

#include <cmath>

namespace pelorin::orbit {

double Power(double base, double exponent) {
  if (!(base > 0)) throw MathError("Invalid argument in Function Power!");
  return std::exp(exponent * std::log(base));
}

double Tan(double x) { return std::sin(x) / std::cos(x); }

double ArcSin(double x) {
  if (x >= 1) return kPi / 2;
  if (x <= -1) return -kPi / 2;
  return std::atan(x / std::sqrt(1 - x * x));
}

double AcTan(double sinPart, double cosPart) {
  if (cosPart == 0) return sinPart > 0 ? kPi / 2 : 3 * kPi / 2;
  const double angle = std::atan(sinPart / cosPart);
  return cosPart > 0 ? angle : angle + kPi;
}

double Modulus(double x, double m) {
  double rest = x - std::trunc(x / m) * m;
  if (rest < 0) rest += m;
  // A tiny negative rest plus m rounds to m itself, which lies outside the range.
  return rest >= m ? 0 : rest;
}

double FMod2p(double x) { return Modulus(x, kTwoPi); }

double SignedAngle(double x) { return std::remainder(x, kTwoPi); }

}  // namespace pelorin::orbit
