#include "swath/scanner_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "orbit/scalar_math.h"

namespace pelorin::swath {
namespace {

std::string BuiltTable() {
  std::ifstream file(PELORIN_SCANNERS);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

orbit::TSatellite Named(const char* name, const char* number = "99999") {
  orbit::TSatellite satellite;
  satellite.Name = name;
  satellite.CatalogueNumber = number;
  return satellite;
}

TEST(ScannerTable, SatellitesAreKnownByNumberThenByTheLongestName) {
  ScannerTable table;
  ASSERT_EQ(table.Add(BuiltTable(), "scanners.json"), std::vector<std::string>());
  const struct {
    const char* label;
    orbit::TSatellite satellite;
    std::vector<std::string> scanners;
    double firstAngleDeg;
  } rows[] = {
      {"number before name", Named("NOAA 15", "57166"), {"MSU-MR LRPT", "MSU-MR HRPT"}, 110.1},
      {"longest name", Named("METEOR-M2 4"), {"MSU-MR LRPT", "MSU-MR HRPT"}, 110.1},
      {"its own angle", Named("METEOR-M 2"), {"MSU-MR LRPT", "MSU-MR HRPT"}, 110.6},
      {"HRPT alone", Named("METEOR-M2 2"), {"MSU-MR HRPT"}, 110.3},
      {"zones", Named("NOAA 19"), {"AVHRR APT", "AVHRR HRPT"}, 110.74},
      {"not the beginning of a word", Named("NOAA 150"), {}, 0},
      {"none", Named("ISS"), {}, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    std::vector<std::string> names;
    const auto flown = table.Of(row.satellite);
    for (const ScannerTable::Flown& one : flown) names.push_back(one.Instrument->Name);
    EXPECT_EQ(names, row.scanners);
    EXPECT_DOUBLE_EQ(flown.empty() ? 0 : flown.front().Line().AngleDeg, row.firstAngleDeg);
  }
}

TEST(ScannerTable, FaultsNameLineAndKeyAndTheRestIsUsed) {
  const std::string good =
      R"({"name": "Good", "mode": "X", "columns": 100, "angle": 90, "law": "even", "rows_per_second": 2})";
  const auto list = [](const std::string& scanners) { return "{\"scanners\": [\n" + scanners + "]}"; };
  const auto changed = [&](const std::string& from, const std::string& to) {
    return std::string(good).replace(good.find(from), from.size(), to);
  };
  const struct {
    const char* label;
    std::string table, problem;
    bool hasGood = false;
  } rows[] = {
      {"nothing wrong", list(good), "", true},
      {"columns", list(changed("100", "0") + ",\n" + good),
       "line 2: \"columns\" must be a number from 2 to 20000", true},
      {"a part of a column", list(changed("100", "100.5")), "line 2: \"columns\" must be a whole number"},
      {"a text", list(changed("90", "\n\"wide\"")), "line 2: \"angle\" must be a number from 1 to 150"},
      {"law", list(changed("even", "odd")),
       "line 2: \"law\" must be \"even\", \"zones\" or \"zones-sphere\""},
      {"zones", list(changed("even", "zones")), "line 2: \"columns\" must be 909 for a law of zones"},
      {"missing", list(changed("\"mode\": \"X\", ", "")), "line 2: \"mode\" is missing"},
      {"misspelt", list(changed("\"mode\"", "\"yaw_stering\": true, \"mode\"")),
       "line 2: \"yaw_stering\" is no key that is known here"},
      {"a satellite's", list(changed("2}", "2, \"satellites\": [\n{\"number\": 25338, \"roll\": 45}]}")),
       "line 3: \"roll\" must be a number from -10 to 10", true},
      {"its marks", list(changed("2}", "2, \"satellites\": [{\"number\": 25338, \"mark_second\": 60}]}")),
       "line 2: \"mark_second\" must be a number from 0 to 59.9", true},
      {"twice", "{\"scanners\": [],\n\"scanners\": []}", "line 2: \"scanners\" is there twice"},
      {"a comma too many", list(good + ",\n"), "line 3: from here on this is no JSON"},
      {"cut", "{\"scanners\": [\n" + good, "line 2: from here on this is no JSON"},
      {"nested", std::string(100000, '['), "line 1: nested deeper than a table is"},
      {"no table", "7", "line 1: an object in braces is expected here"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    ScannerTable table;
    const std::vector<std::string> problems = table.Add(row.table, "my.json");
    EXPECT_EQ(problems, row.problem.empty() ? std::vector<std::string>()
                                            : std::vector<std::string>{"my.json, " + row.problem});
    EXPECT_EQ(table.Find("good") != nullptr, row.hasGood);
  }
}

TEST(ScannerTable, FilesThatAreNoneAreToldAndNotWaitedFor) {
  const QString rows[] = {QStringLiteral("/dev/null"), QStringLiteral("/"), QStringLiteral("/gone.json")};
  for (const QString& path : rows) {
    std::vector<std::string> problems;
    EXPECT_TRUE(LoadScannerTables({path}, problems).Scanners().empty());
    const std::string told = "Cannot read " + path.toStdString() + ": it is not a regular file";
    EXPECT_EQ(problems, path.endsWith(QStringLiteral("gone.json")) ? std::vector<std::string>()
                                                                   : std::vector<std::string>{told});
  }
}

TEST(ScannerTable, LaterTablesReplaceScannersOfTheSameName) {
  ScannerTable table;
  table.Add(BuiltTable(), "scanners.json");
  const std::size_t before = table.Scanners().size();
  table.Add(
      R"({"scanners": [{"name": "msu-mr lrpt", "mode": "LRPT", "columns": 1568, "angle": 111, "law": "even",
                 "rows_per_second": 6.5, "satellites": [{"number": 57166, "pitch": 0.3}]}]})",
      "mine.json");
  EXPECT_EQ(table.Scanners().size(), before);
  EXPECT_EQ(table.Find("MSU-MR LRPT")->Line.AngleDeg, 111);
  const auto mine = table.Of(Named("METEOR-M2 3", "57166"));
  ASSERT_FALSE(mine.empty());
  EXPECT_EQ(mine[0].Satellite->Offsets.PitchDeg, 0.3);
  EXPECT_EQ(mine[0].Satellite->Offsets.RollDeg, 0) << "what is not told is not turned";
}

TEST(ScannerTable, EntriesOfLaterTablesWinAndTheOthersStay) {
  const char* const apt =
      R"("mode": "APT", "columns": 909, "angle": 111, "rows_per_second": 2, "satellites":)";
  const auto list = [&](const char* name, const char* law, const char* satellites) {
    return std::string(R"({"scanners": [{"name": ")") + name + R"(", "law": ")" + law + "\", " + apt +
           satellites + "}]}";
  };
  const struct {
    const char *label, *name, *law, *satellites;
    std::string noaa15, noaa19;  ///< scanner, angle and roll
  } rows[] = {
      {"another scanner", "My APT", "zones-sphere", R"([{"number": 33591}])", "AVHRR APT 110.74 -0.1",
       "My APT 111 0"},
      {"the same for one satellite", "avhrr apt", "zones", R"([{"number": 33591, "roll": 2}])",
       "avhrr apt 111 -0.1", "avhrr apt 111 2"},
      {"the second of a satellite", "AVHRR HRPT", "zones", R"([{"number": 33591, "roll": 3}])",
       "AVHRR APT 110.74 -0.1", "AVHRR HRPT 111 3"},
      {"for none", "AVHRR APT", "zones", "[]", "AVHRR APT 111 -0.1", "AVHRR APT 111 -0.01"},
  };
  for (const auto& row : rows) {
    ScannerTable table;
    table.Add(BuiltTable(), "scanners.json");
    EXPECT_EQ(table.Add(list(row.name, row.law, row.satellites), "mine.json"), std::vector<std::string>());
    const auto first = [&](const char* name, const char* number) {
      const auto flown = table.Of(Named(name, number));
      std::ostringstream text;
      text << flown.at(0).Instrument->Name << ' ' << flown[0].Line().AngleDeg << ' '
           << flown[0].Satellite->Offsets.RollDeg;
      return text.str();
    };
    EXPECT_EQ(first("NOAA 15", "25338"), row.noaa15) << row.label;
    EXPECT_EQ(first("NOAA 19", "33591"), row.noaa19) << row.label;
    EXPECT_EQ(first("NOAA 19", "99999"), row.noaa19) << row.label << ", whose name another entry tells";
  }
}

TEST(Scanner, ColumnsAndAnglesAreEachOthersInverse) {
  // The handbook's samples: the middle column is 4 wide, the outermost centre lies 1,023.5 samples out.
  const LineShape zones{kZoneColumns, 110.74, ScanLaw::Zones};
  const double sample = orbit::Radians(110.74 / 2047);
  const std::pair<double, double> rows[] = {
      {454, 0},      {455, 4},     {454 - 78, -312}, {454 + 79, 312 + 3.5},
      {908, 1023.5}, {0, -1023.5}, {454.5, 2},       {909, 1024.5}};
  for (const auto& [column, samples] : rows)
    EXPECT_NEAR(ColumnAngle(zones, column), samples * sample, 1e-12) << column;
  for (const LineShape& line : {zones, LineShape{1568, 110.1, ScanLaw::EvenAngles}}) {
    for (double column = -3; column < line.Columns + 3; column += 0.37) {
      EXPECT_NEAR(ColumnAtAngle(line, ColumnAngle(line, column)), column, 1e-9);
    }
  }
}

}  // namespace
}  // namespace pelorin::swath
