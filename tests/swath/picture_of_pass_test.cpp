#include "swath/picture_of_pass.h"

#include <gtest/gtest.h>

#include "orbit/scalar_math.h"

namespace pelorin::swath {
namespace {

using namespace Qt::StringLiterals;

orbit::TDateTime At(const char* moment) { return orbit::ParseTimeString(moment); }

std::string StartOf(const Recording& recording) {
  return orbit::FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", recording.FirstLine());
}

/// An opened picture of which the second is known.
Recording ToSecond(const char* moment) {
  Recording known;
  known.Start = At(moment);
  known.StartIsFrom = StartFrom::NameSecond;
  return known;
}

/// NOAA 19, whose clock was found 2.5 s off, and a pass that has not been looked for.
PictureOfPass NewPass(const char* moment) {
  PictureOfPass picture(u"NOAA 19=2.5"_s);
  picture.SetSatellite(u"NOAA 19"_s);
  picture.SetPass(At(moment));
  return picture;
}

TEST(PictureOfPass, NameOfItsPictureIsTheStartOfTheMap) {
  using enum StartFrom;
  const struct {
    const char *Label, *Pass;
    FoundPicture Found;
    const char* Start;
    StartFrom From;
  } rows[] = {
      {"no picture", "20190521152043", {}, "2019-05-21 15:20:00.000", Pass},
      {"minutes later", "20190521152043", {u"p/05211525V.png"_s, 5}, "2019-05-21 15:25:00.000", NameMinute},
      {"local clock", "20190521152043", {u"p/05211722V.png"_s, 2}, "2019-05-21 15:22:00.000", NameMinute},
      {"New Year", "20200101000100", {u"p/12312359V.png"_s, -2}, "2019-12-31 23:59:00.000", NameMinute},
      {"seconds, known clock",
       "20190521152043",
       {u"p/0521152538V.png"_s, 5},
       "2019-05-21 15:25:40.500",
       NameSecond},
  };
  for (const auto& row : rows) {
    PictureOfPass picture = NewPass(row.Pass);
    picture.Seek(row.Found);
    EXPECT_EQ(StartOf(picture.ForMap(true)), row.Start) << row.Label;
    EXPECT_EQ(picture.ForMap(true).StartIsFrom, row.From) << row.Label;
  }
}

TEST(PictureOfPass, AMapIsOfThePictureOfItsOwnPassOnly) {
  constexpr const char *same = "202202230751", *other = "202202231432", *none = "";
  const struct {
    const char* Label;
    bool EarlierFits, NextFits;  ///< the picture that is seen then
    int NextRows;
    const char* Pass = same;
    const char* Found = nullptr;  ///< not looked for
    int Rows = 0;                 ///< not to be read
    int MinutesLater = 0;
    QStringList Satellites{};
  } rows[] = {
      {"nothing", true, true, 300},
      {"it is gone", true, true, 300, same, none},
      {"no picture of another pass", true, false, 0, other, none},
      {"a picture of another pass", false, true, 500, other, "p/02231432V.png", 500},
      {"a damaged one", true, false, 0, other, "p/02231432V.png"},
      {"a pass that is not looked for yet", true, false, 0, other},
      {"the same day of another year", true, false, 0, "202102230751", none},
      {"the same picture from another minute", true, true, 300, "202202230748", "p/02230751V.png", 300, 3},
      {"another channel", true, true, 250, same, "p/02230751I.png", 250},
      {"another satellite", false, true, 300, same, nullptr, 0, 0, {u"NOAA 15"_s}},
      {"and back", true, true, 300, same, nullptr, 0, 0, {u"NOAA 15"_s, u"NOAA 19"_s}},
      {"another satellite's pass", true, false, 0, other, none, 0, 0, {u"NOAA 15"_s}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    PictureOfPass picture = NewPass(same);
    picture.Seek({u"p/02230751V.png"_s, 0});
    picture.Show(909, 300);
    const Recording earlier = picture.ForMap(false);
    picture.SetPass(At(row.Pass));
    for (const QString& name : row.Satellites) picture.SetSatellite(name);
    if (row.Found) picture.Seek({QLatin1StringView(row.Found), row.MinutesLater});
    if (row.Rows > 0) picture.Show(1040, row.Rows);
    picture.SetOffset(30);  // as good a recording with another guess
    const Recording next = picture.ForMap(false);
    EXPECT_EQ(picture.Shows(earlier), row.EarlierFits);
    EXPECT_EQ(picture.Shows(next), row.NextFits);
    EXPECT_EQ(next.Rows, row.NextRows);
    picture.Open(u"x/0223075142.png"_s, ToSecond("20220223075142"));
    picture.Seek({picture.OpenedPath(), 0});
    picture.Show(909, 400);
    EXPECT_FALSE(picture.Shows(earlier)) << "an opened picture";
    EXPECT_EQ(picture.ForMap(true).Rows, 400);
    picture.SetPass(At(other));
    EXPECT_EQ(picture.OpenedPath(), QString());
  }
}

TEST(PictureOfPass, OffsetsAreLearntFromNamesWithSecondsForTheirSatellite) {
  PictureOfPass picture = NewPass("202202230751");
  EXPECT_EQ(picture.OffsetS(), 0) << "the start is known to the minute only";
  picture.SetOffset(41);
  picture.SetCut(2.5, -60);
  const auto cut = [&picture] {
    return std::pair(picture.ForMap(true).ShiftColumns, picture.ForMap(true).DriftPpm);
  };
  const std::pair found{2.5, -60.0}, none{0.0, 0.0};
  picture.Seek({u"p/02230751V.png"_s, 0});
  EXPECT_EQ(picture.OffsetS(), 41) << "the same minute, now from a name";
  EXPECT_EQ(cut(), found);
  picture.Open(u"x/0223075142V.png"_s, ToSecond("20220223075142"));
  picture.Seek({picture.OpenedPath(), 0});
  EXPECT_EQ(picture.OffsetS(), 2.5) << "what the clock is off";
  EXPECT_EQ(cut(), none) << "another recording is cut and paced as it is";
  picture.SetPass(At("202102230751"));
  EXPECT_EQ(picture.OpenedPath(), u"x/0223075142V.png"_s) << "of another year, which its name does not tell";
  picture.Seek({picture.OpenedPath(), 0});
  EXPECT_EQ(StartOf(picture.ForMap(true)), "2021-02-23 07:51:44.500");
  picture.SetPass(At("202202230751"));
  picture.Seek({picture.OpenedPath(), 0});
  picture.SetOffset(4.52);
  picture.SetCut(2.5, -60);
  picture.SetSatellite(u"METEOR=M 2"_s);
  EXPECT_EQ(picture.OffsetS(), 0) << "another clock";
  EXPECT_EQ(cut(), none);
  picture.SetOffset(-5000);
  picture.Seek({u"p/02230751I.png"_s, 0});
  EXPECT_EQ(picture.OffsetS(), -900) << "another channel of the same recording, named without the second";
  EXPECT_EQ(StartOf(picture.ForMap(true)), "2022-02-23 07:36:42.000");
  picture.SetPass(At("202202231432"));
  picture.Seek({});
  picture.SetOffset(12);
  picture.SetSatellite(u"NOAA 15"_s);
  EXPECT_EQ(picture.OffsetS(), 12) << "found by eye, it is about the picture, whoever sent it";
  picture.SetSatellite(u"NOAA 15"_s);
  Recording stamped = ToSecond("202302010000");
  stamped.StartIsFrom = StartFrom::Stamps;
  stamped.OffsetS = 1;
  for (const double expected : {1.0, 0.0}) {
    picture.Open(u"x/MSU-MR-1.png"_s, stamped);
    picture.Seek({picture.OpenedPath(), 0});
    EXPECT_EQ(picture.OffsetS(), expected) << "the product's, until the user has another";
    picture.Open(u"x/METEOR_20230201_000000.png"_s, ToSecond("20230201000000"));
    picture.Seek({picture.OpenedPath(), 0});
    picture.Open(u"x/MSU-MR-1.png"_s, stamped);
    picture.Seek({picture.OpenedPath(), 0});
    EXPECT_EQ(picture.OffsetS(), expected) << "whatever the same second was named by before";
    picture.ResetOffset();
    EXPECT_EQ(picture.OffsetS(), 1) << "and back to that";
    picture.SetOffset(0);
    picture.SetPass(At("202202231432"));
  }
  PictureOfPass later(picture.SavedCorrections() + u";junk;NOAA 18=x;NOAA 15=1e999"_s);
  EXPECT_EQ(later.SavedCorrections(), u"METEOR=M 2=-900.0;NOAA 15 (stamps)=0.0;NOAA 19=4.52"_s)
      << "and nothing of what was by eye";
}

}  // namespace
}  // namespace pelorin::swath
