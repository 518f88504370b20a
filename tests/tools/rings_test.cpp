#include "tools/rings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace pelorin::tools {
namespace {

constexpr GridSize kDegrees{360, 180};  // one unit a degree: longitude from Greenwich, latitude from the pole

/// Without the sign that the direction of drawing gives it.
double Area(const Points& shape) {
  double twice = 0;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    const PointMin& a = shape[i];
    const PointMin& b = shape[(i + 1) % shape.size()];
    twice += a.Longitude * b.Latitude - b.Longitude * a.Latitude;
  }
  return std::abs(twice) / 2;
}

TEST(Rings, SegmentsAreChained) {
  using SizeAndArea = std::pair<std::size_t, double>;
  struct Row {
    const char* label;
    std::vector<Segment> segments;
    std::vector<SizeAndArea> rings;  // points, square degrees
  };
  const Segment box{7, {{10, 95}, {20, 95}, {20, 99}, {10, 99}, {10, 95}}};
  const Segment five{7, {{30, 95}, {40, 95}, {40, 99}, {35, 99}, {30, 99}, {30, 95}}};
  const Segment other{8, {{20, 95}, {25, 95}, {25, 99}, {20, 99}, {20, 95}}};
  const Row rows[] = {
      {"in order", {{7, {{20, 95}, {20, 99}, {10, 99}}}, {7, {{10, 99}, {10, 95}, {20, 95}}}}, {{4, 40}}},
      {"across Greenwich",
       {{7, {{0, 95}, {5, 95}, {5, 99}, {0, 99}}}, {7, {{360, 99}, {350, 99}, {350, 95}, {360, 95}}}},
       {{6, 60}}},
      {"two rings of one polygon, and another", {box, five, other}, {{4, 40}, {5, 40}, {4, 20}}},
      {"a triangle is left out", {{7, {{10, 95}, {20, 95}, {20, 99}, {10, 95}}}}, {}},
  };
  for (const Row& row : rows) {
    std::vector<SizeAndArea> rings;
    for (const Ring& ring : ChainRings(row.segments, kDegrees)) {
      rings.emplace_back(ring.Outline.size(), Area(ring.Outline) / 3600);
    }
    EXPECT_EQ(rings, row.rings) << row.label;
  }
  EXPECT_THROW(ChainRings({{7, {{10, 95}, {20, 95}, {20, 99}, {10, 99}}}}, kDegrees), std::runtime_error);
}

TEST(Rings, AreCutWhereTheMapEnds) {
  const auto box = [](double west, double east) {
    return Ring{1, {{west, 60}, {east, 60}, {east, 660}, {west, 660}}, false};
  };
  struct Row {
    const char* label;
    Ring ring;
    std::vector<std::pair<double, double>> extents;  // west and east of each shape
  };
  const std::vector<Row> rows = {
      {"across 180°", box(10200, 11400), {{-10830, -10200}, {10200, 10800}}},
      {"across 180°, counted from the west", box(-11400, -10200), {{-10830, -10200}, {10200, 10800}}},
      {"a turn too far east", box(21000, 21900), {{-600, 300}}},
      {"just east of 180°, also beyond the west side", box(10790, 10799), {{10790, 10799}}},
      {"just west of 180°", box(10803, 10812), {{-10797, -10788}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    std::vector<std::pair<double, double>> extents;
    for (const Points& shape : CutToMap(row.ring)) {
      const auto [west, east] =
          std::minmax_element(shape.begin(), shape.end(),
                              [](const PointMin& a, const PointMin& b) { return a.Longitude < b.Longitude; });
      extents.emplace_back(west->Longitude, east->Longitude);
      EXPECT_NEAR(Area(shape), (east->Longitude - west->Longitude) * 600, 1e-6);
    }
    EXPECT_EQ(extents, row.extents);
  }
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

TEST(Rings, RoundThePoleCloseBelowTheMap) {
  for (const std::int64_t direction : {+1, -1}) {
    SCOPED_TRACE(direction);
    std::vector<Segment> segments;  // the coast at 70° S in pieces of 10°
    for (std::int64_t x = 0; x < 360; x += 10) {
      segments.push_back({3, {{x, 20}, {x + 4, 20}, {x + 10, 20}}});
      if (direction < 0) std::reverse(segments.back().Points.begin(), segments.back().Points.end());
    }
    const std::vector<Ring> rings = ChainRings(segments, kDegrees);
    ASSERT_EQ(rings.size(), 1U);
    ASSERT_TRUE(rings[0].RoundPole);
    const std::vector<Points> shapes = CutToMap(rings[0]);
    ASSERT_EQ(shapes.size(), 1U);
    EXPECT_NEAR(Area(shapes[0]), (10800 + 10830) * 1200.0, 1e-3);
    for (const PointMin& point : shapes[0]) {
      EXPECT_TRUE(point.Latitude == -4200 || point.Longitude == 10800 || point.Longitude == -10830);
    }
  }
}

TEST(Rings, AreSimplifiedUntilTheyFit) {
  Ring ring{1, {}, false};
  constexpr int count = 40000;
  for (int i = 0; i < count; ++i) {
    const double angle = 2 * std::numbers::pi * i / count;
    const double radius = 3000 + 40 * std::sin(400 * angle) + 3 * (i % 2);
    ring.Outline.push_back({9500 + radius * std::cos(angle), radius * std::sin(angle)});
  }
  const auto shapes = FileShapes(ring, 0.1);
  ASSERT_EQ(shapes.size(), 2U);  // one on each side of 180°
  const std::size_t largest = std::max(shapes[0].size(), shapes[1].size());
  EXPECT_LE(largest, static_cast<std::size_t>(overlay::kMostPolyPoints));
  EXPECT_GT(largest,
            static_cast<std::size_t>(overlay::kMostPolyPoints) / 3);  // no more was given up than needed
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
