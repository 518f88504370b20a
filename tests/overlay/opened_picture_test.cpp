#include "overlay/opened_picture.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include "files/file_error.h"
#include "orbit/scalar_math.h"
#include "overlay/recording_channels.h"
#include "tests/support/decoded_pass.h"
#include "tests/support/tables.h"

namespace pelorin::overlay {
namespace {

using namespace Qt::StringLiterals;

std::string Text(orbit::TDateTime moment) { return orbit::FormatDateTime("yyyy-mm-dd hh:nn:ss", moment); }

ClockOffsets SummerTime(int) { return {0, 60}; }

void Unheard(const QString& text) { FAIL() << text.toStdString(); }

const swath::ScannerTable& Scanners() {
  static std::vector<std::string> problems;
  static const swath::ScannerTable table =
      swath::LoadScannerTables({QStringLiteral(PELORIN_SCANNERS)}, problems);
  return table;
}

TEST(OpenedPicture, NamesTellWhatTheyCan) {
  const QTemporaryDir folder;
  const struct {
    const char* Name;
    int Columns, Written;
    const char* Start;  ///< empty for none
    swath::StartFrom From = swath::StartFrom::NameSecond;
    const char* Satellite = "";
    swath::KnownFrom LiesIsFrom = swath::KnownFrom::Name;
    int ColumnsShown = 0;
    std::size_t OtherStarts = 1;
    bool HasProblem = false;
  } rows[] = {
      {"05211525V.png", 909, 2019, "2019-05-21 15:25:00", swath::StartFrom::NameMinute, "",
       swath::KnownFrom::Default},
      {"02290001.png", 909, 2019, "", swath::StartFrom::Pass, "", swath::KnownFrom::Default, 0, 0},
      {"NOAA-18-20240104-112544.png", 2080, 2026, "2024-01-04 11:25:44", swath::StartFrom::NameSecond,
       "NOAA 18", swath::KnownFrom::Name, 1040},
      {"METEOR-M2-4_20250412_193512Z.png", 1568, 2026, "2025-04-12 19:35:12", swath::StartFrom::NameSecond,
       "METEOR-M2 4", swath::KnownFrom::Name, 0, 0},
      {"METEOR-M2-4_20250412_193512Z_corrected.png", 1700, 2026, "2025-04-12 19:35:12",
       swath::StartFrom::NameSecond, "METEOR-M2 4", swath::KnownFrom::Name, 0, 0, true},
      {"gqrx_20220101_143000_137912500.png", 909, 2026, "2022-01-01 14:30:00", swath::StartFrom::NameSecond,
       "28654", swath::KnownFrom::Name, 0, 0},
      {"gqrx_20220101_143000_137100000.png", 1568, 2026, "2022-01-01 14:30:00", swath::StartFrom::NameSecond,
       "", swath::KnownFrom::Name, 0, 0},
      {"party.png", 640, 2026, "", swath::StartFrom::Pass, "", swath::KnownFrom::Default, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    const QString path = folder.filePath(QLatin1StringView(row.Name));
    QImage(row.Columns, 16, QImage::Format_RGB32).save(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDateTime(QDate(row.Written, 12, 1), QTime(1, 2), Qt::UTC),
                     QFileDevice::FileModificationTime);
    file.close();
    const OpenedPicture opened = OpenPicture(path, SummerTime, Scanners());
    EXPECT_EQ(opened.HasStart, *row.Start != 0);
    EXPECT_EQ(opened.HasStart ? Text(opened.Known.Start) : std::string(), row.Start);
    EXPECT_EQ(opened.Known.StartIsFrom, row.From);
    EXPECT_EQ(opened.Satellite + opened.CatalogueNumber, QLatin1StringView(row.Satellite));
    EXPECT_EQ(opened.Known.LiesIsFrom, row.LiesIsFrom);
    EXPECT_EQ(opened.Known.Columns, row.ColumnsShown > 0 ? row.ColumnsShown : row.Columns);
    EXPECT_EQ(opened.Channels.size(), row.ColumnsShown > 0 ? 2u : 1u);
    EXPECT_EQ(ChannelsOfRecording(opened, Unheard).size(), opened.Channels.size());
    EXPECT_EQ(opened.OtherStarts.size(), row.OtherStarts);
    EXPECT_EQ(!opened.Problem.isEmpty(), row.HasProblem);
  }
}

TEST(OpenedPicture, TheMomentIsTheOneAtWhichTheSatelliteWasInSight) {
  // NOAA 12 rose at Edinburgh some minutes before nine, UTC.
  const orbit::TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
  const orbit::Observer station = orbit::ObserverFromDegrees(55.905, -3.2, 150);
  OpenedPicture opened;
  opened.HasStart = true;
  opened.Known.Rows = 600;
  opened.Known.Columns = 909;
  const struct {
    const char* Label;
    int Hour;
    std::vector<int> LocalMinutes;
    const char* Start;
    bool WasInSight;
    int Year = 1999;
  } rows[] = {
      {"UTC", 8, {60, 120}, "1999-02-03 08:58:00", true},
      {"a clock two hours ahead", 10, {60, 120}, "1999-02-03 08:58:00", true},
      {"neither", 13, {60, 120}, "1999-02-03 13:58:00", false},
      {"elements that know nothing of it", 5, {60}, "1997-02-03 05:58:00", true, 1997},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    opened.Known.Start = orbit::MakeDateTime(row.Year, 2, 3, row.Hour, 58);
    opened.OtherStarts.clear();
    for (const int minutes : row.LocalMinutes) {
      opened.OtherStarts.push_back({opened.Known.Start.Days - minutes / orbit::kMinutesPerDay});
    }
    const auto placed = PlaceRecording(
        opened, [&](orbit::TDateTime) { return std::optional(satellite); }, swath::ScannerTable(), station);
    ASSERT_TRUE(placed);
    EXPECT_EQ(Text(placed->Recording.Start), row.Start);
    EXPECT_EQ(placed->WasInSight, row.WasInSight);
    EXPECT_EQ(placed->Recording.Lies.Turned, !placed->Recording.SouthBound);
  }
  EXPECT_FALSE(PlaceRecording(
      opened, [](orbit::TDateTime) { return std::optional<orbit::TSatellite>(); }, swath::ScannerTable(),
      station));
}

TEST(OpenedPicture, ProductsTellScannerMomentsAndElements) {
  const QTemporaryDir folder;
  const orbit::TDateTime start = orbit::MakeDateTime(2022, 2, 23, 17, 33, 12);
  tests::LeaveDecodedPass(folder.path(), start, 400);
  const OpenedPicture opened = OpenPicture(folder.filePath(u"MSU-MR-2.png"_s), SummerTime, Scanners());
  EXPECT_EQ(opened.Channels.size(), 2u);
  EXPECT_EQ(opened.Channel.Name, u"Channel 2"_s);
  const std::vector<QImage> channels = ChannelsOfRecording(opened, Unheard);
  ASSERT_EQ(channels.size(), 2u);
  EXPECT_EQ(channels[0].pixelColor(9, 9).value(), 160) << "itself first";
  EXPECT_EQ(channels[1].pixelColor(9, 9).value(), 80);
  ASSERT_TRUE(QImage(1568, 396, QImage::Format_Grayscale8).save(folder.filePath(u"MSU-MR-1.png"_s)));
  QString told;
  EXPECT_EQ(ChannelsOfRecording(opened, [&](const QString& text) { told = text; }).size(), 1u);
  EXPECT_TRUE(told.contains(u"MSU-MR-1.png"_s)) << told.toStdString();
  ASSERT_TRUE(opened.OwnSet);
  const auto placed = PlaceRecording(
      opened, [](orbit::TDateTime) { return std::optional<orbit::TSatellite>(); }, swath::ScannerTable(),
      orbit::ObserverFromDegrees(55.905, -3.2, 150));
  ASSERT_TRUE(placed);
  const swath::Recording& recording = placed->Recording;
  EXPECT_EQ(Text(recording.Start), "2022-02-23 17:33:12");
  EXPECT_NEAR(recording.SecondsOfLine(399), 399 * tests::kLrptGroupS / 8, 1e-3);
  EXPECT_EQ(recording.SeenBy.Line.AngleDeg, 110.6);
  EXPECT_NEAR(recording.SeenBy.RowsPerSecond, 8 / tests::kLrptGroupS, 1e-3) << "by the stamps";
  EXPECT_EQ(recording.Offsets, (swath::Attitude{2.3, 0, 2.4}));
  EXPECT_EQ(recording.OffsetS, 0.2);
  EXPECT_FALSE(recording.Lies.Turned) << "decoders leave pictures as they are received";
  EXPECT_TRUE(IsOf(opened, *opened.OwnSet));

  // Another satellite has another scanner; one that stands still has none, and nobody waits for its rise.
  for (const char* other : {"NOAA 12", "EUTELSAT 1-F1"}) {
    const auto wrong = PlaceRecording(
        opened, [&](orbit::TDateTime) { return std::optional(tests::ReferenceSatellite(other)); }, Scanners(),
        orbit::ObserverFromDegrees(50, -120, 0));
    EXPECT_TRUE(wrong && !wrong->Match.Problem.isEmpty()) << other;
  }
  const auto rewidened = [&](int columns) {
    QImage(columns, 400, QImage::Format_Grayscale8).save(folder.filePath(u"MSU-MR-1.png"_s));
    return OpenPicture(folder.filePath(u"MSU-MR-1.png"_s), SummerTime, Scanners()).Problem;
  };
  EXPECT_TRUE(rewidened(784).contains(u"784 columns, but its product 1568"_s));
  EXPECT_EQ(rewidened(1568), QString());
  EXPECT_THROW(OpenPicture(folder.filePath(u"missing.png"_s), SummerTime, Scanners()), files::FileError);

  files::ReplaceFile(folder.filePath(u"product.cbor"_s), "damaged");
  const OpenedPicture alone = OpenPicture(folder.filePath(u"MSU-MR-2.png"_s), SummerTime, Scanners());
  EXPECT_EQ(alone.Image.width(), 1568);
  EXPECT_TRUE(alone.Notes.join(u'\n').contains(folder.filePath(u"product.cbor"_s))) << "why it is alone";
  EXPECT_THROW(OpenPicture(folder.path(), SummerTime, Scanners()), files::FileError);
}

TEST(OpenedPicture, PicturesAreTurnedAsTheyAreWanted) {
  QImage picture(3, 2, QImage::Format_RGB32);
  for (int i = 0; i < 6; ++i) picture.setPixel(i % 3, i / 3, qRgb(i, 0, 0));
  const struct {
    swath::Stored From, To;
    int FirstPixel;
  } rows[] = {{{}, {}, 0},
              {{true, false}, {true, false}, 0},
              {{false, false}, {true, false}, 5},
              {{true, false}, {false, true}, 3},
              {{false, true}, {false, false}, 2}};
  for (const auto& row : rows) {
    EXPECT_EQ(qRed(Restored(picture, row.From, row.To).pixel(0, 0)), row.FirstPixel);
  }
}

}  // namespace
}  // namespace pelorin::overlay
