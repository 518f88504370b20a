#include <cmath>

#include "orbit/deep_space.h"
#include "orbit/deep_space_constants.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"

namespace pelorin::orbit {
namespace {

constexpr double ZCOSIS = 0.91744867;  ///< inclination of the ecliptic
constexpr double ZSINIS = 0.39785416;
constexpr double ZCOSGS = 0.1945905;  ///< Sun's perigee
constexpr double ZSINGS = -0.98088458;
constexpr double C1SS = 2.9864797e-6;  ///< Sun's and Moon's perturbation coefficients
constexpr double C1L = 4.7968065e-7;

constexpr double Q22 = 1.7891679e-6;  ///< tesseral harmonics of the one-day resonance
constexpr double Q31 = 2.1460748e-6;
constexpr double Q33 = 2.2123015e-7;
constexpr double ROOT22 = 1.7891679e-6;  ///< and of the half-day resonance
constexpr double ROOT32 = 3.7393792e-7;
constexpr double ROOT44 = 7.3636953e-9;
constexpr double ROOT52 = 1.1428639e-7;
constexpr double ROOT54 = 2.1765803e-9;

/// Inclinations below this have no lunar or solar effect on the node (3 degrees).
constexpr double kSmallestNodeInclination = 0.052359877;

/// A body that pulls: where it stands against the satellite's node, and how strongly.
struct ThirdBody {
  double zcosg, zsing, zcosi, zsini, zcosh, zsinh;  ///< perigee, inclination, node
  double zn, cc, ze, zmo;                           ///< mean motion, coefficient, eccentricity, mean anomaly
};

struct SecularRates {
  double se, si, sl, sgh, sh;
};

/// Secular rates and periodic coefficients that one body causes.
SecularRates ExpandThirdBody(const OrbitTerms& t, const ThirdBody& b, ThirdBodyTerms& periodic) {
  const double sinomo = std::sin(t.omegao), cosomo = std::cos(t.omegao);
  const double a1 = b.zcosg * b.zcosh + b.zsing * b.zcosi * b.zsinh;
  const double a3 = -b.zsing * b.zcosh + b.zcosg * b.zcosi * b.zsinh;
  const double a7 = -b.zcosg * b.zsinh + b.zsing * b.zcosi * b.zcosh;
  const double a8 = b.zsing * b.zsini;
  const double a9 = b.zsing * b.zsinh + b.zcosg * b.zcosi * b.zcosh;
  const double a10 = b.zcosg * b.zsini;
  const double a2 = t.cosio * a7 + t.sinio * a8;
  const double a4 = t.cosio * a9 + t.sinio * a10;
  const double a5 = -t.sinio * a7 + t.cosio * a8;
  const double a6 = -t.sinio * a9 + t.cosio * a10;
  const double x1 = a1 * cosomo + a2 * sinomo;
  const double x2 = a3 * cosomo + a4 * sinomo;
  const double x3 = -a1 * sinomo + a2 * cosomo;
  const double x4 = -a3 * sinomo + a4 * cosomo;
  const double x5 = a5 * sinomo;
  const double x6 = a6 * sinomo;
  const double x7 = a5 * cosomo;
  const double x8 = a6 * cosomo;
  const double z31 = 12 * x1 * x1 - 3 * x3 * x3;
  const double z32 = 24 * x1 * x2 - 6 * x3 * x4;
  const double z33 = 12 * x2 * x2 - 3 * x4 * x4;
  const double z11 = -6 * a1 * a5 + t.eosq * (-24 * x1 * x7 - 6 * x3 * x5);
  const double z12 =
      -6 * (a1 * a6 + a3 * a5) + t.eosq * (-24 * (x2 * x7 + x1 * x8) - 6 * (x3 * x6 + x4 * x5));
  const double z13 = -6 * a3 * a6 + t.eosq * (-24 * x2 * x8 - 6 * x4 * x6);
  const double z21 = 6 * a2 * a5 + t.eosq * (24 * x1 * x5 - 6 * x3 * x7);
  const double z22 = 6 * (a4 * a5 + a2 * a6) + t.eosq * (24 * (x2 * x5 + x1 * x6) - 6 * (x4 * x7 + x3 * x8));
  const double z23 = 6 * a4 * a6 + t.eosq * (24 * x2 * x6 - 6 * x4 * x8);
  const double z1 = 2 * (3 * (a1 * a1 + a2 * a2) + z31 * t.eosq) + t.betao2 * z31;
  const double z2 = 2 * (6 * (a1 * a3 + a2 * a4) + z32 * t.eosq) + t.betao2 * z32;
  const double z3 = 2 * (3 * (a3 * a3 + a4 * a4) + z33 * t.eosq) + t.betao2 * z33;
  const double s3 = b.cc / t.xnodp;
  const double s2 = -0.5 * s3 / t.betao;
  const double s4 = s3 * t.betao;
  const double s1 = -15 * t.eo * s4;
  const double s5 = x1 * x3 + x2 * x4;
  const double s6 = x2 * x3 + x1 * x4;
  const double s7 = x2 * x4 - x1 * x3;
  periodic.e2 = 2 * s1 * s6;
  periodic.e3 = 2 * s1 * s7;
  periodic.i2 = 2 * s2 * z12;
  periodic.i3 = 2 * s2 * (z13 - z11);
  periodic.l2 = -2 * s3 * z2;
  periodic.l3 = -2 * s3 * (z3 - z1);
  periodic.l4 = -2 * s3 * (-21 - 9 * t.eosq) * b.ze;
  periodic.gh2 = 2 * s4 * z32;
  periodic.gh3 = 2 * s4 * (z33 - z31);
  periodic.gh4 = -18 * s4 * b.ze;
  periodic.h2 = -2 * s2 * z22;
  periodic.h3 = -2 * s2 * (z23 - z21);
  periodic.zmo = b.zmo;
  return {s1 * b.zn * s5, s2 * b.zn * (z11 + z13), -b.zn * s3 * (z1 + z3 - 14 - 6 * t.eosq),
          s4 * b.zn * (z31 + z33 - 6), t.xincl < kSmallestNodeInclination ? 0 : -b.zn * s2 * (z21 + z23)};
}

/// The Moon as it stands on a day counted from 1900 January 0.5.
ThirdBody MoonOn(double day, double sinq, double cosq) {
  const double xnodce = 4.5236020 - 9.2422029e-4 * day;
  const double stem = std::sin(xnodce), ctem = std::cos(xnodce);
  const double zcosil = 0.91375164 - 0.03568096 * ctem;
  const double zsinil = std::sqrt(1 - zcosil * zcosil);
  const double zsinhl = 0.089683511 * stem / zsinil;
  const double zcoshl = std::sqrt(1 - zsinhl * zsinhl);
  const double c = 4.7199672 + 0.22997150 * day;
  const double gam = 5.8351514 + 0.0019443680 * day;
  const double zx = gam - xnodce + AcTan(ZSINIS * stem / zsinil, zcoshl * ctem + ZCOSIS * zsinhl * stem);
  return {std::cos(zx),
          std::sin(zx),
          zcosil,
          zsinil,
          zcoshl * cosq + zsinhl * sinq,
          sinq * zcoshl - cosq * zsinhl,
          ZNL,
          C1L,
          kTwoZEL / 2,
          FMod2p(c - gam)};
}

ThirdBody SunOn(double day, double sinq, double cosq) {
  return {ZCOSGS, ZSINGS, ZCOSIS, ZSINIS,      cosq,
          sinq,   ZNS,    C1SS,   kTwoZES / 2, FMod2p(6.2565837 + 0.017201977 * day)};
}

/// Resonance with the tesseral field of orbits of half a day: fits in the eccentricity.
void InitialiseHalfDayResonance(Sdp4State& s) {
  const OrbitTerms& t = s.terms;
  const double eq = t.eo, eqsq = t.eosq, eoc = eq * eqsq;
  const double g201 = -0.306 - (eq - 0.64) * 0.440;
  double g211, g310, g322, g410, g422, g520;
  if (eq <= 0.65) {
    g211 = 3.616 - 13.247 * eq + 16.290 * eqsq;
    g310 = -19.302 + 117.390 * eq - 228.419 * eqsq + 156.591 * eoc;
    g322 = -18.9068 + 109.7927 * eq - 214.6334 * eqsq + 146.5816 * eoc;
    g410 = -41.122 + 242.694 * eq - 471.094 * eqsq + 313.953 * eoc;
    g422 = -146.407 + 841.880 * eq - 1629.014 * eqsq + 1083.435 * eoc;
    g520 = -532.114 + 3017.977 * eq - 5740 * eqsq + 3708.276 * eoc;
  } else {
    g211 = -72.099 + 331.819 * eq - 508.738 * eqsq + 266.724 * eoc;
    g310 = -346.844 + 1582.851 * eq - 2415.925 * eqsq + 1246.113 * eoc;
    g322 = -342.585 + 1554.908 * eq - 2366.899 * eqsq + 1215.972 * eoc;
    g410 = -1052.797 + 4758.686 * eq - 7193.992 * eqsq + 3651.957 * eoc;
    g422 = -3581.69 + 16178.11 * eq - 24462.77 * eqsq + 12422.52 * eoc;
    g520 = eq > 0.715 ? -5149.66 + 29936.92 * eq - 54087.36 * eqsq + 31324.56 * eoc
                      : 1464.74 - 4664.75 * eq + 3763.64 * eqsq;
  }
  double g533, g521, g532;
  if (eq < 0.7) {
    g533 = -919.2277 + 4988.61 * eq - 9064.77 * eqsq + 5542.21 * eoc;
    g521 = -822.71072 + 4568.6173 * eq - 8491.4146 * eqsq + 5337.524 * eoc;
    g532 = -853.666 + 4690.25 * eq - 8624.77 * eqsq + 5341.4 * eoc;
  } else {
    g533 = -37995.78 + 161616.52 * eq - 229838.2 * eqsq + 109377.94 * eoc;
    g521 = -51752.104 + 218913.95 * eq - 309468.16 * eqsq + 146349.42 * eoc;
    g532 = -40023.88 + 170470.89 * eq - 242699.48 * eqsq + 115605.82 * eoc;
  }
  const double siniq = t.sinio, cosiq = t.cosio, cosq2 = t.theta2;
  const double sini2 = siniq * siniq;
  const double f220 = 0.75 * (1 + 2 * cosiq + cosq2);
  const double f221 = 1.5 * sini2;
  const double f321 = 1.875 * siniq * (1 - 2 * cosiq - 3 * cosq2);
  const double f322 = -1.875 * siniq * (1 + 2 * cosiq - 3 * cosq2);
  const double f441 = 35 * sini2 * f220;
  const double f442 = 39.3750 * sini2 * sini2;
  const double f522 =
      9.84375 * siniq * (sini2 * (1 - 2 * cosiq - 5 * cosq2) + 0.33333333 * (-2 + 4 * cosiq + 6 * cosq2));
  const double f523 =
      siniq * (4.92187512 * sini2 * (-2 - 4 * cosiq + 10 * cosq2) + 6.56250012 * (1 + 2 * cosiq - 3 * cosq2));
  const double f542 = 29.53125 * siniq * (2 - 8 * cosiq + cosq2 * (-12 + 8 * cosiq + 10 * cosq2));
  const double f543 = 29.53125 * siniq * (-2 - 8 * cosiq + cosq2 * (12 + 8 * cosiq - 10 * cosq2));
  const double ainv = 1 / t.aodp;
  double temp1 = 3 * t.xnodp * t.xnodp * ainv * ainv;
  s.d2201 = temp1 * ROOT22 * f220 * g201;
  s.d2211 = temp1 * ROOT22 * f221 * g211;
  temp1 *= ainv;
  s.d3210 = temp1 * ROOT32 * f321 * g310;
  s.d3222 = temp1 * ROOT32 * f322 * g322;
  temp1 *= ainv;
  s.d4410 = 2 * temp1 * ROOT44 * f441 * g410;
  s.d4422 = 2 * temp1 * ROOT44 * f442 * g422;
  temp1 *= ainv;
  s.d5220 = temp1 * ROOT52 * f522 * g520;
  s.d5232 = temp1 * ROOT52 * f523 * g532;
  s.d5421 = 2 * temp1 * ROOT54 * f542 * g521;
  s.d5433 = 2 * temp1 * ROOT54 * f543 * g533;
  s.xlamo = t.xmo + 2 * t.xnodeo - 2 * s.thgr;
  s.xfact = t.xmdot + 2 * t.xnodot - 2 * THDT + s.ssl + 2 * s.ssh - t.xnodp;
}

/// Resonance with the tesseral field of orbits of one day.
void InitialiseOneDayResonance(Sdp4State& s) {
  const OrbitTerms& t = s.terms;
  const double onePlusCos = 1 + t.cosio;
  const double g200 = 1 + t.eosq * (-2.5 + 0.8125 * t.eosq);
  const double g310 = 1 + 2 * t.eosq;
  const double g300 = 1 + t.eosq * (-6 + 6.60937 * t.eosq);
  const double f220 = 0.75 * onePlusCos * onePlusCos;
  const double f311 = 0.9375 * t.sinio * t.sinio * (1 + 3 * t.cosio) - 0.75 * onePlusCos;
  const double f330 = 1.875 * Cube(onePlusCos);
  const double ainv = 1 / t.aodp;
  const double base = 3 * t.xnodp * t.xnodp * ainv * ainv;
  s.del1 = base * f311 * g310 * Q31 * ainv;
  s.del2 = 2 * base * f220 * g200 * Q22;
  s.del3 = 3 * base * f330 * g300 * Q33 * ainv;
  s.xlamo = t.xmo + t.xnodeo + t.omegao - s.thgr;
  s.xfact = t.xmdot + t.omgdot + t.xnodot - THDT + s.ssl + s.ssg + s.ssh - t.xnodp;
}

Resonance ResonanceOf(const OrbitTerms& t) {
  if (t.xnodp > 0.0034906585 && t.xnodp < 0.0052359877) return Resonance::OneDay;
  if (t.xnodp >= 0.00826 && t.xnodp <= 0.00924 && t.eo >= 0.5) return Resonance::HalfDay;
  return Resonance::None;
}

}  // namespace

void InitialiseDeepSpace(const TSatellite& satellite, Sdp4State& s) {
  const OrbitTerms& t = s.terms;
  const EpochSidereal epoch = ThetaG(satellite.EpochRaw);
  s.thgr = epoch.AngleRad;
  const double day = epoch.DaysSince1950 + 18261.5;
  const double sinq = std::sin(t.xnodeo), cosq = std::cos(t.xnodeo);
  const SecularRates sun = ExpandThirdBody(t, SunOn(day, sinq, cosq), s.solar);
  const SecularRates moon = ExpandThirdBody(t, MoonOn(day, sinq, cosq), s.lunar);
  s.sse = sun.se + moon.se;
  s.ssi = sun.si + moon.si;
  s.ssl = sun.sl + moon.sl;
  // An orbit in the equator has no node to move.
  s.ssh = t.sinio != 0 ? (sun.sh + moon.sh) / t.sinio : 0;
  s.ssg = sun.sgh + moon.sgh - t.cosio * s.ssh;

  s.resonance = ResonanceOf(t);
  if (s.resonance == Resonance::HalfDay) InitialiseHalfDayResonance(s);
  if (s.resonance == Resonance::OneDay) InitialiseOneDayResonance(s);
  s.reached = {0, s.xlamo, t.xnodp};
}

}  // namespace pelorin::orbit
