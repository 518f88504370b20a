#pragma once

#include <variant>

/// What initialisation works out of an element set, so that each later call is left with the
/// time-dependent part. The names are those of Hoots and Roehrich, "Spacetrack Report No. 3" (1980). Units:
/// Earth radii, minutes, radians.
namespace pelorin::orbit {

/// Terms that the near-Earth and the deep-space model share.
struct OrbitTerms {
  double xno, eo, xincl, xmo, omegao, xnodeo, bstar;  ///< the elements at epoch
  double xnodp, aodp;                                 ///< Brouwer mean motion and semi-major axis
  double cosio, sinio;                                ///< of the inclination at epoch
  double theta2, x3thm1, x1mth2, x7thm1;              ///< cos²i, 3cos²i − 1, 1 − cos²i, 7cos²i − 1
  double eosq, betao, betao2;                         ///< e², √(1 − e²), 1 − e²
  double xmdot, omgdot, xnodot;                       ///< secular rates of anomaly, perigee and node
  double c1, c4, t2cof, xnodcf;                       ///< drag
  double xlcof, aycof;                                ///< long-period coefficients
};

/// Drag quantities that only initialisation needs.
struct DragTerms {
  double s4, tsi, eta, eeta, coef, coef1, etasq;
};

/// Near-Earth model.
struct Sgp4State {
  OrbitTerms terms;
  bool simplified;  ///< perigee below 220 km: drag truncated to its linear part
  double eta, omgcof, xmcof, delmo, sinmo, c5;
  double d2, d3, d4, t3cof, t4cof, t5cof;
};

/// Solar or lunar share of the long-period terms: coefficients of the periodic expansion.
struct ThirdBodyTerms {
  double e2, e3, i2, i3, l2, l3, l4, gh2, gh3, gh4, h2, h3;
  double zmo;  ///< mean anomaly of the body at the satellite's epoch
};

enum class Resonance { None, HalfDay, OneDay };

/// Mean longitude and mean motion of the resonance integrator at one step of its 720-minute grid. Step k is
/// always reached from step k − 1 (or k + 1 before the epoch), so it is the same whoever asked before.
struct IntegratorStep {
  int step;
  double xli, xni;
};

/// Deep-space model.
struct Sdp4State {
  OrbitTerms terms;
  double thgr;                     ///< sidereal angle of the epoch
  double sse, ssi, ssl, ssg, ssh;  ///< lunar and solar secular rates
  ThirdBodyTerms solar, lunar;
  Resonance resonance;
  double xlamo, xfact;
  double d2201, d2211, d3210, d3222, d4410, d4422, d5220, d5232, d5421, d5433;  ///< half-day resonance
  double del1, del2, del3;                                                      ///< one-day resonance
  /// Farthest step computed so far; saves the walk, never changes a result.
  mutable IntegratorStep reached;
};

/// Empty until the first propagation.
using PropagatorState = std::variant<std::monostate, Sgp4State, Sdp4State>;

/// Mean elements at one moment, with drag and third-body effects in, before the long- and short-period terms.
struct MeanOrbit {
  double a, e, omega, xnode, xl;  ///< xl: mean longitude, anomaly + perigee + node
  double sinInclination, cosInclination;
};

}  // namespace pelorin::orbit
