#include "app/propagator_check.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/scalar_math.h"
#include "orbit/vector.h"

namespace pelorin::app {
namespace {

/// What a line shows: position in km and velocity in km/s.
struct CheckLine {
  orbit::Vector Position, Velocity;
};

CheckLine ReadCheckLine(const QString& line) {
  const QStringList fields = line.simplified().split(u' ');
  const auto vector = [&fields](qsizetype at) {
    orbit::Vector v{fields.value(at).toDouble(), fields.value(at + 1).toDouble(),
                    fields.value(at + 2).toDouble(), 0};
    Magnitude(v);
    return v;
  };
  return {vector(2), vector(5)};
}

TEST(PropagatorCheck, LinesShowThisOrbitMinuteByMinute) {
  const QStringList lines = PropagatorCheckLines();
  ASSERT_EQ(lines.size(), 61);
  EXPECT_TRUE(lines.first().startsWith(u"1999-02-05 18:34:00  "));
  EXPECT_TRUE(lines[26].startsWith(u"1999-02-05 19:00:00  "));
  EXPECT_TRUE(lines.last().startsWith(u"1999-02-05 19:34:00  "));
  for (qsizetype minute = 1; minute < 60; ++minute) {
    const CheckLine before = ReadCheckLine(lines[minute - 1]), now = ReadCheckLine(lines[minute]),
                    after = ReadCheckLine(lines[minute + 1]);
    // An orbit of 14.23 turns a day, almost round, inclined by 98.53°.
    EXPECT_NEAR(now.Position.w, 7189, 20) << minute;
    orbit::Vector momentum = Cross(now.Position, now.Velocity);
    orbit::Magnitude(momentum);
    EXPECT_NEAR(orbit::Degrees(std::acos(momentum.z / momentum.w)), 98.53, 0.02) << minute;
    // The velocity is what the position does from minute to minute.
    EXPECT_NEAR((after.Position.x - before.Position.x) / 120, now.Velocity.x, 0.006) << minute;
    EXPECT_NEAR((after.Position.y - before.Position.y) / 120, now.Velocity.y, 0.006) << minute;
    EXPECT_NEAR((after.Position.z - before.Position.z) / 120, now.Velocity.z, 0.006) << minute;
  }
  // 36 turns and 166° after the ascending node at the epoch: 4 minutes before the equator, going south.
  EXPECT_GT(ReadCheckLine(lines[3]).Position.z, 0);
  EXPECT_LT(ReadCheckLine(lines[5]).Position.z, 0);
}

}  // namespace
}  // namespace pelorin::app
