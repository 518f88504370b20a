#include "orbit/sdp4.h"

#include <cmath>

#include "orbit/deep_space.h"
#include "orbit/kepler.h"
#include "orbit/model_constants.h"
#include "orbit/orbit_terms.h"

namespace pelorin::orbit {

Sdp4State InitialiseSdp4(const TSatellite& satellite) {
  Sdp4State s{};
  s.terms = InitialiseOrbitTerms(satellite).terms;
  InitialiseDeepSpace(satellite, s);
  return s;
}

void Sdp4(const Sdp4State& s, double tsince, Vector& position, Vector& velocity) {
  const OrbitTerms& t = s.terms;
  const double tsq = tsince * tsince;
  DeepElements x{t.xmo + t.xmdot * tsince,
                 t.omegao + t.omgdot * tsince,
                 t.xnodeo + t.xnodot * tsince + t.xnodcf * tsq,
                 t.eo,
                 t.xincl,
                 t.xnodp};
  DeepSpaceSecular(s, tsince, x);
  const double tempa = 1 - t.c1 * tsince;
  const double a = std::pow(XKE / x.xn, kTwoThirds) * tempa * tempa;
  x.em -= t.bstar * t.c4 * tsince;
  x.xmdf += t.xnodp * t.t2cof * tsq;
  DeepSpacePeriodic(s, tsince, x);
  const MeanOrbit mean{
      a, x.em, x.omgadf, x.xnode, x.xmdf + x.omgadf + x.xnode, std::sin(x.xinc), std::cos(x.xinc)};
  StateFromMeanOrbit(t, mean, position, velocity);
}

}  // namespace pelorin::orbit
