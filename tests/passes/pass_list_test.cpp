#include "passes/pass_list.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <tuple>
#include <utility>

#include "elements/known_sets.h"
#include "files/file_error.h"
#include "files/read_file.h"
#include "orbit/scalar_math.h"
#include "passes/chosen_pass.h"
#include "passes/pass_list_file.h"

namespace pelorin::passes {
namespace {

using namespace Qt::StringLiterals;

const orbit::TDateTime kListDate = orbit::MakeDateTime(2023, 12, 31, 6);
const orbit::Observer kStation = orbit::ObserverFromDegrees(47.6, -122.3, 60);

TEST(PassList, PassesOfAllSatellitesAreMergedInTimeOrder) {
  const elements::KnownSets known(PELORIN_DEMO_ELEMENTS, {});
  const elements::TSatelliteList& satellites = known.Satellites();
  const orbit::TSatellite* const noaa15 = &satellites.Satellite(satellites.IndexOf("NOAA 15"));
  const orbit::TSatellite* const noaa19 = &satellites.Satellite(satellites.IndexOf("NOAA 19"));
  // Over the turn of the year: January sorts first.
  const orbit::TDateTime start = orbit::MakeDateTime(2021, 12, 31, 17, 5);
  const orbit::PassRequest request{start, 2, 1.5};
  QStringList expected;
  for (const orbit::TSatellite* satellite : {noaa15, noaa19}) {
    const QStringList own = PassListEntries({satellite}, kStation, request);
    EXPECT_GE(own.size(), 8) << satellite->Name;
    for (const QString& entry : own) {
      const ChosenPass chosen = ParseSelectedPass(entry, start);
      EXPECT_EQ(chosen.SatelliteName.toStdString(), satellite->Name);
      // A polar orbit 850 km up is never in sight for more than 16 minutes.
      EXPECT_TRUE(chosen.PassDurationMinutes >= 6 && chosen.PassDurationMinutes <= 16) << entry.toStdString();
    }
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

}  // namespace
}  // namespace pelorin::passes
