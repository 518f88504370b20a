#include "elements/set_ageing.h"

#include <gtest/gtest.h>

#include "orbit/julian_date.h"
#include "tests/support/tables.h"

namespace pelorin::elements {
namespace {

TEST(SetAgeing, AgeIsToldWithWhatItMayCost) {
  const SetAgeing ageing(
      R"({"classes": [{"class": "sun-synchronous at 800 to 870 km", "kmPerDay": 0.5, "kmPerDay2": 0.2,
          "longestDays": 60, "sets": 76, "satellites": 2}]})");
  const struct {
    const char* Satellite;
    double Days;
    const char* Text;
    DoubtLevel Level;
  } rows[] = {
      // 1.9 km; a line is 3.7 km of the flight at 850 km height.
      {"NOAA 19", 2.1, "elements 2.1 days old, the map may be off by 1 line", DoubtLevel::None},
      // 13.3 km.
      {"NOAA 19", 7, "elements 7.0 days old, the map may be off by 4 lines", DoubtLevel::Notable},
      {"NOAA 19", -30, "elements of 30.0 days later, the map may be off by 53 lines", DoubtLevel::Grave},
      {"NOAA 19", 400, "elements 400.0 days old, the map may be off by more than 203 lines",
       DoubtLevel::Grave},
      // Of its height nothing was measured.
      {"METEOR 3-5", 400, "elements 400.0 days old", DoubtLevel::None},
  };
  for (const auto& row : rows) {
    const orbit::TSatellite set = tests::DemonstrationSatellite(row.Satellite);
    const SetDoubt doubt = DoubtOf(set, orbit::DateTimeOfJulianDate(set.Epoch + row.Days), ageing);
    EXPECT_EQ(DoubtText(doubt).toStdString(), row.Text);
    EXPECT_EQ(LevelOf(doubt, 3, 20), row.Level) << row.Text;
    EXPECT_EQ(doubt.Source.contains(QStringLiteral("76 sets of 2 satellites")), doubt.Lines >= 0) << row.Text;
  }
}

TEST(SetAgeing, ClassesAreOfHeightOrDrag) {
  const struct {
    const char* Satellite;
    const char* Class;
  } rows[] = {{"NOAA 19", "sun-synchronous at 800 to 870 km"},
              {"METEOR 3-5", "drag term of 0.0001 to 0.001"}};
  for (const auto& row : rows) {
    EXPECT_EQ(AgeingClassOf(tests::DemonstrationSatellite(row.Satellite)), row.Class) << row.Satellite;
  }
  EXPECT_EQ(AgeingClassOf(tests::ReferenceSatellite("MOLNIYA 2-14")), "deep space");
}

TEST(SetAgeing, ShippedTableIsReadAndDamageIsTold) {
  const SetAgeing shipped = LoadSetAgeing(QStringLiteral(PELORIN_SET_AGEING));
  const AgeingLaw* law = shipped.LawOf(tests::DemonstrationSatellite("NOAA 19"));
  ASSERT_NE(law, nullptr);
  EXPECT_GT(law->BoundKm(14), 10);
  EXPECT_LT(law->BoundKm(14), 100);
  EXPECT_EQ(SetAgeing(shipped.ToJson()).Laws.size(), shipped.Laws.size());
  for (const char* damaged :
       {"", "[]", R"({"classes": [{}]})",
        R"({"classes": [{"kmPerDay": -1, "kmPerDay2": 0, "longestDays": 9, "sets": 1, "satellites": 1}]})",
        R"({"classes": [{"kmPerDay": 1, "kmPerDay2": 0, "longestDays": 9, "sets": 1}]})"}) {
    EXPECT_THROW(SetAgeing{QByteArray(damaged)}, std::runtime_error) << damaged;
  }
}

}  // namespace
}  // namespace pelorin::elements
