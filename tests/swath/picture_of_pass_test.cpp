#include "swath/picture_of_pass.h"

#include <gtest/gtest.h>

#include <functional>

#include "orbit/scalar_math.h"

namespace pelorin::swath {
namespace {

using namespace Qt::StringLiterals;

orbit::TDateTime At(const char* moment) { return orbit::ParseTimeString(moment); }

std::string StartOf(const Recording& recording) {
  return orbit::FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", recording.FirstLine());
}

/// NOAA 19, whose clock was found 2.5 s off, and a pass that has not been looked for.
PictureOfPass NewPass(const char* moment) {
  PictureOfPass picture(u"NOAA 19=2.5"_s);
  picture.SetSatellite(u"NOAA 19"_s);
  picture.SetPass(At(moment));
  return picture;
}

TEST(PictureOfPass, NameOfItsPictureIsTheStartOfTheMap) {
  const struct {
    const char* Label;
    const char* Pass;
    FoundPicture Found;
    const char* Start;
    StartFrom From;
  } rows[] = {
      {"no picture", "20190521152043", {}, "2019-05-21 15:20:00.000", StartFrom::Pass},
      {"some minutes later",
       "20190521152043",
       {u"p/05211525V.png"_s, 5},
       "2019-05-21 15:25:00.000",
       StartFrom::NameMinute},
      {"named by the local clock",
       "20190521152043",
       {u"p/05211722V.png"_s, 2},
       "2019-05-21 15:22:00.000",
       StartFrom::NameMinute},
      {"before midnight and New Year",
       "20200101000100",
       {u"p/12312359V.png"_s, -2},
       "2019-12-31 23:59:00.000",
       StartFrom::NameMinute},
      {"with seconds, and a clock that is known",
       "20190521152043",
       {u"p/0521152538V.png"_s, 5},
       "2019-05-21 15:25:40.500",
       StartFrom::NameSecond},
  };
  for (const auto& row : rows) {
    PictureOfPass picture = NewPass(row.Pass);
    picture.Seek(row.Found);
    EXPECT_EQ(StartOf(picture.ForMap(true)), row.Start) << row.Label;
    EXPECT_EQ(picture.ForMap(true).StartIsFrom, row.From) << row.Label;
  }
}

TEST(PictureOfPass, AMapIsOfThePictureOfItsOwnPassOnly) {
  const FoundPicture other{u"p/02231432V.png"_s, 0};
  const struct {
    const char* Label;
    std::function<void(PictureOfPass&)> Then;
    bool EarlierFits, NextFits;  ///< the picture that is seen then
    int NextRows;
  } rows[] = {
      {"nothing", [](PictureOfPass&) {}, true, true, 300},
      {"it is gone", [](PictureOfPass& p) { p.Seek({}); }, true, true, 300},
      {"no picture of another pass",
       [](PictureOfPass& p) {
         p.SetPass(At("202202231432"));
         p.Seek({});
       },
       true, false, 0},
      {"a picture of another pass",
       [&](PictureOfPass& p) {
         p.SetPass(At("202202231432"));
         p.Seek(other);
         p.Show(909, 500);
       },
       false, true, 500},
      {"a damaged one",
       [&](PictureOfPass& p) {
         p.SetPass(At("202202231432"));
         p.Seek(other);
       },
       true, false, 0},
      {"a pass that is not looked for yet", [](PictureOfPass& p) { p.SetPass(At("202202231432")); }, true,
       false, 0},
      {"the same day of another year",
       [](PictureOfPass& p) {
         p.SetPass(At("202102230751"));
         p.Seek({});
       },
       true, false, 0},
      {"the same picture from another minute",
       [](PictureOfPass& p) {
         p.SetPass(At("202202230748"));
         p.Seek({u"p/02230751V.png"_s, 3});
         p.Show(909, 300);
       },
       true, true, 300},
      {"another channel",
       [](PictureOfPass& p) {
         p.Seek({u"p/02230751I.png"_s, 0});
         p.Show(1040, 250);
       },
       true, true, 250},
      {"another satellite", [](PictureOfPass& p) { p.SetSatellite(u"NOAA 15"_s); }, false, true, 300},
      {"another satellite and back",
       [](PictureOfPass& p) {
         p.SetSatellite(u"NOAA 15"_s);
         p.SetSatellite(u"NOAA 19"_s);
       },
       true, true, 300},
      {"another satellite's pass",
       [](PictureOfPass& p) {
         p.SetPass(At("202202231432"));
         p.SetSatellite(u"NOAA 15"_s);
         p.Seek({});
       },
       true, false, 0},
      {"another offset", [](PictureOfPass& p) { p.SetOffset(30); }, true, true, 300},
      {"an opened picture",
       [](PictureOfPass& p) {
         p.Open(u"x/0223075142.png"_s, 2022);
         p.Seek({p.OpenedPath(), 0});
         p.Show(909, 400);
       },
       false, true, 400},
      {"what has no time in its name",
       [](PictureOfPass& p) {
         EXPECT_THROW(p.Open(u"x/party.png"_s, 2022), orbit::ConvertError);
         EXPECT_EQ(p.OpenedPath(), QString());
       },
       true, true, 300},
  };
  for (const auto& row : rows) {
    PictureOfPass picture = NewPass("202202230751");
    picture.Seek({u"p/02230751V.png"_s, 0});
    picture.Show(909, 300);
    const Recording earlier = picture.ForMap(false);
    row.Then(picture);
    const Recording next = picture.ForMap(false);
    EXPECT_EQ(picture.Shows(earlier), row.EarlierFits) << row.Label;
    EXPECT_EQ(picture.Shows(next), row.NextFits) << row.Label;
    EXPECT_EQ(next.Rows, row.NextRows) << row.Label;
  }
}

TEST(PictureOfPass, OffsetsAreLearntFromNamesWithSecondsForTheirSatellite) {
  PictureOfPass picture = NewPass("202202230751");
  EXPECT_EQ(picture.OffsetS(), 0) << "the start is known to the minute only";
  picture.SetOffset(41);
  picture.Seek({u"p/02230751V.png"_s, 0});
  EXPECT_EQ(picture.OffsetS(), 41) << "the same minute, now from a name";
  picture.Open(u"x/0223075142V.png"_s, 2022);
  picture.Seek({picture.OpenedPath(), 0});
  EXPECT_EQ(picture.OffsetS(), 2.5) << "what the clock is off";
  picture.SetOffset(4.3);
  picture.SetSatellite(u"METEOR=M 2"_s);
  EXPECT_EQ(picture.OffsetS(), 0) << "another clock";
  picture.SetOffset(-5000);
  picture.Seek({u"p/02230751I.png"_s, 0});
  EXPECT_EQ(picture.OffsetS(), -900) << "another channel of the same recording, named without the second";
  EXPECT_EQ(StartOf(picture.ForMap(true)), "2022-02-23 07:36:42.000");
  picture.SetPass(At("202202231432"));
  picture.Seek({});
  picture.SetOffset(12);
  PictureOfPass later(picture.SavedCorrections() + u";junk;NOAA 18=x;NOAA 15=1e999"_s);
  EXPECT_EQ(later.SavedCorrections(), u"METEOR=M 2=-900.0;NOAA 19=4.5"_s) << "and nothing of what was by eye";
}

}  // namespace
}  // namespace pelorin::swath
