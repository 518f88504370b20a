#include "swath/attitude_corrections.h"

#include <gtest/gtest.h>

#include <memory>

namespace pelorin::swath {
namespace {

using namespace Qt::StringLiterals;

/// Of a spacecraft whose attitude a product file has told.
Recording Of(const char* name, const char* number, int columns) {
  orbit::TSatellite set;
  set.Name = name;
  set.CatalogueNumber = number;
  Recording recording;
  recording.Elements = std::make_shared<const orbit::TSatellite>(set);
  recording.SeenBy.Line.Columns = columns;
  recording.Offsets = {9, 9, 9};
  recording.OffsetsAreFrom = KnownFrom::Product;
  return recording;
}

TEST(AttitudeCorrections, TheUsersOwnCountForTheirSpacecraftAndInstrument) {
  const Recording lrpt = Of("METEOR-M2 4", "59051", 1568), unnumbered = Of("NOAA, 19", "", 909);
  AttitudeCorrections first(QString{});
  first.Learn(lrpt, {-0.404, 12, 1.25});
  first.Learn(unnumbered, {0, -0.5, 0});
  first.Learn(Of("NOAA 15", "25338", 909), {3, 3, 3});
  first.Forget(Of("NOAA 15", "25338", 909));
  const QString saved = first.Saved();
  EXPECT_EQ(saved, u"59051/1568=-0.40/10.00/1.25,\"NOAA, 19/909=0.00/-0.50/0.00\""_s);
  const AttitudeCorrections own(
      u"x,=1/2/3,33591/909=1/2,33591/909=1/2/x,33591/909=1/2/11,33591/909=nan/0/0,"_s + saved + u",\"cut"_s);
  EXPECT_EQ(own.Saved(), saved) << "what is damaged is passed over";
  constexpr Attitude told{9, 9, 9};
  const struct {
    const char* Label;
    Recording Picture;
    Attitude Expected;
  } rows[] = {
      {"the same", lrpt, {-0.4, 10, 1.25}},
      {"renamed since", Of("METEOR-M N2-4", "59051", 1568), {-0.4, 10, 1.25}},
      {"its other transmission", Of("METEOR-M2 4", "59051", 1572), told},
      {"another number", Of("METEOR-M2 4", "57166", 1568), told},
      {"a name, case aside", Of("Noaa, 19", "", 909), {0, -0.5, 0}},
      {"forgotten", Of("NOAA 15", "25338", 909), told},
  };
  for (const auto& row : rows) {
    Recording picture = row.Picture;
    own.TakeOwn(picture);
    EXPECT_EQ(picture.Offsets, row.Expected) << row.Label;
    EXPECT_EQ(picture.OffsetsAreFrom, row.Expected == told ? KnownFrom::Product : KnownFrom::User)
        << row.Label;
  }
}

}  // namespace
}  // namespace pelorin::swath
