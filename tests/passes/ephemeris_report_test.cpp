#include "passes/ephemeris_report.h"

#include <gtest/gtest.h>

#include <QTime>
#include <algorithm>
#include <cmath>

#include "files/read_file.h"
#include "orbit/julian_date.h"
#include "tests/support/sky_watch.h"
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

double SecondsOfDay(const QString& clock) {
  return QTime::fromString(clock, u"HH:mm:ss"_s).msecsSinceStartOfDay() / 1000.0;
}

TEST(EphemerisReport, GoldenReportIsWhatWatchersSee) {
  const EphemerisRequest request = GoldenRequest(2);
  const QString golden =
      QString::fromUtf8(files::ReadFile(QStringLiteral(PELORIN_TEST_DATA "/ephemeris.txt")));
  const QStringList lines = LinesOf(request);
  EXPECT_EQ(lines, golden.trimmed().split(u'\n'));

  QStringList rows;
  const double firstJd = JulianDateOfDateTime(kFirstDay);
  QString day;
  for (const QString& line : lines) {
    if (line.startsWith(u"Pelorin")) day = line.right(2);
    if (line.endsWith(u'°') && line.startsWith(u' ')) rows.append(day + line);
  }
  for (const orbit::TSatellite& satellite : request.Satellites) {
    const QString name = QString::fromStdString(satellite.Name).leftJustified(12, u' ', true);
    for (const tests::SeenPass& pass : tests::WatchTheSky(satellite, request.Station, request.MinElevationDeg,
                                                          firstJd - 0.1, firstJd + 2.1, 2)) {
      if (pass.Top < firstJd || pass.Top >= firstJd + 2 || pass.Seconds() < 301) continue;
      const QString dayOfTop = pass.Top < firstJd + 1 ? u"28"_s : u"01"_s;
      const double midnight = std::floor(pass.Top - 0.5) + 0.5;
      const auto row = std::find_if(rows.begin(), rows.end(), [&](const QString& text) {
        return text.left(2) == dayOfTop && text.mid(6, 12) == name &&
               std::fabs(SecondsOfDay(text.mid(20, 8)) - (pass.Rise - midnight) * 86400) < 4;
      });
      ASSERT_NE(row, rows.end()) << satellite.Name << " " << pass.TopDeg;
      const QString text = *row;
      EXPECT_NEAR(SecondsOfDay(text.mid(29, 8)), (pass.Set - midnight) * 86400, 4) << text.toStdString();
      EXPECT_EQ(text.mid(37, 6).toInt(), std::ceil((pass.Set - pass.Rise) * 1440)) << text.toStdString();
      EXPECT_EQ(text[3], pass.SouthBound ? u'S' : u'N');
      EXPECT_NEAR(text.mid(43, 4).toInt(), pass.TopDeg, 0.51) << text.toStdString();
      // The search's own culmination, up to a minute before the highest point.
      EXPECT_NEAR(text.mid(48, 4).toInt(), pass.LongitudeAtTopDeg, 2) << text.toStdString();
      rows.erase(row);
    }
  }
  EXPECT_EQ(rows, QStringList());
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
  const struct {
    const char* satellite;
    orbit::TDateTime dayBefore;
  } rows[] = {{"METEOR 2-18", orbit::MakeDateTime(2022, 7, 23)},
              {"METEOR 2-21", orbit::MakeDateTime(2022, 12, 10)},
              {"OKEAN 4", orbit::MakeDateTime(2022, 5, 18)}};
  const orbit::Observer edinburgh = orbit::ObserverFromDegrees(55.905, -3.2, 150);
  for (const auto& row : rows) {
    const orbit::TSatellite satellite = DemonstrationSatellite(row.satellite);
    int count = 0;
    MakeEphemeris({{satellite}, row.dayBefore, 2, edinburgh, 1.5}, [&](const EphemerisDay& day) {
      for (const PassDetails& pass : day.Passes) {
        if (pass.Rise.Days < row.dayBefore.Days + 1 && pass.Set.Days > row.dayBefore.Days + 1) ++count;
      }
      return true;
    });
    EXPECT_EQ(count, 1) << row.satellite;
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
