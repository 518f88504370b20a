#include "overlay/fit_conditions.h"

#include <gtest/gtest.h>

namespace pelorin::overlay {
namespace {

using namespace Qt::StringLiterals;

TEST(FitConditions, TheFirstThingToDoIsTold) {
  const FitConditions fine{{}, false, true, true, {}, true};
  const struct {
    const char* Label;
    void (*Spoil)(FitConditions&);
    QString Told;
  } rows[] = {
      // Each on top of the ones before.
      {"nothing", [](FitConditions&) {}, {}},
      {"another pass", [](FitConditions& now) { now.IsSeen = false; },
       u"The picture that is seen is of another pass than the one that is chosen."_s},
      {"no scanner", [](FitConditions& now) { now.Problem = u"none of 800 columns"_s; },
       u"none of 800 columns"_s},
      {"no satellite", [](FitConditions& now) { now.HasSatellite = false; },
       u"Choose the satellite that sent the picture."_s},
      {"no picture", [](FitConditions& now) { now.HasPicture = false; }, u"Load a picture first."_s},
      {"busy", [](FitConditions& now) { now.MakesMap = true; }, u"Wait until the map is made."_s},
      {"no coasts", [](FitConditions& now) { now.Trouble = u"no file"_s; }, u"no file"_s},
  };
  FitConditions now = fine;
  for (const auto& row : rows) {
    row.Spoil(now);
    EXPECT_EQ(WhyNotFitted(now), row.Told) << row.Label;
  }
}

}  // namespace
}  // namespace pelorin::overlay
