#pragma once

#include <stdexcept>

/// Scalar helpers of the orbital model. Angles are radians.
namespace pelorin::orbit {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;

/// A computation that has no answer; what() is the text that the user sees.
class MathError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A text that is not the number, date or time it should be; what() is the text that the user sees.
class ConvertError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

constexpr double Cube(double x) { return x * x * x; }

/// base^exponent as exp(exponent · ln base). A base of 0 or below, and a base that is not a number,
/// raises MathError "Invalid argument in Function Power!".
double Power(double base, double exponent);

constexpr double Radians(double degrees) { return degrees * kPi / 180; }
constexpr double Degrees(double radians) { return radians * 180 / kPi; }

double Tan(double x);

/// Arc sine in [−π/2, π/2]; arguments beyond ±1 give ±π/2.
double ArcSin(double x);

/// Angle whose sine and cosine are in the ratio given, in (−π/2, 3π/2]. A zero cosine part gives π/2 for
/// a positive sine part and 3π/2 otherwise.
double AcTan(double sinPart, double cosPart);

/// x reduced to [0, m).
double Modulus(double x, double m);

/// An angle reduced to [0, 2π).
double FMod2p(double x);

/// An angle reduced to [−π, π]: a longitude as people write it.
double SignedAngle(double x);

/// Of the described interface; the program itself calls std::min and std::max.
constexpr int MinInt(int a, int b) { return a < b ? a : b; }
constexpr int MaxInt(int a, int b) { return a > b ? a : b; }

}  // namespace pelorin::orbit
