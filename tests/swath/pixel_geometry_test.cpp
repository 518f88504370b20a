#include "swath/pixel_geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>

#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "swath/apt_line.h"
#include "swath/ground_line.h"
#include "swath/scanner_match.h"
#include "tests/support/tables.h"

namespace pelorin::swath {
namespace {

using namespace orbit;

/// Degrees between two longitudes, −180 … 180.
double Apart(double a, double b) { return std::remainder(a - b, 360.0); }

double KmApart(const GroundPoint& a, const GroundPoint& b) {
  const double east = Apart(a.LongitudeDeg, b.LongitudeDeg) * std::cos(Radians(b.LatitudeDeg));
  return std::hypot(a.LatitudeDeg - b.LatitudeDeg, east) * 111.2;
}

Instrument Named(const char* name, LineShape line, double rowsPerSecond, bool steersInYaw = false) {
  return {name, line, rowsPerSecond, steersInYaw};
}

const LineShape kAvhrr{2048, 110.74 * 2048 / 2047, ScanLaw::EvenAngles};
/// Those of the reference table.
const std::map<std::string, Instrument> kInstruments{
    {"AVHRR APT", Named("AVHRR APT", {kZoneColumns, 110.74, ScanLaw::Zones}, 2)},
    {"AVHRR", Named("AVHRR", kAvhrr, 6)},
    {"AVHRR steered", Named("AVHRR steered", kAvhrr, 6, true)},
    {"MSU-MR LRPT", Named("MSU-MR LRPT", {1568, 110.1, ScanLaw::EvenAngles}, 6.498)},
    {"MSU-MR HRPT", Named("MSU-MR HRPT", {1572, 110.4, ScanLaw::EvenAngles}, 6.5)},
};

Recording Of(const TSatellite& satellite, const Instrument& scanner, double jd, int rows) {
  Recording recording;
  recording.Elements = std::make_shared<const TSatellite>(satellite);
  recording.SeenBy = scanner;
  recording.Start = DateTimeOfJulianDate(jd);
  recording.Rows = rows;
  recording.Columns = scanner.Line.Columns;
  return recording;
}

TEST(PixelGeometry, AgreesWithTheReferenceTable) {
  for (const tests::Row& row : tests::ReadTable("swath.csv")) {
    SCOPED_TRACE(row.Text("satellite") + ' ' + row.Text("jd_utc") + ' ' + row.Text("column") + ' ' +
                 row.Text("yaw_deg"));
    const TSatellite satellite = tests::ReferenceSatellite(row.Text("satellite"), "swath-elements.2li");
    const double jd = row.Number("jd_utc"), column = row.Number("column");
    Recording recording = Of(satellite, kInstruments.at(row.Text("instrument")), jd, 1);
    recording.Offsets = {row.Number("roll_deg"), row.Number("pitch_deg"), row.Number("yaw_deg")};
    const PixelGeometry geometry(recording);
    const auto seen = geometry.GroundOf({column, 0});
    ASSERT_TRUE(seen);
    const GroundPoint published{row.Number("latitude_deg"), row.Number("longitude_deg")};
    EXPECT_LT(KmApart(*seen, published), 5e-4);
    const auto pixel = geometry.PixelOf(published);
    ASSERT_TRUE(pixel);
    EXPECT_NEAR(pixel->Column, column, 2e-3);
    EXPECT_NEAR(pixel->Row, 0, 2e-3);
    const ScannerAxes axes =
        AxesAt(SatelliteStateKm(satellite, jd), jd, recording.SeenBy.YawSteering, recording.Offsets);
    EXPECT_FALSE(PointSeen(axes, Radians(75)) || PointSeen(axes, Radians(120))) << "past the Earth";
    if (row.Text("instrument") != "AVHRR APT" || recording.Offsets.YawDeg != 0) continue;
    // The classic table does without the ray: some kilometres apart.
    const GroundTrack track = TrackAt(satellite, jd);
    const ScanDistances distances = ScanDistancesOf(ScannerFamily::Noaa, track.Below.Altitude);
    EXPECT_LT(KmApart(PointAcross(track, distances[static_cast<std::size_t>(column)]), published), 12);
  }
}

/// Every scanner of the program's table on each of its satellites, and the classic one, half an orbit long,
/// so that poles and the date line are met; lost lines, turns and frames in between.
TEST(PixelGeometry, PixelsAndGroundPointsAreEachOthersInverse) {
  ScannerTable table;
  std::vector<std::string> problems;
  table = LoadScannerTables({QStringLiteral(PELORIN_SCANNERS)}, problems);
  const TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
  std::vector<std::pair<Instrument, Attitude>> kinds{
      {Named("classic", {kZoneColumns, 110.74, ScanLaw::ZonesSphere}, 2), {}},
      {Named("METEOR of old", {kZoneColumns, 78, ScanLaw::Zones}, 2), {}}};
  for (const Scanner& scanner : table.Scanners()) {
    for (const Carrier& carrier : scanner.Carriers) {
      Instrument instrument = scanner;
      instrument.Line = ScannerTable::Flown{&scanner, &carrier}.Line();
      kinds.emplace_back(instrument, carrier.Offsets);
    }
  }
  ASSERT_GT(kinds.size(), 15u);
  int turn = 0, lost = 0;
  for (const auto& [scanner, attitude] : kinds) {
    SCOPED_TRACE(scanner.Name);
    Recording recording = Of(satellite, scanner, satellite.Epoch + 0.01 * ++turn,
                             static_cast<int>(3000 * scanner.RowsPerSecond));
    recording.Offsets = attitude;
    recording.Lies = {turn % 2 == 1, turn % 3 == 0};
    recording.ShiftColumns = turn % 5 * 0.7;
    recording.DriftPpm = turn % 5 == 0 ? 0 : 800 * (turn % 5 - 2.5);
    if (scanner.Line.Law != ScanLaw::EvenAngles) {
      recording.FirstColumn = kImageBegin;
      recording.Columns = kUsualLineWidth;
    }
    if (turn % 4 == 0) {
      // Lines 150 … 449 were lost, lines 500 and on came three minutes late, every other one is late a
      // little.
      std::vector<double> times;
      for (int line = 0; line < recording.Rows; ++line) {
        times.push_back(line >= 150 && line < 450
                            ? std::nan("")
                            : (line + line % 2 * 0.4) / scanner.RowsPerSecond + (line >= 500 ? 180 : 0));
      }
      recording.LineTimesS = std::make_shared<const std::vector<double>>(times);
    }
    const PixelGeometry geometry(recording);
    GroundLineFinder finder(recording);
    GroundLine ground;
    const int columns = scanner.Line.Columns;
    for (int line = 0; line < recording.Rows; line += std::max(1, recording.Rows / 97)) {
      const double seconds = recording.SecondsOfLine(line);
      if (std::isnan(seconds)) {
        EXPECT_FALSE(geometry.GroundOf({recording.Columns / 2.0, 1.0 * recording.RowOfLine(line)}));
        ++lost;
        continue;
      }
      finder.Find(JulianDateOfMoment({recording.FirstLine().Days + seconds / kSecondsPerDay}), ground);
      for (int column = 0; column < columns; column += columns / 13) {
        const int received = column + recording.FirstColumn;
        const PixelPoint pixel{1.0 * (recording.RunsLeft() ? recording.Columns - 1 - received : received),
                               1.0 * recording.RowOfLine(line)};
        const auto seen = geometry.GroundOf(pixel);
        ASSERT_TRUE(seen) << column << ' ' << line;
        const auto back = geometry.PixelOf(*seen);
        ASSERT_TRUE(back) << column << ' ' << line;
        ASSERT_NEAR(back->Column, pixel.Column, 0.01) << line;
        ASSERT_NEAR(back->Row, pixel.Row, 0.01) << line;
        const auto between = geometry.GroundOf({pixel.Column, pixel.Row + 0.35});
        ASSERT_TRUE(between) << column << ' ' << line;
        ASSERT_NEAR(geometry.PixelOf(*between).value_or(pixel).Row, pixel.Row + 0.35, 0.01) << line;
        const auto i = static_cast<std::size_t>(column);
        ASSERT_NEAR(ground.SouthMin[i], (90 - seen->LatitudeDeg) * 60, 0.53) << column << ' ' << line;
        ASSERT_TRUE(ground.EastMin[i] >= 0 && ground.EastMin[i] < kMinutesOfTurn);
        const double parallel = std::cos(Radians(seen->LatitudeDeg));
        ASSERT_NEAR(Apart(ground.EastMin[i] / 60.0, seen->LongitudeDeg) * 60 * parallel, 0, 0.53);
      }
    }
    EXPECT_FALSE(geometry.GroundOf({-1, 5}) && geometry.GroundOf({recording.Columns - 0.4, 5}));
  }
  EXPECT_GE(lost, 1);
  EXPECT_FALSE(PixelGeometry(Of(satellite, kinds[0].first, satellite.Epoch, 0)).GroundOf({400, -0.5}));
}

TEST(Recording, LinesHaveTheirOwnMoments) {
  const double lost = std::nan("");
  Recording stamped;
  stamped.SeenBy.RowsPerSecond = 2;
  stamped.LineTimesS = std::make_shared<const std::vector<double>>(
      std::vector<double>{lost, 0, 0.5, lost, lost, 2, 2.5, 60, 60.5});
  const struct {
    const char* Label;
    double Seconds;
    std::optional<double> Line;
  } rows[] = {
      {"at a line", 0.5, 2},
      {"between two", 2.25, 5.5},
      {"damaged lines in their order", 1.25, 3.5},
      {"before the first", -1, -1},
      {"past the last", 61, 9},
      {"just behind a line", 2.7, 6.4},
      {"in a gap", 30, std::nullopt},
      {"just before a line", 59.8, 6.6},
  };
  for (const auto& row : rows) {
    const auto line = stamped.LineAtSecond(row.Seconds);
    ASSERT_EQ(line.has_value(), row.Line.has_value()) << row.Label;
    EXPECT_NEAR(line.value_or(0), row.Line.value_or(0), 1e-9) << row.Label;
  }
  EXPECT_TRUE(std::isnan(stamped.SecondsOfLine(3)) && std::isnan(stamped.SecondsOfLine(9)));
  EXPECT_EQ(stamped.LinesOf(1), 7) << "the gap counts";
  EXPECT_EQ(stamped.LinesOf(2), 9);
  // Far more than any clock drifts: a second lasts two, a line one.
  stamped.DriftPpm = 1e6;
  EXPECT_EQ(stamped.SecondsOfLine(7), 120);
  EXPECT_NEAR(stamped.LineAtSecond(119.6).value_or(0), 6.6, 1e-9);
  EXPECT_NEAR(stamped.SecondsAt(6.6), 119.6, 1e-9);
  EXPECT_EQ(stamped.LinesOf(1.95), 7);
  stamped.LineTimesS = nullptr;
  EXPECT_EQ(stamped.SecondsOfLine(9), 9);
  EXPECT_EQ(stamped.LineAtSecond(9), 9);
  EXPECT_EQ(stamped.LinesOf(15), 900);
  stamped.DriftPpm = 0;
  EXPECT_EQ(stamped.SecondsOfLine(9), 4.5);
  EXPECT_EQ(stamped.LinesOf(15), 1800);
}

TEST(ScannerMatch, SatelliteAndWidthTellTheScanner) {
  std::vector<std::string> problems;
  const ScannerTable table = LoadScannerTables({QStringLiteral(PELORIN_SCANNERS)}, problems);
  ASSERT_TRUE(problems.empty());
  const struct {
    const char *Name, *Number;
    int Columns;
    const char* Scanner;  ///< or what the problem says
    int FirstColumn;
    double AngleDeg;
  } rows[] = {
      {"METEOR-M2 4", "59051", 1568, "MSU-MR LRPT", 0, 110.1},
      {"METEOR-M2 4", "59051", 0, "MSU-MR LRPT", 0, 110.1},
      {"METEOR-M 2", "40069", 1572, "MSU-MR HRPT", 0, 110.6},
      {"METEOR-M2 4", "59051", 1040, "fits no scanner of METEOR-M2 4, which has MSU-MR LRPT (1568)", 0, 0},
      {"NOAA 19", "33591", 1040, "AVHRR APT", 86, 110.74},
      {"NOAA 19", "33591", 909, "AVHRR APT", 0, 110.74},
      {"NOAA 19", "33591", 915, "AVHRR APT", 6, 110.74},
      {"NOAA 19", "33591", 2080, "AVHRR APT", 86, 110.74},
      {"NOAA 19", "33591", 2048, "AVHRR HRPT", 0, 110.7941},
      {"NOAA 19", "33591", 1500, "A picture of 1500 columns fits no scanner", 0, 0},
      {"NOAA 12", "21263", 0, "APT", 86, 110.74},
      {"METEOR 3-5", "21655", 909, "APT", 0, 78},
      {"RESURS O1-4", "25394", 1040, "APT", 86, 96},
      {"METEOR-M 1", "35865", 1568, "No scanner of METEOR-M 1 is known", 0, 0},
      {"COSMOS 1", "1", 1040, "APT", 86, 90},
      {"COSMOS 1", "1", 1568, "No scanner of COSMOS 1 with 1568 columns", 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Name) + ' ' + std::to_string(row.Columns));
    TSatellite satellite = tests::ReferenceSatellite("NOAA 12");
    satellite.Name = row.Name;
    satellite.CatalogueNumber = row.Number;
    const ScannerMatch match = MatchScanner(table, satellite, row.Columns);
    if (row.AngleDeg == 0) {
      EXPECT_TRUE(match.Problem.contains(QLatin1StringView(row.Scanner))) << match.Problem.toStdString();
      continue;
    }
    EXPECT_EQ(match.Problem, QString());
    EXPECT_EQ(match.SeenBy.Name, row.Scanner);
    EXPECT_EQ(match.FirstColumn, row.FirstColumn);
    EXPECT_NEAR(match.SeenBy.Line.AngleDeg, row.AngleDeg, 1e-9);
    EXPECT_EQ(match.Note.isEmpty(), std::string_view(row.Name) != "COSMOS 1");
  }
  EXPECT_TRUE(MatchScanner(table, tests::ReferenceSatellite("EUTELSAT 1-F1"), 0)
                  .Problem.contains(QLatin1StringView("is geostationary")));
}

TEST(ScannerMatch, AUsersOldMapsLieUnderPicturesOfProductsToo) {
  const TSatellite satellite = tests::ReferenceSatellite("NOAA 19", "swath-elements.2li");
  for (const ScanLaw law : {ScanLaw::Zones, ScanLaw::ZonesSphere}) {
    ScannerTable table;
    table.Add(R"({"scanners": [{"name": "My APT", "mode": "APT", "columns": 909, "angle": 111, "law": ")" +
                  std::string(NameOf(law)) +
                  R"(", "rows_per_second": 2, "satellites": [{"number": 33591}]}]})",
              "mine.json");
    Recording recording = Of(satellite, kInstruments.at("AVHRR APT"), satellite.Epoch, 100);
    recording.ScannerIsFrom = KnownFrom::Product;
    EXPECT_EQ(TakeElements(satellite, table, recording).Problem, QString());
    EXPECT_EQ(recording.SeenBy.Line.Law, law);
    EXPECT_EQ(recording.SeenBy.Line.AngleDeg, law == ScanLaw::Zones ? 110.74 : 111);
  }
}

}  // namespace
}  // namespace pelorin::swath
