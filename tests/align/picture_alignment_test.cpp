#include "align/picture_alignment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "tests/support/painted_pass.h"
#include "tests/support/tables.h"

namespace pelorin::align {
namespace {

using swath::Recording;
using swath::ScanLaw;

class PictureAlignmentTest : public testing::Test {
 protected:
  static const tests::PaintedEarth& Master() {
    static const tests::PaintedEarth earth;
    return earth;
  }
  static const Ground& Earth() {
    static const auto shores = lines::FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"));
    static const Ground ground{Master().Surfaces(), &*shores};
    return ground;
  }
  static QImage Painted(const Recording& recording, const tests::Weather& weather) {
    return tests::PaintedPass(recording, Master(), weather);
  }

  /// Ten minutes from a minute of 2022-02-23 on.
  static Recording Pass(const char* satellite, int minuteOfDay, const swath::LineShape& line,
                        double rowsPerSecond) {
    Recording recording;
    recording.Elements = std::make_shared<const orbit::TSatellite>(tests::DemonstrationSatellite(satellite));
    recording.SeenBy = {"scanner", line, rowsPerSecond, false};
    recording.Start = orbit::MakeDateTime(2022, 2, 23, minuteOfDay / 60, minuteOfDay % 60);
    recording.Rows = static_cast<int>(600 * rowsPerSecond);
    recording.Columns = line.Columns;
    return recording;
  }
  static Recording Apt(int minuteOfDay, ScanLaw law = ScanLaw::Zones) {
    return Pass("NOAA 19", minuteOfDay, {909, 110.74, law}, 2);
  }
};

/// 300 lines in the middle came half a minute late, and the ten before them not at all.
Recording Parted(Recording recording) {
  std::vector<double> seconds;
  for (int line = 0; line < recording.Rows; ++line) {
    const int late = line - recording.Rows / 2;
    const double lost = late < 0 && late >= -10 ? std::nan("") : 0;
    seconds.push_back(line / recording.SeenBy.RowsPerSecond + (late < 0 ? 0 : 30) + lost);
  }
  recording.LineTimesS = std::make_shared<const std::vector<double>>(seconds);
  return recording;
}

/// In a file with a frame, north up.
Recording Turned(Recording recording) {
  recording.Columns += 131;
  recording.FirstColumn = 86;
  recording.Lies.Turned = true;
  return recording;
}

TEST_F(PictureAlignmentTest, FindsWhatWasWrong) {
  const auto lrpt = [](int minute) {
    return Pass("NOAA 19", minute, {1568, 110.1, ScanLaw::EvenAngles}, 6.498);
  };
  const struct {
    const char* Label;
    Recording Truth;
    Moves Off;
    std::vector<tests::Weather> Channels;
  } rows[] = {
      {"Europe northward, turned, with a frame", Turned(Apt(1062)), {-137.4, 2, 0.2, -1.2}, {{0.4, 8}}},
      {"Europe southward, scanned evenly, with a gap",
       Parted(lrpt(474)),
       {41.2, 0, -0.6, 1.5},
       {{0.35, 6, true}}},
      {"by the table on a sphere", Apt(376, ScanLaw::ZonesSphere), {255.6, -6, 0, 0}, {{0.3, 5}}},
      {"islands, one channel noise alone", Apt(640), {-584, -1, 0.1, 0.8}, {{0.9, 90}, {0.3, 10, true, 2}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    std::vector<QImage> channels;
    for (const tests::Weather& weather : row.Channels) channels.push_back(Painted(row.Truth, weather));
    const Moves back{-row.Off.TimeS, -row.Off.ShiftColumns, -row.Off.RollDeg, -row.Off.YawDeg};
    const PictureAlignment found =
        AlignPicture(Moved(row.Truth, back), channels, Earth(), {}, [](double) { return true; });
    ASSERT_EQ(found.Is, Finding::Found) << TextOf(found.Reason).toStdString() << ' ' << found.ChancePeaks;
    EXPECT_GT(found.Gate, kClearGate);
    EXPECT_GT(found.Windows.size(), 20u);
    // Shift and roll are told apart at the swath's ends only: what counts is where the ground lies.
    const swath::PixelGeometry truth(row.Truth), aligned(found.Aligned);
    for (const double across : {0.1, 0.5, 0.9}) {
      for (const double along : {0.1, 0.45, 0.9}) {
        const swath::PixelPoint place = swath::InFile(
            row.Truth,
            {row.Truth.FirstColumn + across * row.Truth.SeenBy.Line.Columns, along * row.Truth.Rows});
        const auto ground = truth.GroundOf(place);
        ASSERT_TRUE(ground);
        const auto seen = aligned.PixelOf(*ground);
        ASSERT_TRUE(seen);
        EXPECT_NEAR(seen->Column, place.Column, 1) << across << ' ' << along;
        EXPECT_NEAR(seen->Row, place.Row, 1) << across << ' ' << along;
      }
    }
  }
}

TEST_F(PictureAlignmentTest, RefusesWhatItDoesNotKnow) {
  const Recording europe = Apt(1062);
  const QImage picture = Painted(europe, {0.3, 5});
  QImage plain(909, 1200, QImage::Format_Grayscale8);
  plain.fill(90);
  Recording small = europe, ocean = Apt(238), other = europe, later = europe;
  small.Rows = small.Columns = 8;
  other.Elements = std::make_shared<const orbit::TSatellite>(tests::DemonstrationSatellite("NOAA 18"));
  later.Start.Days += 0.3;
  Recording half = europe;
  half.Rows = 600;
  Recording large = Pass("NOAA 19", 1062, {3000, 110.7, ScanLaw::EvenAngles}, 20000 / 600.0);
  Recording lost = europe, nowhere = europe;
  lost.LineTimesS = std::make_shared<const std::vector<double>>(europe.Rows, std::nan(""));
  orbit::TSatellite fallen = *europe.Elements;
  fallen.MeanMotion = 0;
  fallen.Propagator = {};
  nowhere.Elements = std::make_shared<const orbit::TSatellite>(fallen);
  const struct {
    const char* Label;
    Recording Of;
    QImage Picture;
    NotFoundFor Reason;
  } rows[] = {
      {"one colour", europe, plain, NotFoundFor::OneColour},
      {"noise", europe, Painted(ocean, {0, 60}), NotFoundFor::Noise},
      {"8 by 8", small, plain.copy(0, 0, 8, 8), NotFoundFor::TooSmall},
      {"of another size", half, picture, NotFoundFor::TooSmall},
      {"3,000 by 20,000, mirrored", large, picture.mirrored(true, false).scaled(3000, 20000),
       NotFoundFor::Nothing},
      {"no line has a moment", lost, picture, NotFoundFor::TooSmall},
      {"nowhere above the Earth", nowhere, picture, NotFoundFor::NoOrbit},
      {"mirrored", europe, picture.mirrored(true, false), NotFoundFor::Nothing},
      {"upside down", europe, picture.mirrored(true, true), NotFoundFor::Nothing},
      {"another satellite", other, picture, NotFoundFor::Nothing},
      {"another time", later, picture, NotFoundFor::Nothing},
      {"clouds alone", europe, Painted(europe, {1, 5}), NotFoundFor::Nothing},
      {"the sea", ocean, Painted(ocean, {0.3, 5}), NotFoundFor::FewCoasts},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const auto found =
        AlignPicture(row.Of, std::span(&row.Picture, 1), Earth(), {}, [](double) { return true; });
    EXPECT_EQ(found.Is, Finding::NotFound) << found.ChancePeaks << ' ' << found.Gate;
    EXPECT_FALSE(TextOf(found.Reason).isEmpty());
    if (row.Reason != NotFoundFor::Nothing) {
      EXPECT_EQ(found.Reason, row.Reason);
    }
    EXPECT_EQ(found.Aligned.OffsetS, row.Of.OffsetS);
    EXPECT_EQ(found.Aligned.Offsets, row.Of.Offsets);
  }
}

TEST_F(PictureAlignmentTest, EndsWhenItIsTold) {
  const Recording recording = Apt(1062);
  const QImage picture = Painted(recording, {});
  for (const double after : {0.0, 0.2, 0.6, 0.8}) {
    int calls = 0;
    const auto found = AlignPicture(recording, std::span(&picture, 1), Earth(), {}, [&](double share) {
      calls += share > after;
      return share <= after;
    });
    EXPECT_EQ(found.Is, Finding::Stopped) << after;
    EXPECT_LE(calls, 4) << "asked again and again";
    EXPECT_EQ(found.Aligned.OffsetS, 0);
  }
}

TEST_F(PictureAlignmentTest, LandLiesWhereTheMasterHasIt) {
  Recording recording = Apt(474);
  constexpr int margin = 14;
  const Plane land = LandIn(Frame::OfPixels(recording), margin, *Earth().Shores, Earth().SurfacesOf);
  ASSERT_EQ(land.Columns, 909 + 2 * margin);
  const swath::PixelGeometry geometry(recording);
  int agree = 0, differ = 0, shore = 0;
  for (int row = 0; row < recording.Rows; row += 3) {
    for (int column = 0; column < recording.Columns; column += 3) {
      const float share = land.Row(row + margin)[column + margin];
      ASSERT_TRUE(share > -0.001F && share < 1.001F);
      shore += share > 0.05F && share < 0.95F;
      const auto ground = geometry.GroundOf({1.0 * column, 1.0 * row});
      ASSERT_TRUE(ground);
      const swath::Surface surface =
          Master().At(static_cast<int>(std::lround((90 - ground->LatitudeDeg) * 60)),
                      static_cast<int>(std::lround((ground->LongitudeDeg + 360) * 60)) % 21600);
      if (surface == swath::Surface::Unsure) continue;
      ++((share > 0.5F) == (surface == swath::Surface::Land) ? agree : differ);
    }
  }
  EXPECT_LT(differ, 0.005 * agree) << agree << ' ' << differ;
  EXPECT_GT(shore, 1000);
}

}  // namespace
}  // namespace pelorin::align
