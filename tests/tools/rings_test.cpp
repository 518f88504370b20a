#include "tools/rings.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace pelorin::tools {
namespace {

TEST(Rings, ThatDoNotCloseAreRefused) {
  const Segment open{7, {{10, 95}, {20, 95}, {20, 99}, {10, 99}}};
  EXPECT_THROW(ChainRings({open}, {360, 180}), std::runtime_error);
}

TEST(Rings, MeetTheEasternCutWhereTheCoastCrossesIt) {
  // The southern coast rises from 10700′ to 10900′ by 100′: half of it at the cut. The master may leave out
  // that point; the cut's edge has others soon after it, on its way to the northern coast.
  const Ring ring{1, {{10000, 0}, {10700, 0}, {10900, 100}, {10900, 500}, {10000, 500}}, false};
  const std::vector<Points> shapes = CutToMap(ring);
  const Points expected{{10000, 0},  {10700, 0},  {10800, 50},  {10800, 53}, {10800, 56},
                        {10800, 59}, {10800, 62}, {10800, 500}, {10000, 500}};
  ASSERT_EQ(shapes.size(), 2U);
  EXPECT_EQ(shapes[1], expected);
}

TEST(Rings, SimplifyingKeepsWhatIsFarFromTheLine) {
  const Points line = {{0, 0}, {10, 0.4}, {20, 0}, {30, 5}, {40, 0}, {40, 0.2}, {50, 0}};
  EXPECT_EQ(Simplify(line, 0.5, false), (Points{{0, 0}, {20, 0}, {30, 5}, {40, 0}, {50, 0}}));
  // A closed outline also loses points beside its last side.
  const Points closed = {{0, 0}, {30, 0}, {30, 20}, {0, 20}, {0.2, 10}};
  EXPECT_EQ(Simplify(closed, 0.5, true), (Points{{0, 0}, {30, 0}, {30, 20}, {0, 20}}));
}

TEST(Rings, RoundingLeavesNoPointTwice) {
  const Points line = {{-10.6, 5.2}, {-11.4, 4.8}, {3, 4}, {20.4, -7.6}, {-10.8, 5.4}};
  EXPECT_EQ(Round(line, false), (std::vector<overlay::PolyPoint>{{-11, 5}, {3, 4}, {20, -8}, {-11, 5}}));
  EXPECT_EQ(Round(line, true), (std::vector<overlay::PolyPoint>{{-11, 5}, {3, 4}, {20, -8}}));
}

}  // namespace
}  // namespace pelorin::tools
