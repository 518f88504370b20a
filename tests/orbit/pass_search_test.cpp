#include "orbit/pass_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "orbit/comma_text.h"
#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"
#include "tests/support/sky_watch.h"
#include "tests/support/tables.h"

namespace pelorin::orbit {
namespace {

const Observer kEdinburgh = ObserverFromDegrees(55.905, -3.2, 150);
const TDateTime kStart = MakeDateTime(1999, 2, 3, 17, 30);

double ElevationAt(const TSatellite& satellite, const Observer& observer, double jd) {
  return ElevationFrame(observer).Elevation(SatelliteStateKm(satellite, jd).Position, jd);
}

TEST(PassSearch, FindsWhatWatchingTheSkyFinds) {
  const struct {
    const char* label;
    const char* satellite;
    Observer observer;
    double minElevationDeg;
  } rows[] = {{"Edinburgh", "NOAA 12", kEdinburgh, 1.5},
              {"Longyearbyen", "NOAA 12", ObserverFromDegrees(78.22, 15.65, 450), 0},
              {"Quito", "NOAA 12", ObserverFromDegrees(-0.2, -78.5, 2850), 5},
              {"hours above the horizon", "MOLNIYA 1-83", kEdinburgh, 1.5}};
  for (const auto& row : rows) {
    TSatellite satellite = tests::ReferenceSatellite(row.satellite);
    const TDateTime start = DateTimeOfJulianDate(satellite.Epoch);
    const double jd0 = JulianDateOfDateTime(DatePart(start));
    const auto passes = SearchPasses(satellite, row.observer, {start, 3, 300, row.minElevationDeg});
    std::size_t expected = 0;
    for (const tests::SeenPass& seen :
         tests::WatchTheSky(satellite, row.observer, row.minElevationDeg, jd0 - 0.5, jd0 + 3.5, 10)) {
      if (seen.Top < jd0 || seen.Top > jd0 + 3 || seen.Seconds() < 330) continue;
      ++expected;
      const bool found = std::any_of(passes.begin(), passes.end(), [&](const Pass& pass) {
        return std::fabs(pass.Aos - seen.Rise) < 15.0 / 86400 &&
               std::fabs(pass.Los - seen.Set) < 15.0 / 86400;
      });
      EXPECT_TRUE(found) << row.label << ": missed the pass of " << JulianDateToString(seen.Rise, 0) << " "
                         << TimeOfDayToString(seen.Rise + 0.5 - std::floor(seen.Rise + 0.5), 0, true);
    }
    EXPECT_GT(expected, 3u) << row.label;
    EXPECT_LE(passes.size(), expected + 2) << row.label;
    for (const Pass& pass : passes) {
      EXPECT_LT(pass.Aos, pass.Culmination);
      EXPECT_LT(pass.Culmination, pass.Los);
      const TrueCulmination top = RefineCulmination(satellite, row.observer, pass);
      EXPECT_GE(top.ElevationRad, ElevationAt(satellite, row.observer, pass.Culmination));
      EXPECT_NEAR(top.JulianDate, pass.Culmination, 1.1 / 1440);
    }
  }
}

TEST(PassSearch, RecordsSayWhatTheSatelliteDid) {
  TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
  const auto passes = SearchPasses(satellite, kEdinburgh, {kStart, 2, 300, 1.5});
  ASSERT_GT(passes.size(), 6u);
  std::vector<std::string> records;
  for (const Pass& pass : passes) {
    const PassInfo& record = pass.Record;
    records.push_back(record.ToText());
    EXPECT_NEAR(JulianDateOfDateTime(record.Aos), pass.Aos, 0.02 / 86400);
    EXPECT_NEAR(record.DurationSeconds, (pass.Los - pass.Aos) * 86400, 0.5);
    // South-bound satellites lose latitude; the longitude is the one below the satellite.
    const double jd = pass.Culmination;
    Geodetic before, at, after;
    SatLatLonAlt(SatelliteStateKm(satellite, jd - 1e-4).Position, jd - 1e-4, before);
    SatLatLonAlt(SatelliteStateKm(satellite, jd).Position, jd, at);
    SatLatLonAlt(SatelliteStateKm(satellite, jd + 1e-4).Position, jd + 1e-4, after);
    EXPECT_EQ(record.SouthBound, after.Latitude < before.Latitude) << records.back();
    EXPECT_NEAR(record.LongitudeDeg, Degrees(at.Longitude), 1e-9) << records.back();
    EXPECT_NEAR(record.MaxElevationDeg, Degrees(ElevationAt(satellite, kEdinburgh, jd)), 1e-9)
        << records.back();
  }
  std::string text;
  FindPasses(satellite, 300, 2, text, kEdinburgh, 1.5, kStart);
  EXPECT_EQ(SplitCommaText(text), records);
  const PassInfo written{MakeDateTime(2022, 3, 15, 14, 30, 12, 900), true, 353.4, 62.7, 754, "NOAA 15"};
  EXPECT_EQ(written.ToText(), "0315143012 S 353 63 754 NOAA 15");
  EXPECT_EQ(written.ToListEntry(), "0315143012 S 353 754 NOAA 15");
}

TEST(PassSearch, LimitsAreTheirOwn) {
  TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
  const auto texts = [&](double minElevation, int minSeconds) {
    std::string text;
    FindPasses(satellite, minSeconds, 2, text, kEdinburgh, minElevation, kStart);
    return text;
  };
  EXPECT_EQ(texts(15, 300), texts(10, 300));
  EXPECT_EQ(texts(-5, 300), texts(0, 300));
  EXPECT_NE(texts(10, 300), texts(0, 300));
  // A pass of exactly the minimum is not listed.
  const PassInfo first = SearchPasses(satellite, kEdinburgh, {kStart, 2}).front().Record;
  EXPECT_EQ(texts(0, first.DurationSeconds).find(first.ToText()), std::string::npos);
  EXPECT_NE(texts(0, first.DurationSeconds - 1).find(first.ToText()), std::string::npos);
}

TEST(PassSearch, DaysListedOneByOneHoldAllPasses) {
  TSatellite satellite;
  satellite.ParseElements("1 18312U 87068A   22053.63515201  .00000056  00000-0  36566-4 0  9990",
                          "2 18312  82.5543 105.7019 0013331 143.6281 216.5788 13.84759947744293");
  const TDateTime start = MakeDateTime(2022, 11, 18);
  constexpr int days = 6;
  const auto whole = SearchPasses(satellite, kEdinburgh, {start, days, 300, 1.5});
  std::vector<Pass> oneByOne;
  for (int day = 0; day < days; ++day) {
    const auto passes = SearchPasses(satellite, kEdinburgh, {{start.Days + day}, 1, 300, 1.5});
    oneByOne.insert(oneByOne.end(), passes.begin(), passes.end());
  }
  ASSERT_EQ(oneByOne.size(), whole.size());
  for (std::size_t index = 0; index < whole.size(); ++index) {
    EXPECT_NEAR(oneByOne[index].Aos, whole[index].Aos, 1.0 / 86400);
  }
}

TEST(PassSearch, EndsForOrbitsWithoutCulminations) {
  const struct {
    const char* label;
    const char* revolutions;
    bool passes;
  } rows[] = {{"no motion", " 0.00000000", false},
              {"a thousand days", " 0.00100000", false},
              {"a quarter of an hour", "99.9999999", false},
              {"below every clock", "99999999999", false},
              {"written with an exponent", "16.9500e+18", false},
              {"above the horizon for ever", " 1.00273790", false},
              {"a usual orbit", "14.22950462", true}};
  for (const auto& row : rows) {
    TSatellite satellite;
    // The stationary one stands over the station's meridian.
    satellite.ParseElements(
        "1 00001U 91032A   99034.20978316",
        std::string("2 00001  10.0100  39.9325 0000001   4.9627 160.1680 ") + row.revolutions);
    satellite.SetIdentity(row.label, "x.2li");
    const auto passes = SearchPasses(satellite, ObserverFromDegrees(5, 350, 0), {kStart, 28, 300, 0});
    EXPECT_EQ(!passes.empty(), row.passes) << row.label;
  }
}

}  // namespace
}  // namespace pelorin::orbit
