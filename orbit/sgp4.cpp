#include "orbit/sgp4.h"

#include <cmath>

#include "orbit/kepler.h"
#include "orbit/model_constants.h"
#include "orbit/orbit_terms.h"
#include "orbit/scalar_math.h"
#include "orbit/small_turn.h"

namespace pelorin::orbit {
namespace {

/// Two drag terms divide by the eccentricity. They shift perigee and anomaly against each other by the same
/// angle, which on a near circle moves nothing but grows without bound: below this they are left out (as in
/// Vallado and others, 2006).
constexpr double kSmallestEccentricity = 1e-4;

/// Perigee (Earth radii) below which the drag is truncated: 220 km.
constexpr double kSimplifiedPerigee = 1.034492841559484;

}  // namespace

Sgp4State InitialiseSgp4(const TSatellite& satellite) {
  const auto [t, d] = InitialiseOrbitTerms(satellite);
  Sgp4State s{};
  s.terms = t;
  s.simplified = t.aodp * (1 - t.eo) / AE < kSimplifiedPerigee;
  s.eta = d.eta;
  s.c5 = 2 * d.coef1 * t.aodp * t.betao2 * (1 + 2.75 * (d.etasq + d.eeta) + d.eeta * d.etasq);
  if (t.eo > kSmallestEccentricity) {
    const double c3 = d.coef * d.tsi * A3OVK2 * t.xnodp * AE * t.sinio / t.eo;
    s.omgcof = t.bstar * c3 * std::cos(t.omegao);
    s.xmcof = -kTwoThirds * d.coef * t.bstar * AE / d.eeta;
  }
  s.delmo = Cube(1 + d.eta * std::cos(t.xmo));
  s.sinmo = std::sin(t.xmo);
  if (!s.simplified) {
    const double c1sq = t.c1 * t.c1;
    s.d2 = 4 * t.aodp * d.tsi * c1sq;
    const double temp = s.d2 * d.tsi * t.c1 / 3;
    s.d3 = (17 * t.aodp + d.s4) * temp;
    s.d4 = 0.5 * temp * t.aodp * d.tsi * (221 * t.aodp + 31 * d.s4) * t.c1;
    s.t3cof = s.d2 + 2 * c1sq;
    s.t4cof = 0.25 * (3 * s.d3 + t.c1 * (12 * s.d2 + 10 * c1sq));
    s.t5cof = 0.2 * (3 * s.d4 + 12 * t.c1 * s.d3 + 6 * s.d2 * s.d2 + 15 * c1sq * (2 * s.d2 + c1sq));
  }
  return s;
}

void Sgp4(const Sgp4State& s, double tsince, Vector& position, Vector& velocity) {
  const OrbitTerms& t = s.terms;
  const double tsq = tsince * tsince;
  const double xmdf = t.xmo + t.xmdot * tsince;
  const double omgadf = t.omegao + t.omgdot * tsince;
  const double xnode = t.xnodeo + t.xnodot * tsince + t.xnodcf * tsq;
  double xmp = xmdf;
  double omega = omgadf;
  double tempa = 1 - t.c1 * tsince;
  double tempe = t.bstar * t.c4 * tsince;
  double templ = t.t2cof * tsq;
  if (!s.simplified) {
    const SinCos mean = SinCosOf(xmdf);
    const double delm = s.xmcof * (Cube(1 + s.eta * mean.cos) - s.delmo);
    const double shift = s.omgcof * tsince + delm;
    xmp = xmdf + shift;
    omega = omgadf - shift;
    const double tcube = tsq * tsince;
    const double tfour = tsq * tsq;
    tempa -= s.d2 * tsq + s.d3 * tcube + s.d4 * tfour;
    tempe += t.bstar * s.c5 * (TurnedBy(mean, shift).sin - s.sinmo);
    templ += s.t3cof * tcube + tfour * (s.t4cof + tsince * s.t5cof);
  }
  const MeanOrbit orbit{t.aodp * tempa * tempa,
                        t.eo - tempe,
                        omega,
                        xnode,
                        xmp + omega + xnode + t.xnodp * templ,
                        t.sinio,
                        t.cosio};
  StateFromMeanOrbit(t, orbit, position, velocity);
}

}  // namespace pelorin::orbit
