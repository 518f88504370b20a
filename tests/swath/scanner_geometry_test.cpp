#include "swath/scanner_geometry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"

namespace pelorin::swath {
namespace {

/// Where the ray at `angle` from straight down meets the sphere, as an angle at the Earth's centre: the law
/// of sines.
double CentralAngle(double angle, double heightKm) {
  return std::asin(std::sin(angle) * (orbit::XKMPER + heightKm) / orbit::XKMPER) - angle;
}

TEST(ScannerGeometry, TheTableEndsWhereTheScannerDoes) {
  const struct {
    const char* name;
    double halfAngleDeg;
  } rows[] = {{"NOAA-17", 55.37}, {"NOAA 19", 55.37},  {"NOAA 9", 45},
              {"METEOR 3-5", 39}, {"RESURS O1-4", 48}, {"OKEAN-O", 45}};
  for (const auto& row : rows) {
    orbit::TSatellite s;
    s.Name = row.name;
    BuildScanTable(s, kHalfLinePixels, 850);
    EXPECT_EQ(CrossTrackOffset(s, 0), 0);
    EXPECT_EQ(CrossTrackOffset(s, -10), -CrossTrackOffset(s, 10));
    // 78 pixels of 8 units, then 110 of 6, 83 of 4, 62 of 3 and 121 of 2.
    const struct {
      int pixel, units;
    } bounds[] = {{78, 624}, {79, 630}, {189, 1288}, {272, 1619}, {300, 1703}, {334, 1804}, {454, 2044}};
    for (const auto& [pixel, units] : bounds) {
      const double angle = orbit::Radians(row.halfAngleDeg * units / 2047);
      EXPECT_NEAR(CrossTrackOffset(s, pixel), std::tan(CentralAngle(angle, 850)) * (orbit::XKMPER + 850),
                  1e-6)
          << row.name << " " << pixel;
    }
  }
}

TEST(ScannerGeometry, ARayPastTheEarthEndsAtTheHorizon) {
  for (const double height : {850.0, 2000.0, 20200.0, 35786.0}) {
    const double horizon = std::asin(orbit::XKMPER / (orbit::XKMPER + height));
    const double expected = std::tan(orbit::kPi / 2 - horizon) * (orbit::XKMPER + height);
    EXPECT_NEAR(ScanAngleToGroundDistance(horizon * (1 - 1e-9), height), expected, expected * 1e-3) << height;
    EXPECT_NEAR(ScanAngleToGroundDistance(horizon + 0.01, height), expected, 1e-6) << height;
    EXPECT_NEAR(ScanAngleToGroundDistance(-1.2, height), -expected, 1e-6) << height;
  }
}

}  // namespace
}  // namespace pelorin::swath
