#include "orbit/pass_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "orbit/comma_text.h"
#include "orbit/culminations.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "tests/support/sky_watch.h"
#include "tests/support/tables.h"

namespace pelorin::orbit {
namespace {

const Observer kEdinburgh = ObserverFromDegrees(55.905, -3.2, 150);
const Observer kSouthPole = ObserverFromDegrees(-89.99, 0, 2800);
const TDateTime kStart = MakeDateTime(1999, 2, 3, 17, 30);

const TSatellite kFengyun1C = tests::DemonstrationSatellite("FENGYUN 1C");

double ElevationAt(const TSatellite& satellite, const Observer& observer, double jd) {
  return ElevationFrame(observer).Elevation(SatelliteStateKm(satellite, jd).Position, jd);
}

TEST(PassSearch, FindsWhatWatchingTheSkyFinds) {
  const TSatellite noaa12 = tests::ReferenceSatellite("NOAA 12");
  const struct {
    const char* label;
    TSatellite satellite;
    Observer observer;
    double minElevationDeg;
  } rows[] = {{"Edinburgh", noaa12, kEdinburgh, 1.5},
              {"Longyearbyen", noaa12, ObserverFromDegrees(78.22, 15.65, 450), 0},
              {"Quito", noaa12, ObserverFromDegrees(-0.2, -78.5, 2850), 5},
              {"near the north pole", noaa12, ObserverFromDegrees(89.9, 30, 0), 0},
              {"at the south pole", noaa12, ObserverFromDegrees(-90, 0, 2800), 1.5},
              {"where the hops find none", kFengyun1C, kSouthPole, 1.5},
              {"87 degrees north", tests::ReferenceSatellite("NOAA 18"), ObserverFromDegrees(87, 100, 0), 3},
              {"two tops in a pass of hours", tests::ReferenceSatellite("MOLNIYA 1-83"), kEdinburgh, 1.5},
              {"half an hour near perigee", tests::ReferenceSatellite("COSMOS 1024 DEB"),
               ObserverFromDegrees(-33.9, 200, 0), 1.5}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    constexpr int days = 4;
    const TDateTime start = row.satellite.Name == kFengyun1C.Name ? MakeDateTime(2022, 2, 22) : kStart;
    const double jd0 = JulianDateOfDateTime(DatePart(start));
    const auto passes = SearchPasses(row.satellite, row.observer, {start, days, row.minElevationDeg});
    // What the minute to which the search knows a culmination, and the ten seconds between the looks, make
    // certain.
    constexpr double aMinute = 1.0 / 1440, betweenLooks = 12.0 / 86400;
    constexpr int certainSeconds = 320;
    std::size_t certain = 0, possible = 0;
    for (const tests::SeenPass& seen : tests::WatchTheSky(row.satellite, row.observer, row.minElevationDeg,
                                                          jd0 - 0.6, jd0 + days + 0.6, 10)) {
      if (seen.Top < jd0 - aMinute || seen.Top > jd0 + days + aMinute || seen.Seconds() < 280) continue;
      ++possible;
      if (seen.Top < jd0 + aMinute || seen.Top > jd0 + days || seen.Seconds() < certainSeconds) continue;
      ++certain;
      const auto pass = std::find_if(passes.begin(), passes.end(), [&seen](const Pass& found) {
        return std::fabs(found.Aos - seen.Rise) < betweenLooks &&
               std::fabs(found.Los - seen.Set) < betweenLooks;
      });
      ASSERT_NE(pass, passes.end()) << "missed, from the start: "
                                    << TimeOfDayToString(seen.Rise - jd0, 0, true);
      const TrueCulmination top = RefineCulmination(row.satellite, row.observer, *pass);
      EXPECT_GE(Degrees(top.ElevationRad) + 1e-6, seen.TopDeg);
      EXPECT_NEAR(top.JulianDate, seen.Top, betweenLooks);
      EXPECT_NEAR(top.ElevationRad, ElevationAt(row.satellite, row.observer, top.JulianDate), 1e-9);
    }
    EXPECT_GT(certain, 6u);
    EXPECT_TRUE(passes.size() >= certain && passes.size() <= possible)
        << passes.size() << " of " << certain << " … " << possible;

    // What the second look adds takes nothing from the hops.
    ElevationFunction elevation(row.satellite, row.observer, Radians(row.minElevationDeg));
    for (const ElevationSample& hop : HopCulminations(
             elevation, {jd0, jd0 + days, row.satellite.PeriodDays(), row.satellite.IsDeepSpace})) {
      if (!(hop.AboveMinimum > 0) || hop.Jd < jd0 || hop.Jd > jd0 + days) continue;
      const bool isPass = std::any_of(passes.begin(), passes.end(),
                                      [&hop](const Pass& pass) { return pass.Culmination == hop.Jd; });
      const bool isTooShort =
          ElevationAt(row.satellite, row.observer, hop.Jd - 160.0 / 86400) < Radians(row.minElevationDeg) ||
          ElevationAt(row.satellite, row.observer, hop.Jd + 160.0 / 86400) < Radians(row.minElevationDeg);
      EXPECT_TRUE(isPass || isTooShort);
    }
  }
}

TEST(PassSearch, RecordsOfTheHopsStayAsTheyAre) {
  const struct {
    const char* satellite;
    int days;
    std::vector<std::string> last;  ///< at the end of the list
  } rows[] = {
      {"NOAA 12",
       1,
       {"0203035203 S 41 4 385 NOAA 12", "0203053013 S 15 29 833 NOAA 12", "0203071014 S 352 61 879 NOAA 12",
        "0203085038 S 333 17 726 NOAA 12", "0203103100 S 325 5 437 NOAA 12", "0203134502 N 33 7 505 NOAA 12",
        "0203152102 N 19 22 770 NOAA 12", "0203165930 N 358 75 882 NOAA 12",
        "0203184107 N 333 20 775 NOAA 12"}},
      {"COSMOS 1024 DEB",
       4,
       {"0206033937 S 319 41 6354 COSMOS 1024 DEB", "0206113317 S 44 53 18872 COSMOS 1024 DEB"}},
      // The hops pass over its two tops; the higher one is told.
      {"MOLNIYA 1-83", 2, {"0204084038 S 349 82 38003 MOLNIYA 1-83"}}};
  for (const auto& row : rows) {
    std::string text;
    FindPasses(tests::ReferenceSatellite(row.satellite), 300, row.days, text, kEdinburgh, 1.5, kStart);
    std::vector<std::string> records = SplitCommaText(text);
    ASSERT_GE(records.size(), row.last.size());
    records.erase(records.begin(), records.end() - static_cast<std::ptrdiff_t>(row.last.size()));
    EXPECT_EQ(records, row.last);
  }
  const PassInfo written{MakeDateTime(2022, 3, 15, 14, 30, 12, 900), true, 353.4, 62.7, 754, "NOAA 15"};
  EXPECT_EQ(written.ToText(), "0315143012 S 353 63 754 NOAA 15");
  EXPECT_EQ(written.ToListEntry(), "0315143012 S 353 754 NOAA 15");
}

TEST(PassSearch, RecordsSayWhatTheSatelliteDid) {
  TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
  const auto passes = SearchPasses(satellite, kEdinburgh, {kStart, 2, 1.5});
  ASSERT_GT(passes.size(), 6u);
  for (const Pass& pass : passes) {
    const PassInfo& record = pass.Record;
    EXPECT_NEAR(JulianDateOfDateTime(record.Aos), pass.Aos, 0.02 / 86400);
    EXPECT_NEAR(record.DurationSeconds, (pass.Los - pass.Aos) * 86400, 0.5);
    const SatelliteState state = SatelliteStateKm(satellite, pass.Culmination);
    Geodetic below;
    SatLatLonAlt(state.Position, pass.Culmination, below);
    EXPECT_EQ(record.SouthBound, state.Velocity.z < 0) << record.ToText();
    EXPECT_NEAR(record.LongitudeDeg, Degrees(below.Longitude), 1e-9) << record.ToText();
    EXPECT_NEAR(record.MaxElevationDeg, Degrees(ElevationAt(satellite, kEdinburgh, pass.Culmination)), 1e-9)
        << record.ToText();
  }
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
  const struct {
    TSatellite satellite;
    Observer observer;
    TDateTime start;
    int days;
    std::size_t passesOfDay2;
  } rows[] = {{tests::ReferenceSatellite("COSMOS 1867"), kEdinburgh, MakeDateTime(2022, 11, 18), 6, 10},
              {kFengyun1C, kSouthPole, MakeDateTime(2022, 2, 21), 2, 14},
              {tests::ReferenceSatellite("NOAA 12"), ObserverFromDegrees(78.2, 15.6, 100), kStart, 6, 15}};
  for (const auto& row : rows) {
    const auto whole = SearchPasses(row.satellite, row.observer, {row.start, row.days, 1.5});
    std::vector<Pass> oneByOne;
    for (int day = 0; day < row.days; ++day) {
      const auto passes = SearchPasses(row.satellite, row.observer, {{row.start.Days + day}, 1, 1.5});
      oneByOne.insert(oneByOne.end(), passes.begin(), passes.end());
      EXPECT_TRUE(day != 1 || passes.size() == row.passesOfDay2) << row.satellite.Name << passes.size();
    }
    ASSERT_EQ(oneByOne.size(), whole.size()) << row.satellite.Name;
    for (std::size_t index = 0; index < whole.size(); ++index) {
      EXPECT_NEAR(oneByOne[index].Aos, whole[index].Aos, 1.0 / 86400) << row.satellite.Name;
    }
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
    const auto passes = SearchPasses(satellite, ObserverFromDegrees(5, 350, 0), {kStart, 28, 0});
    EXPECT_EQ(!passes.empty(), row.passes) << row.label;
  }
}

}  // namespace
}  // namespace pelorin::orbit
