#include "orbit/propagation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "orbit/sgp4.h"
#include "tests/support/tables.h"

namespace pelorin::orbit {
namespace {

SatelliteState StateAt(const TSatellite& satellite, double minutes) {
  SatelliteState state;
  PropagateSinceEpoch(satellite, minutes, state.Position, state.Velocity);
  ConvertSatState(state.Position, state.Velocity);
  return state;
}

double Distance(const Vector& a, const Vector& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

TEST(Propagation, AgreesWithPublishedStates) {
  for (const auto& [table, isDeepSpace] : {std::pair{"sgp4-cases.csv", false}, {"sdp4-cases.csv", true}}) {
    for (const auto& row : tests::ReadTable(table)) {
      SCOPED_TRACE(row.Text("case") + " at " + row.Text("tsince_min"));
      const TSatellite satellite = tests::ReferenceSatellite(row.Text("case"));
      EXPECT_EQ(satellite.IsDeepSpace, isDeepSpace);
      const SatelliteState state = StateAt(satellite, row.Number("tsince_min"));
      const Vector position{row.Number("x_km"), row.Number("y_km"), row.Number("z_km"), 0};
      const Vector velocity{row.Number("vx_km_s"), row.Number("vy_km_s"), row.Number("vz_km_s"), 0};
      EXPECT_LT(Distance(state.Position, position), row.Number("pos_tol_km"));
      EXPECT_LT(Distance(state.Velocity, velocity), row.Number("vel_tol_km_s"));
    }
  }
}

TEST(Propagation, ResultsDependOnTimeAlone) {
  for (const char* name : {"STR3-11801", "MOLNIYA 2-14", "SMS 1 AKM", "EUTELSAT 1-F1", "NOAA 12"}) {
    TSatellite walked = tests::ReferenceSatellite(name);
    for (const double minutes : {5000.0, 4999.0, -3000.0, 0.0, 1.0, 20000.0, 1439.0, -1.0}) {
      TSatellite fresh = tests::ReferenceSatellite(name);
      const SatelliteState a = StateAt(walked, minutes), b = StateAt(fresh, minutes);
      EXPECT_EQ(Distance(a.Position, b.Position), 0) << name << " at " << minutes;
    }
    TSatellite copy = walked;
    StateAt(copy, -20000);
    EXPECT_EQ(StateAt(copy, 777).Position.x, StateAt(walked, 777).Position.x) << name;
  }
}

/// Lyddane's variables and the resonance must not make a satellite jump: over a minute it moves as far as its
/// velocity says.
TEST(Propagation, OrbitsAreContinuous) {
  for (const char* name : {"SMS 1 AKM", "EUTELSAT 1-F1", "ITALSAT 2", "MOLNIYA 1-83", "VANGUARD 1"}) {
    TSatellite satellite = tests::ReferenceSatellite(name);
    SatelliteState before = StateAt(satellite, 0);
    for (int minute = 1; minute < 20000; minute += 1) {
      const SatelliteState now = StateAt(satellite, minute);
      const double travelled = 30 * (before.Velocity.w + now.Velocity.w);
      ASSERT_NEAR(Distance(before.Position, now.Position), travelled, 0.02 * travelled + 1)
          << name << " " << minute;
      before = now;
    }
  }
}

/// What a week of drag does to a low circle over the poles, against the law behind its terms: in air that
/// thins with the fourth power of the height above s the root of the axis shrinks as `rootRate` says, and the
/// satellite runs ahead of one without drag as its shorter turns have it.
TEST(Propagation, DragMakesALowCircleSinkAndRunAhead) {
  const std::string line2 = "2 00001  90.0000  39.9325 0000000   0.0000   0.0000 16.05000000    10";
  TSatellite sinking, steady;
  sinking.ParseElements("1 00001U          99034.20978316  .00000000  00000-0  50000-3 0    1", line2);
  steady.ParseElements("1 00001U          99034.20978316  .00000000  00000-0  00000-0 0    1", line2);
  const OrbitTerms terms = InitialiseSgp4(sinking).terms;
  const double s = 1 + 78 / XKMPER, a0 = terms.aodp;
  const auto rootRate = [&](double root) {
    return -terms.c1 * std::pow((a0 - s) / (a0 * root * root - s), 4);
  };
  double root = 1, ahead = 0;
  constexpr int minutes = 7 * 1440;
  for (int minute = 0; minute < minutes; ++minute) {
    const double middle = root + rootRate(root) / 2;
    ahead += terms.xnodp * (std::pow(middle, -3) - 1);
    root += rootRate(middle);
  }
  const SatelliteState a = StateAt(steady, minutes), b = StateAt(sinking, minutes);
  Vector turned = Cross(a.Position, b.Position);
  Magnitude(turned);
  const double apart = std::atan2(turned.w, Dot(a.Position, b.Position));
  // Kilometres: some 7700 ahead, 23 of them by the last term.
  EXPECT_NEAR(apart * a.Position.w, ahead * a.Position.w, 10);
}

/// Circles and equatorial orbits divide by nothing; they do occur in real sets.
TEST(Propagation, CirclesAndEquatorsStayFinite) {
  const std::pair<const char*, const char*> rows[] = {
      {"near circle", "2 21263  98.5313  39.9325 0000000   4.9627 355.1680 14.22950462401115"},
      {"near equator", "2 21263   0.0000  39.9325 0013250   4.9627 355.1680 14.22950462401115"},
      {"near retrograde equator", "2 21263 180.0000  39.9325 0013250   4.9627 355.1680 14.22950462401115"},
      {"stationary circle in the equator",
       "2 21263   0.0000  39.9325 0000000   4.9627 355.1680  1.00273000401115"},
      {"half a day, equator", "2 21263   0.0000  39.9325 7000000   4.9627 355.1680  2.00550000401115"}};
  const char* line1 = "1 21263U 91032A   99034.20978316  .00000272  00000-0  13981-3 0  1482";
  TSatellite satellite;
  for (const auto& [label, line2] : rows) {
    SCOPED_TRACE(label);
    satellite.ParseElements(line1, line2);
    EXPECT_TRUE(CanPropagate(satellite));
    for (const double minutes : {-1440.0, 10.0, 5000.0}) {
      const SatelliteState state = StateAt(satellite, minutes);
      EXPECT_TRUE(state.Position.w > XKMPER && state.Position.w < 100000) << minutes;
    }
  }
  EXPECT_THROW(satellite.ParseElements(line1, "2 21263  98.5313  39.9325 0013250   4.9627 355.1680 -14.2"),
               MathError);
}

}  // namespace
}  // namespace pelorin::orbit
