#include "overlay/minute_mark_offer.h"

#include <gtest/gtest.h>

#include "orbit/scalar_math.h"
#include "overlay/opened_picture.h"
#include "tests/support/minute_marks.h"

namespace pelorin::overlay {
namespace {

using swath::StartFrom;

/// What a recorder of the old format made, that began at a moment.
swath::Recording Recorded(const char* start, StartFrom from, std::optional<double> markSecond) {
  swath::Recording recording;
  recording.SeenBy = {
      "AVHRR APT", {swath::kZoneColumns, 110.74, swath::ScanLaw::Zones}, 2, false, markSecond};
  recording.Start = orbit::ParseTimeString(start);
  recording.StartIsFrom = from;
  recording.Lies = {true, false};
  return recording;
}

TEST(MinuteMarkOffer, TellsWhenThePictureBegan) {
  // Marks 30 s after the first line and a minute later.
  using enum StartFrom;
  const struct {
    const char *Label, *Start;
    StartFrom From;
    std::optional<double> MarkSecond;
    double OffsetS;
    const char* Text;  ///< empty for no offer
    double Offered = 0;
  } rows[] = {
      {"full minutes",
       "20190521152138",
       NameSecond,
       {},
       0,
       "Minute marks: begin 8.0 s earlier, if NOAA 18 marks full minutes",
       -8},
      {"its own minutes", "20190521152138", NameSecond, 13.3, 0, "Minute marks: begin 5.3 s later", 5.3},
      {"some of it done", "20190521152138", NameSecond, 13.3, 5.0, "Minute marks: begin 0.3 s later", 5.3},
      {"done", "20190521152138", NameSecond, 13.3, 5.2, ""},
      {"the minute alone", "20190521152100", NameMinute, 13.3, 0, "Minute marks: begin 43.3 s later", 43.3},
      {"the minute, laid by eye", "20190521152100", NameMinute, 13.3, 44, "Minute marks: begin 0.7 s earlier",
       43.3},
      {"no time but the pass", "20190521152100", Pass, 13.3, 0, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    swath::Recording recording = Recorded(row.Start, row.From, row.MarkSecond);
    recording.OffsetS = row.OffsetS;
    const auto offer = OfferByMarks({60, 180}, recording);
    ASSERT_EQ(offer.has_value(), *row.Text != '\0');
    if (!offer) continue;
    EXPECT_EQ(TextOf(*offer, QStringLiteral("NOAA 18")).toStdString(), row.Text);
    EXPECT_NEAR(offer->OffsetS, row.Offered, 1e-9);
  }
}

TEST(MinuteMarkOffer, MarksAreFoundBeforeTheImageHoweverItIsStored) {
  const struct {
    const char* Label;
    int Before;
    swath::Stored Lies;
    double RowsPerSecond = 2;
    bool Found = true;
  } rows[] = {
      {"with its frame, turned", 86, {true, false}}, {"mirrored", 86, {false, true}},
      {"a few columns before the image", 5, {}},     {"the image alone", 0, {}, 2, false},
      {"a scanner twice as fast", 86, {}, 4, false},
  };
  for (const auto& row : rows) {
    swath::Recording recording = Recorded("20190521152138", StartFrom::NameSecond, {});
    recording.FirstColumn = row.Before;
    recording.Lies = row.Lies;
    recording.SeenBy.RowsPerSecond = row.RowsPerSecond;
    EXPECT_EQ(
        FindMinuteMarkLines(
            Restored(tests::WithMinuteMarks(row.Before, row.Before + swath::kZoneColumns), {}, row.Lies),
            recording),
        row.Found ? std::vector<int>({60, 180}) : std::vector<int>())
        << row.Label;
  }
}

}  // namespace
}  // namespace pelorin::overlay
