#include <cmath>

#include "orbit/deep_space.h"
#include "orbit/deep_space_constants.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

constexpr double G22 = 5.7686396;  ///< phases of the half-day resonance
constexpr double G32 = 0.95240898;
constexpr double G44 = 1.8014998;
constexpr double G52 = 1.0508330;
constexpr double G54 = 4.4108898;
constexpr double FASX2 = 0.13130908;  ///< phases of the one-day resonance
constexpr double FASX4 = 2.8843198;
constexpr double FASX6 = 0.37448087;

/// Steps of the integrator beyond which no element set means anything: some 270 years. Bounds the walk for
/// absurd times.
constexpr double kFarthestStep = 200000;

struct ResonanceRates {
  double xldot, xndot, xnddt;
};

ResonanceRates RatesAt(const Sdp4State& s, const IntegratorStep& at) {
  const double xldot = at.xni + s.xfact;
  const double xli = at.xli;
  if (s.resonance == Resonance::OneDay) {
    const double p1 = xli - FASX2, p2 = 2 * (xli - FASX4), p3 = 3 * (xli - FASX6);
    const double xnddt = s.del1 * std::cos(p1) + 2 * s.del2 * std::cos(p2) + 3 * s.del3 * std::cos(p3);
    return {xldot, s.del1 * std::sin(p1) + s.del2 * std::sin(p2) + s.del3 * std::sin(p3), xnddt * xldot};
  }
  const double xomi = s.terms.omegao + s.terms.omgdot * at.step * kIntegratorStep;
  const double x2omi = 2 * xomi, x2li = 2 * xli;
  // Each term: amplitude, argument, and how often the mean longitude enters the argument.
  const struct {
    double amplitude, argument, factor;
  } waves[] = {{s.d2201, x2omi + xli - G22, 1},  {s.d2211, xli - G22, 1},
               {s.d3210, xomi + xli - G32, 1},   {s.d3222, -xomi + xli - G32, 1},
               {s.d4410, x2omi + x2li - G44, 2}, {s.d4422, x2li - G44, 2},
               {s.d5220, xomi + xli - G52, 1},   {s.d5232, -xomi + xli - G52, 1},
               {s.d5421, xomi + x2li - G54, 2},  {s.d5433, -xomi + x2li - G54, 2}};
  double xndot = 0, xnddt = 0;
  for (const auto& wave : waves) {
    xndot += wave.amplitude * std::sin(wave.argument);
    xnddt += wave.factor * wave.amplitude * std::cos(wave.argument);
  }
  return {xldot, xndot, xnddt * xldot};
}

/// The grid step at or next before `t` as seen from the epoch.
const IntegratorStep& WalkTo(const Sdp4State& s, double t) {
  const double wanted = std::trunc(t / kIntegratorStep);
  const int target = static_cast<int>(std::fmax(-kFarthestStep, std::fmin(kFarthestStep, wanted)));
  const int direction = target < 0 ? -1 : 1;
  const bool onTheWay = direction > 0 ? s.reached.step >= 0 && s.reached.step <= target
                                      : s.reached.step <= 0 && s.reached.step >= target;
  if (!onTheWay) s.reached = {0, s.xlamo, s.terms.xnodp};
  const double delt = direction * kIntegratorStep;
  const double half = delt * delt / 2;
  while (s.reached.step != target) {
    const ResonanceRates rates = RatesAt(s, s.reached);
    s.reached.xli += rates.xldot * delt + rates.xndot * half;
    s.reached.xni += rates.xndot * delt + rates.xnddt * half;
    s.reached.step += direction;
  }
  return s.reached;
}

/// Adds one body's periodic terms at `t` minutes to the sums.
struct PeriodicSums {
  double pe = 0, pinc = 0, pl = 0, pgh = 0, ph = 0;

  void Add(const ThirdBodyTerms& b, double meanMotion, double twiceEccentricity, double t) {
    const double zm = b.zmo + meanMotion * t;
    const double zf = zm + twiceEccentricity * std::sin(zm);
    const double sinzf = std::sin(zf);
    const double f2 = 0.5 * sinzf * sinzf - 0.25;
    const double f3 = -0.5 * sinzf * std::cos(zf);
    pe += b.e2 * f2 + b.e3 * f3;
    pinc += b.i2 * f2 + b.i3 * f3;
    pl += b.l2 * f2 + b.l3 * f3 + b.l4 * sinzf;
    pgh += b.gh2 * f2 + b.gh3 * f3 + b.gh4 * sinzf;
    ph += b.h2 * f2 + b.h3 * f3;
  }
};

}  // namespace

void DeepSpaceSecular(const Sdp4State& s, double t, DeepElements& x) {
  x.xmdf += s.ssl * t;
  x.omgadf += s.ssg * t;
  x.xnode += s.ssh * t;
  x.em = s.terms.eo + s.sse * t;
  x.xinc = s.terms.xincl + s.ssi * t;
  x.xn = s.terms.xnodp;
  if (x.xinc < 0) {
    x.xinc = -x.xinc;
    x.xnode += kPi;
    x.omgadf -= kPi;
  }
  if (s.resonance == Resonance::None || !std::isfinite(t)) return;
  const IntegratorStep& at = WalkTo(s, t);
  const ResonanceRates rates = RatesAt(s, at);
  const double ft = t - at.step * kIntegratorStep;
  x.xn = at.xni + rates.xndot * ft + rates.xnddt * ft * ft * 0.5;
  const double xl = at.xli + rates.xldot * ft + rates.xndot * ft * ft * 0.5;
  const double temp = -x.xnode + s.thgr + t * THDT;
  x.xmdf = s.resonance == Resonance::OneDay ? xl - x.omgadf + temp : xl + 2 * temp;
}

void DeepSpacePeriodic(const Sdp4State& s, double t, DeepElements& x) {
  PeriodicSums p;
  p.Add(s.solar, ZNS, kTwoZES, t);
  p.Add(s.lunar, ZNL, kTwoZEL, t);
  const double sinis = std::sin(x.xinc), cosis = std::cos(x.xinc);
  x.xinc += p.pinc;
  x.em += p.pe;
  if (s.terms.xincl >= kLyddaneInclination) {
    const double ph = p.ph / s.terms.sinio;
    x.omgadf += p.pgh - s.terms.cosio * ph;
    x.xnode += ph;
    x.xmdf += p.pl;
    return;
  }
  // Near the equator node and perigee lose their meaning one by one; Lyddane's (1963) variables keep their
  // sum.
  const double sinok = std::sin(x.xnode), cosok = std::cos(x.xnode);
  const double alfdp = sinis * sinok + p.ph * cosok + p.pinc * cosis * sinok;
  const double betdp = sinis * cosok - p.ph * sinok + p.pinc * cosis * cosok;
  const double xls = x.xmdf + x.omgadf + cosis * x.xnode + p.pl + p.pgh - p.pinc * x.xnode * sinis;
  // The node enters below multiplied by cos i, so a jump by a whole turn would move the satellite: the new
  // node is taken within half a turn of the old one.
  const double node = std::atan2(alfdp, betdp);
  x.xnode += std::remainder(node - x.xnode, kTwoPi);
  x.xmdf += p.pl;
  x.omgadf = xls - x.xmdf - std::cos(x.xinc) * x.xnode;
}

}  // namespace pelorin::orbit
