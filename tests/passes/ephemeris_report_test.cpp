#include "passes/ephemeris_report.h"

#include <gtest/gtest.h>

#include "files/read_file.h"
#include "tests/support/tables.h"

namespace pelorin::passes {
namespace {

using namespace Qt::StringLiterals;
using tests::DemonstrationSatellite;

const orbit::Observer kSouthPacific = orbit::ObserverFromDegrees(-33.9, 200, 40);
const orbit::TDateTime kFirstDay = orbit::MakeDateTime(2022, 2, 28);

/// The request of the golden report; it starts in the middle of its first day.
EphemerisRequest GoldenRequest(int days) {
  EphemerisRequest request{{DemonstrationSatellite("NOAA 15"), DemonstrationSatellite("METEOR M2-2"),
                            DemonstrationSatellite("NOAA 19")},
                           {kFirstDay.Days + 0.7},
                           days,
                           kSouthPacific,
                           4.5};
  request.Satellites[1].SetIdentity("Meteor M2-2 Polar", "weather.2li");
  return request;
}

QStringList LinesOf(const EphemerisRequest& request, int stopAfter = 366) {
  QStringList lines;
  MakeEphemeris(request, [&](const EphemerisDay& day) {
    lines += day.Lines;
    return day.Number < stopAfter;
  });
  return lines;
}

TEST(EphemerisReport, GoldenReportIsMade) {
  const QByteArray golden = files::ReadFile(QStringLiteral(PELORIN_TEST_DATA "/ephemeris.txt"));
  EXPECT_EQ(LinesOf(GoldenRequest(2)), QString::fromUtf8(golden).trimmed().split(u'\n'));
}

TEST(EphemerisReport, StoppedReportIsThatOfFewerDays) {
  EXPECT_EQ(LinesOf(GoldenRequest(5), 2), LinesOf(GoldenRequest(2)));
  EphemerisRequest nothing = GoldenRequest(2);
  nothing.Satellites.clear();
  const QStringList lines = LinesOf(nothing);
  ASSERT_EQ(lines.size(), 12);
  EXPECT_EQ(lines[4] + lines[5] + lines[6] + lines[11], QString());
  EXPECT_EQ(lines[7], u"Pelorin pass prediction for Tuesday, 2022 Mar 01"_s);
}

TEST(EphemerisReport, PassesAroundMidnightAreListedOnce) {
  const std::pair<const char*, orbit::TDateTime> rows[] = {{"METEOR 2-18", orbit::MakeDateTime(2022, 7, 23)},
                                                           {"METEOR 2-21", orbit::MakeDateTime(2022, 12, 10)},
                                                           {"OKEAN 4", orbit::MakeDateTime(2022, 5, 18)}};
  const orbit::Observer edinburgh = orbit::ObserverFromDegrees(55.905, -3.2, 150);
  for (const auto& [name, dayBefore] : rows) {
    const double midnight = dayBefore.Days + 1;
    const orbit::TSatellite satellite = DemonstrationSatellite(name);
    int count = 0;
    MakeEphemeris({{satellite}, dayBefore, 2, edinburgh, 1.5}, [&](const EphemerisDay& day) {
      for (const PassDetails& pass : day.Passes) {
        if (pass.Rise.Days < midnight && pass.Set.Days > midnight) ++count;
      }
      return true;
    });
    EXPECT_EQ(count, 1) << name;
  }
}

TEST(EphemerisReport, LongNamesAndMidnightKeepTheForm) {
  const orbit::PassInfo record{orbit::MakeDateTime(2024, 2, 28, 23, 55), true, 0, 70, 780, "A NAME TOO LONG"};
  EXPECT_EQ(ReportRow(record, 89.7), u" S  A NAME TOO L  23:55:00 00:08:00    13  90°   0°"_s);
  const struct {
    double latitude, longitude;
    const char* expected;
  } stations[] = {
      {55.905, -3.2, "3.20°W, 55.91°N"}, {0, 0, "0.00°E, 0.00°N"}, {-0.5, 180, "180.00°E, 0.50°S"}};
  for (const auto& row : stations) {
    EXPECT_EQ(StationText(orbit::ObserverFromDegrees(row.latitude, row.longitude, 0)).toStdString(),
              row.expected);
  }
}

}  // namespace
}  // namespace pelorin::passes
