#include "overlay/overlay_generator.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QTemporaryDir>
#include <cmath>
#include <memory>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "overlay/elevation_colours.h"
#include "overlay/overlay_master.h"
#include "overlay/overlay_outputs.h"
#include "overlay/overlay_text.h"
#include "overlay/palette.h"
#include "swath/pixel_geometry.h"
#include "tests/support/recordings.h"
#include "tests/support/sky_watch.h"
#include "tests/support/tables.h"

namespace pelorin::overlay {
namespace {

using namespace Qt::StringLiterals;

/// A world of cells of 10°, each with a colour that tells where it is: red its column from 180° W, green its
/// row from the north.
QImage CellWorld() {
  QImage world(720, 360, QImage::Format_RGB32);
  for (int y = 0; y < world.height(); ++y) {
    for (int x = 0; x < world.width(); ++x) world.setPixel(x, y, qRgb(x / 20 * 7, y / 20 * 14, 200));
  }
  return world;
}

/// A master, written by hand, with the background north of 45° N and from there on 100 plus the number of the
/// 10° row.
const MasterView& RowMaster() {
  static const MasterView master = [] {
    picture::IndexedImage image{kMasterWidth, kMasterHeight, {}};
    picture::ColourTable colours = OverlayPalette();
    for (int y = 0; y < kMasterHeight; ++y) {
      const int index = y < 990 ? int{kBackground} : 100 + y / 220;
      image.Pixels.insert(image.Pixels.end(), kMasterWidth, static_cast<std::uint8_t>(index));
      if (y >= 990) colours[static_cast<std::size_t>(index)] = 0x010000u * static_cast<std::uint32_t>(index);
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"m.bmp"_s);
    picture::SaveIndexedBitmap(image, colours, path);
    return *MasterView::Open(path);
  }();
  return master;
}

/// Two minutes of NOAA 12 west of Scotland, south-bound, from 12 seconds before a full minute.
OverlayRequest Pass() {
  OverlayRequest request;
  request.Picture = tests::RecordingOf(tests::ReferenceSatellite("NOAA 12"));
  request.Station = orbit::ObserverFromDegrees(55.905, -3.2, 150);
  request.Picture.Start = orbit::MakeDateTime(1999, 2, 3, 8, 59, 48);
  request.DurationMinutes = 2;
  return request;
}

TEST(OverlayGenerator, ColoursTellWhereEachPixelLooks) {
  const QImage world = CellWorld();
  OverlayRequest request = Pass();
  const OverlayResult result = GenerateOverlay(request, {{nullptr, &world}, nullptr});
  ASSERT_EQ(result.Map.size(), QSize(1040, 240));
  ASSERT_EQ(result.LinesMade, 240);
  int inside = 0;
  const swath::PixelGeometry geometry(result.Recording);
  for (const int line : {0, 77, 239}) {
    for (int s = -454; s <= 454; s += 10) {
      const swath::GroundPoint point = geometry.GroundOf({540.0 + s, 1.0 * line}).value();
      const double column = (point.LongitudeDeg + 180) / 10, row = (90 - point.LatitudeDeg) / 10;
      // Away from the cells' edges, where a hundredth of a degree decides.
      if (std::fabs(column - std::round(column)) < 0.06 || std::fabs(row - std::round(row)) < 0.06) continue;
      const QRgb expected = qRgb(static_cast<int>(column) * 7, static_cast<int>(row) * 14, 200);
      ASSERT_EQ(result.Map.pixel(540 + s, line), expected) << line << " " << s;
      ++inside;
    }
  }
  EXPECT_GT(inside, 100);
}

TEST(OverlayGenerator, TheMasterCoversTheGroundAndNorthBoundMapsAreTurned) {
  const QImage world = CellWorld();
  const OverlaySources sources{{nullptr, &world}, &RowMaster()};
  OverlayRequest request = Pass();
  request.Picture.Rows = 200;
  const OverlayResult plain = GenerateOverlay(request, sources);
  request.Overlay = Marks::All;
  const OverlayResult covered = GenerateOverlay(request, sources);
  EXPECT_EQ(plain.Index.Pixels, covered.Index.Pixels);
  int background = 0;
  for (int row = 0; row < 200; row += 7) {
    for (int x = 86; x < 995; x += 3) {
      const int index = covered.Index.Row(row)[x];
      background += index == kBackground;
      ASSERT_EQ(covered.Map.pixel(x, row),
                index == kBackground ? plain.Map.pixel(x, row) : qRgb(index, 0, 0));
    }
  }
  EXPECT_TRUE(background > 100 && background < 29 * 303 - 10) << background;

  request.Picture.SouthBound = false;
  request.Picture.Lies.Turned = true;
  const OverlayResult north = GenerateOverlay(request, sources);
  ASSERT_EQ(north.Map.size(), QSize(1040, 200));
  EXPECT_EQ(north.Map.mirrored(true, true), covered.Map);
  EXPECT_TRUE(std::equal(north.Index.Pixels.rbegin(), north.Index.Pixels.rend(), covered.Index.Pixels.begin(),
                         covered.Index.Pixels.end()));
}

TEST(OverlayGenerator, LinesHaveTheFrameOfAReceivedLine) {
  OverlayRequest request = Pass();
  request.Picture.Columns = 1050;
  const OverlayResult result = GenerateOverlay(request, {});
  const QRgb black = qRgb(0, 0, 0), white = qRgb(255, 255, 255), grey = qRgb(128, 128, 128);
  for (const auto& [line, space] : {std::pair{0, grey},
                                    {23, grey},
                                    {24, black},
                                    {25, black},
                                    {26, white},
                                    {27, white},
                                    {28, grey},
                                    {144, black},
                                    {146, white}}) {
    for (const int x : {39, 85, 995, 1049}) EXPECT_EQ(result.Map.pixel(x, line), space) << line << ' ' << x;
  }
  for (int x = 0; x < 39; ++x) {
    const bool pulse = x >= 4 && x < 32 && x % 4 < 2;
    EXPECT_EQ(result.Map.pixel(x, 5), pulse ? white : black) << x;
  }
  EXPECT_EQ(result.Map.pixel(86, 5), black);  // no ground at all
  EXPECT_EQ(result.Index.Height, 1);          // and no master: a single row
  EXPECT_EQ(result.Index.Row(0)[995], kGrey);
}

TEST(OverlayGenerator, StopsWhenToldAndKeepsWhatWasMade) {
  OverlayRequest request = Pass();
  request.PassDetails = true;
  int repaints = 0, minutes = 0;
  const OverlayResult result = GenerateOverlay(request, {}, [&](const LineProgress& progress) {
    repaints += progress.Repaint;
    minutes += progress.NewMinute;
    return progress.Line < 99;
  });
  EXPECT_EQ(result.LinesMade, 100);
  EXPECT_EQ(result.PassData.size(), 100);
  EXPECT_EQ(repaints, 5);  // 08:59:50, 09:00:00 … 09:00:30
  EXPECT_EQ(minutes, 1);
  EXPECT_EQ(result.Map.pixel(39, 99), qRgb(128, 128, 128));
  EXPECT_EQ(result.Map.pixel(39, 100), qRgb(0, 0, 0));
  const orbit::Geodetic below =
      swath::TrackAt(*request.Picture.Elements,
                     orbit::JulianDateOfDateTime(request.Picture.Start) + 12.0 / 86400)
          .Below;
  EXPECT_EQ(result.PassData[24],
            QString::asprintf("1999-02-03T09:00:00.000 %.1f %.1f", orbit::Degrees(below.Latitude),
                              orbit::Degrees(below.Longitude)));
}

TEST(OverlayGenerator, LineRatesAndLimits) {
  OverlayRequest request = Pass();
  request.Picture.SeenBy.RowsPerSecond = 4;
  EXPECT_EQ(GenerateOverlay(request, {}).LinesMade, 480);
  request.Picture.Rows = 100;
  EXPECT_EQ(GenerateOverlay(request, {}).Map.height(), 100);
  request.Picture.Rows = 600;
  const OverlayResult longer = GenerateOverlay(request, {});
  EXPECT_EQ(longer.LinesMade, 480);
  EXPECT_EQ(longer.Map.height(), 600);
  // From far out the scanner's outer rays miss the Earth: they see its edge.
  orbit::TSatellite far = tests::ReferenceSatellite("EUTELSAT 1-F1");
  request.Picture.Elements = std::make_shared<orbit::TSatellite>(far);
  EXPECT_EQ(GenerateOverlay(request, {{}, &RowMaster()}).LinesMade, 480);
  far.MeanMotion = 0;
  far.Propagator = {};
  request.Picture.Elements = std::make_shared<orbit::TSatellite>(far);
  EXPECT_THROW(GenerateOverlay(request, {}), OverlayError);
}

TEST(OverlayGenerator, DirectionAndElevationAreThoseOfThePass) {
  OverlayRequest request = Pass();
  EXPECT_TRUE(IsSouthBoundAt(*request.Picture.Elements, request.Picture.Start));
  request.PassDetails = true;
  request.DurationMinutes = 1;  // a part of the pass tells of the whole
  request.TextItems = {kTextName | kTextDirection, kTextElevation, kTextTimes};
  const OverlayResult result = GenerateOverlay(request, {});
  const double jd = orbit::JulianDateOfDateTime(request.Picture.Start);
  const auto seen =
      tests::WatchTheSky(*request.Picture.Elements, request.Station, 0, jd - 0.015, jd + 0.02, 6);
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_NEAR(result.ElevationDeg, seen[0].TopDeg, 1);
  EXPECT_EQ(result.TextLines,
            QStringList({u"NOAA 12  South"_s, QString::number(result.ElevationDeg, 'f', 0) + QChar(0xBA),
                         u"08:59-09:00"_s}));
}

TEST(OverlayText, LinesHoldTheChosenItemsInFixedOrder) {
  const PassText pass{u"METEOR 2"_s, orbit::MakeDateTime(2022, 2, 28, 23, 53, 59),
                      orbit::MakeDateTime(2022, 3, 1, 0, 7, 1), true, 62.7};
  const struct {
    int Stored;
    QString Preview, Line;
  } rows[] = {
      {64 + 1, u"NOAA 15  "_s, u"METEOR 2"_s},
      {4, u"12:34-12:43  "_s, u"23:53-00:07"_s},
      {-1, u"NOAA 15  2000 Dec 25  at  12:34-12:43  North  45º  "_s,
       u"METEOR 2  2022 Feb 28  at  23:53-00:07  South  63º"_s},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(PreviewText(MaskItems(row.Stored)), row.Preview) << row.Stored;
    EXPECT_EQ(TextLine(MaskItems(row.Stored), pass), row.Line) << row.Stored;
  }
  EXPECT_EQ(TextLine(kTextDirection, {QString(), {}, {}, false, 0}), u"North"_s);
}

TEST(OverlayOutputs, EveryFileIsWrittenWholeOrNotAtAll) {
  const QTemporaryDir folder, plain;
  const auto written = [&](const char* name) { return folder.filePath(QLatin1StringView(name)); };
  OverlayRequest request = Pass();
  request.PassDetails = true;
  request.TextItems = {kTextElevation, 0, 0};
  const OverlayResult result = GenerateOverlay(request, {{}, &RowMaster()});
  EXPECT_EQ(WriteOverlayOutputs(result, true, folder.path()).size(), 4);
  const QImage index(written("ovl.bmp"));
  ASSERT_EQ(index.size(), QSize(1040, 240));
  EXPECT_EQ(index.pixelIndex(540, 3), result.Index.Row(3)[540]);
  EXPECT_EQ(QImage(written("Result.jpg")).size(), QSize(1040, 240));
  EXPECT_TRUE(files::ReadFile(written("ovl.txt"))
                  .startsWith(QByteArray::number(std::lround(result.ElevationDeg)) + "\xBA\r\n"));
  EXPECT_EQ(files::ReadFile(written("pass.dat")).count("\r\n"), 240);
  EXPECT_EQ(WriteOverlayOutputs(GenerateOverlay(request, {}), false, plain.path()),
            QStringList{plain.filePath(u"Result.jpg"_s)});
  EXPECT_THROW(WriteOverlayOutputs(result, true, plain.filePath(u"missing"_s)), files::FileError);
}

TEST(Topography, BothLayoutsSayTheSame) {
  // Elevations that name their cell: row × 7 − column, as 16 bits.
  const auto value = [](int row, int columnFromGreenwich) {
    return static_cast<std::int16_t>(row * 7 - columnFromGreenwich % 4320);
  };
  const QTemporaryDir folder;
  QByteArray little, big;
  for (int row = 0; row < 2160; ++row) {
    for (int column = 0; column <= 4320; ++column) {
      const std::int16_t v = value(row, column), turned = value(row, column + 2160);
      little.append(static_cast<char>(v & 0xFF)).append(static_cast<char>(v >> 8));
      if (column < 4320) big.append(static_cast<char>(turned >> 8)).append(static_cast<char>(turned & 0xFF));
    }
  }
  const auto open = [&folder](const QByteArray& bytes) {
    const QString path = folder.filePath(u"elevations"_s);
    files::ReplaceFile(path, bytes);
    return Topography::Open(path);
  };
  EXPECT_FALSE(Topography::Open(folder.filePath(u"missing"_s)));
  const auto fromGreenwich = open(little), fromDateLine = open(big), odd = open(big.left(1000));
  ASSERT_TRUE(fromGreenwich && fromDateLine && odd);
  EXPECT_FALSE(odd->KnownLayout());
  for (const auto& [south, east] :
       {std::pair{0, 0}, {10800, 21599}, {5399, 10799}, {5400, 10800}, {17, 4}, {17, 5}}) {
    const int expected = value(std::min(south / 5, 2159), east / 5);
    EXPECT_EQ(fromGreenwich->ElevationAt(south, east), expected) << south << " " << east;
    EXPECT_EQ(fromDateLine->ElevationAt(south, east), expected) << south << " " << east;
  }

  swath::GroundLine line{};
  line.SouthMin.assign(2, 3000);
  line.EastMin.assign(2, 12345);
  std::array<std::uint32_t, 2> colours{};
  std::array<std::uint8_t, 2> indices{};
  GroundColours({&*odd, nullptr}, nullptr, Marks::All).ColourLine(line, colours, indices);
  EXPECT_EQ(colours[0], 0xFF808080u);
  GroundColours({&*fromGreenwich, nullptr}, nullptr, Marks::All).ColourLine(line, colours, indices);
  EXPECT_EQ(colours[0] & 0xFFFFFF, AtlasColours()[static_cast<std::size_t>(value(600, 2469))]);
  EXPECT_EQ(AtlasColours()[0], kSeaColour);
  // Heights a metre apart are of nearly one colour.
  for (std::size_t metres = 2; metres < AtlasColours().size(); ++metres) {
    const QColor lower(AtlasColours()[metres - 1]), upper(AtlasColours()[metres]);
    ASSERT_TRUE(std::abs(upper.red() - lower.red()) < 2 && std::abs(upper.green() - lower.green()) < 2 &&
                std::abs(upper.blue() - lower.blue()) < 2)
        << metres;
  }
}

}  // namespace
}  // namespace pelorin::overlay
