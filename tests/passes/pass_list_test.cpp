#include "passes/pass_list.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <tuple>
#include <utility>

#include "files/file_error.h"
#include "files/read_file.h"
#include "orbit/scalar_math.h"
#include "passes/chosen_pass.h"
#include "passes/pass_list_file.h"
#include "passes/pass_lookup.h"
#include "tests/support/tables.h"

namespace pelorin::passes {
namespace {

using namespace Qt::StringLiterals;
using tests::DemonstrationSatellite;

const orbit::TDateTime kListDate = orbit::MakeDateTime(2023, 12, 31, 6);
const orbit::Observer kStation = orbit::ObserverFromDegrees(47.6, -122.3, 60);

TEST(PassList, PassesOfAllSatellitesAreMergedInTimeOrder) {
  const orbit::TSatellite noaa15 = DemonstrationSatellite("NOAA 15"),
                          noaa19 = DemonstrationSatellite("NOAA 19");
  // Over the turn of the year: January sorts first.
  const orbit::TDateTime start = orbit::MakeDateTime(2021, 12, 31, 17, 5);
  const orbit::PassRequest request{start, 2, 1.5};
  QStringList expected;
  for (const orbit::TSatellite& satellite : {noaa15, noaa19}) {
    const QStringList own = PassListEntries({satellite}, kStation, request);
    EXPECT_GE(own.size(), 8) << satellite.Name;
    expected += own;
  }
  expected.sort();
  EXPECT_EQ(PassListEntries({noaa15, noaa19}, kStation, request), expected);
  EXPECT_TRUE(expected.first().startsWith(u"0101"));
  EXPECT_TRUE(expected.last().startsWith(u"1231"));
}

TEST(PassList, NextPassStartsNowOrLater) {
  const QStringList entries = {u"0315143012 S 353 754 A"_s, u"0315143012 S 353 754 B"_s,
                               u"0315161500 N 1 600 C"_s};
  EXPECT_EQ(FindNextPassIndex(entries, orbit::MakeDateTime(2022, 3, 15, 14, 30, 12)), 0);
  EXPECT_EQ(FindNextPassIndex(entries, orbit::MakeDateTime(2022, 3, 15, 14, 30, 13)), 2);
  EXPECT_EQ(FindNextPassIndex(entries, orbit::MakeDateTime(2022, 3, 15, 16, 15, 1)), -1);
}

TEST(PassList, EmptyListLeavesTheFile) {
  const QTemporaryDir folder;
  SavePassList(folder.path() + u'/', {u"a 1"_s, u"b 2"_s});
  SavePassList(folder.path(), {});
  EXPECT_EQ(files::ReadFile(folder.filePath(u"PassList.txt"_s)), "a 1\r\nb 2\r\n");
  EXPECT_THROW(SavePassList(folder.filePath(u"missing"_s), {u"c"_s}), files::FileError);
}

TEST(ChosenPass, EntryIsTakenApartOrRefused) {
  const std::pair<QString, ChosenPass> rows[] = {
      {u"0315143059 S 353 754 NOAA 15"_s, {orbit::MakeDateTime(2023, 3, 15, 14, 30), true, 13, u"NOAA 15"_s}},
      {u"1231235900 N -7 780 X"_s, {orbit::MakeDateTime(2023, 12, 31, 23, 59), false, 13, u"X"_s}},
      {u"0101000001  S  0  781  A  B "_s, {orbit::MakeDateTime(2023, 1, 1), true, 14, u"A  B"_s}},
  };
  for (const auto& [entry, expected] : rows) {
    const ChosenPass pass = ParseSelectedPass(entry, kListDate);
    EXPECT_EQ(std::tie(pass.PassStart, pass.SouthBound, pass.PassDurationMinutes, pass.SatelliteName),
              std::tie(expected.PassStart, expected.SouthBound, expected.PassDurationMinutes,
                       expected.SatelliteName))
        << entry.toStdString();
  }
  for (const char* entry :
       {"", "0315143059", "0315143059 S 353 754", "031514305 S 353 754 X", "0229143059 S 353 754 X",
        "0315143059 W 353 754 X", "0315143059 S 353 7m X", "0315143059 S 353 -7 X"}) {
    EXPECT_THROW(ParseSelectedPass(QLatin1StringView(entry), kListDate), orbit::ConvertError) << entry;
  }
}

TEST(PassLookup, PassStringFindsItsPass) {
  const orbit::TDateTime now = orbit::MakeDateTime(2022, 2, 20, 13, 14, 15);
  const std::vector<orbit::TSatellite> satellites = {DemonstrationSatellite("NOAA 19"),
                                                     DemonstrationSatellite("METEOR 3-5")};
  const orbit::Observer edinburgh = orbit::ObserverFromDegrees(55.905, -3.2, 150);
  const auto find = [&](const QString& passString) {
    return FindPassByString(passString, satellites, edinburgh, 1.5, now);
  };
  const QString noaa = u"0223075129 S 7 891 NOAA 19"_s, meteor = u"0225235921 N 23 1015 METEOR 3-5"_s, none;
  const struct {
    const char* label;
    QString passString, entry, key;
  } rows[] = {
      {"to the second", u"0223075129"_s, noaa, u"0223075129"_s},
      {"with its year", u"20220223075129"_s, noaa, u"0223075129"_s},
      {"the last digit gives way", u"0223075125"_s, noaa, u"022307512"_s},
      {"both digits of the seconds", u"0223075145"_s, noaa, u"02230751"_s},
      {"the minute alone", u"202202230751"_s, noaa, u"02230751"_s},
      {"a minute late", u"0223075229"_s, none, u"02230752"_s},
      {"a day without it", u"0224075129"_s, none, u"02240751"_s},
      {"culminates after midnight", u"20220225235921"_s, meteor, u"0225235921"_s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    const PassMatch match = find(row.passString);
    EXPECT_EQ(match.Entry, row.entry);
    EXPECT_EQ(match.Key, row.key);
    EXPECT_EQ(match.Time, orbit::ParseTimeString(row.passString.toStdString(), now));
    if (row.entry.isEmpty()) continue;
    EXPECT_EQ(match.Pass.PassStart, orbit::ParseTimeString("2022" + row.entry.first(8).toStdString()));
    EXPECT_TRUE(row.entry.endsWith(match.Pass.SatelliteName));
  }
  for (const QString& text : {u""_s, u"04x21830"_s, u"0230183000"_s, u"04\u0664\u0664183000"_s}) {
    EXPECT_THROW(find(text), orbit::ConvertError) << text.toStdString();
  }

  const orbit::TDateTime dayAfter = orbit::MakeDateTime(2022, 2, 26);
  const auto nextDay = PassesRisingOn(dayAfter, satellites[1], edinburgh, 1.5);
  ASSERT_FALSE(nextDay.empty());
  EXPECT_GE(nextDay.front().Record.Aos.Days, dayAfter.Days) << "that pass is of the day before";
}

}  // namespace
}  // namespace pelorin::passes
