#include "orbit/satellite.h"

#include <gtest/gtest.h>

#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

constexpr std::string_view kLine1 = "1 21263U 91032A   99034.20978316  .00000272  00000-0  13981-3 0  1482";
constexpr std::string_view kLine2 = "2 21263  98.5313  39.9325 0013250   4.9627 355.1680 14.22950462401115";

TEST(Satellite, SignsAndExponentsOfTheLastFields) {
  const std::pair<const char*, double> rows[] = {
      {" 00000-0", 0}, {"-11606-4", -0.11606e-4}, {"+57656-4", 0.57656e-4}, {" 13844+1", 1.3844}};
  for (const auto& [field, value] : rows) {
    TSatellite s;
    std::string line1(kLine1);
    line1.replace(53, 8, field);
    s.ParseElements(line1, kLine2);
    EXPECT_NEAR(s.BStar, value, 1e-12) << field;
  }
  TSatellite s;
  std::string line1(kLine1);
  line1.replace(44, 8, "-12345-6");
  line1.replace(64, 4, "1999");
  s.ParseElements(line1, kLine2);
  EXPECT_NEAR(s.MeanMotionDotDot / (kTwoPi / Cube(1440)), -0.12345e-6, 1e-15);
  EXPECT_EQ(s.ElementSetNumber, "999");
}

TEST(Satellite, DeepSpaceBeginsAtAPeriodOf225Minutes) {
  const std::pair<const char*, bool> rows[] = {
      {" 6.39880000", false}, {" 6.39850000", true}, {" 1.00270000", true}};
  for (const auto& [revolutionsPerDay, isDeepSpace] : rows) {
    TSatellite s;
    std::string line2(kLine2);
    line2.replace(52, 11, revolutionsPerDay);
    s.ParseElements(kLine1, line2);
    EXPECT_EQ(s.IsDeepSpace, isDeepSpace) << revolutionsPerDay;
  }
}

TEST(Satellite, IdentityFollowsFromTheName) {
  const struct {
    const char* name;
    double halfAngle;
    int linesPerMinute;
    bool noaa;
  } rows[] = {{" noaa 15 ", 55.37, 120, true}, {"NOAA-12", 55.37, 120, true},
              {"NOAA 15 [+]", 45, 120, false}, {"NOAA 19", 45, 120, false},
              {"METEOR 3-5", 36, 120, false},  {"OKEAN-O", 45, 240, false},
              {"SICH-1", 45, 240, false}};
  for (const auto& row : rows) {
    TSatellite s;
    s.SetIdentity(row.name, "/data/keps\\weather.2li");
    EXPECT_EQ(s.ScanHalfAngle, row.halfAngle) << row.name;
    EXPECT_EQ(s.LinesPerMinute, row.linesPerMinute) << row.name;
    EXPECT_EQ(s.IsNoaaScanner, row.noaa) << row.name;
    EXPECT_EQ(s.SourceFile, "weather.2li");
  }
}

}  // namespace
}  // namespace pelorin::orbit
