#include "passes/ephemeris_report.h"

#include <gtest/gtest.h>

#include <QTime>
#include <algorithm>
#include <cmath>

#include "elements/known_sets.h"
#include "orbit/julian_date.h"
#include "tests/support/sky_watch.h"
#include "tests/support/tables.h"

namespace pelorin::passes {
namespace {

using namespace Qt::StringLiterals;

const orbit::Observer kSouthPacific = orbit::ObserverFromDegrees(-33.9, 200, 40);
const orbit::TDateTime kFirstDay = orbit::MakeDateTime(2022, 2, 28);

constexpr const char* kGolden = R"(Pelorin pass prediction for Monday, 2022 Feb 28
Station located at 160.00°W, 33.90°S
___________________________________________________
N/S   Satellite    A O S    L O S    Mins Elev Long

 N  METEOR M2-2   01:37:40 01:50:48    14  71° 203°
 N  METEOR M2-2   03:19:03 03:27:58     9  13° 180°
 N  NOAA 15       05:44:58 05:57:17    13  35° 210°
 N  NOAA 19       06:07:33 06:21:03    14  56° 205°
 N  NOAA 15       07:25:01 07:36:18    12  24° 186°
 N  NOAA 19       07:49:08 07:59:45    11  18° 182°
 S  METEOR M2-2   11:19:05 11:25:25     7   8° 225°
 S  METEOR M2-2   12:54:42 13:07:51    14  78° 202°
 S  METEOR M2-2   14:37:44 14:45:35     8  10° 177°
 S  NOAA 19       15:53:46 16:00:05     7   8° 225°
 S  NOAA 15       17:01:06 17:13:24    13  38° 209°
 S  NOAA 19       17:29:50 17:43:20    14  72° 203°
 S  NOAA 15       18:41:31 18:52:37    12  22° 185°
 S  NOAA 19       19:13:12 19:22:05     9  12° 178°


Pelorin pass prediction for Tuesday, 2022 Mar 01
Station located at 160.00°W, 33.90°S
___________________________________________________
N/S   Satellite    A O S    L O S    Mins Elev Long

 N  METEOR M2-2   01:14:59 01:27:39    13  41° 208°
 N  METEOR M2-2   02:55:26 03:06:24    11  21° 185°
 N  NOAA 15       05:20:19 05:31:09    11  20° 216°
 N  NOAA 19       05:55:50 06:09:01    14  43° 208°
 N  NOAA 15       06:59:23 07:11:51    13  42° 192°
 N  NOAA 19       07:36:59 07:48:31    12  22° 185°
 S  METEOR M2-2   12:32:06 12:44:49    13  46° 207°
 S  METEOR M2-2   14:13:15 14:23:51    11  18° 183°
 S  NOAA 15       16:36:44 16:47:44    11  22° 215°
 S  NOAA 19       17:18:08 17:31:27    14  55° 206°
 S  NOAA 15       18:15:30 18:27:55    13  38° 191°
 S  NOAA 19       19:00:32 19:10:52    11  16° 181°)";

orbit::TSatellite Demonstration(const char* name) {
  return tests::ReferenceSatellite(name, PELORIN_DEMO_ELEMENTS);
}

/// The request of the golden report; it starts in the middle of its first day.
EphemerisRequest GoldenRequest(int days) {
  EphemerisRequest request{{Demonstration("NOAA 15"), Demonstration("METEOR M2-2"), Demonstration("NOAA 19")},
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
  EXPECT_EQ(LinesOf(request).join(u'\n').toStdString(), kGolden);

  QStringList rows;
  const double firstJd = JulianDateOfDateTime(kFirstDay);
  QString day;
  for (const QString& line : QString::fromUtf8(kGolden).split(u'\n')) {
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
    const orbit::TSatellite satellite = Demonstration(row.satellite);
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

orbit::TDateTime At(int day, int hour, int minute, int second, int millisecond = 0) {
  return orbit::MakeDateTime(2024, 2, day, hour, minute, second, millisecond);
}

TEST(EphemerisReport, RowsAreOfOneForm) {
  const struct {
    orbit::PassInfo record;
    double elevationDeg;
    const char* expected;
  } rows[] = {
      {{At(29, 14, 30, 5, 999), true, 356.7, 60, 754, "NOAA 15"},
       63.4,
       " S  NOAA 15       14:30:05 14:42:39    13  63° 357°"},
      {{At(29, 14, 30, 5), false, 7, 9, 781, "NOAA 15"},
       5.2,
       " N  NOAA 15       14:30:05 14:43:06    14   5°   7°"},
      {{At(28, 23, 55, 0), true, 0, 70, 780, "A NAME TOO LONG"},
       89.7,
       " S  A NAME TOO L  23:55:00 00:08:00    13  90°   0°"},
      {{At(29, 0, 0, 0), true, 0, 9, 65000, "X"}, 9, " S  X             00:00:00 18:03:20  1084   9°   0°"}};
  for (const auto& row : rows) {
    EXPECT_EQ(ReportRow(row.record, row.elevationDeg).toStdString(), row.expected);
  }
  const struct {
    double latitude, longitude;
    const char* expected;
  } stations[] = {{-33.9, 200, "160.00°W, 33.90°S"},
                  {55.905, -3.2, "3.20°W, 55.91°N"},
                  {0, 0, "0.00°E, 0.00°N"},
                  {-0.5, 180, "180.00°E, 0.50°S"}};
  for (const auto& row : stations) {
    EXPECT_EQ(StationText(orbit::ObserverFromDegrees(row.latitude, row.longitude, 0)).toStdString(),
              row.expected);
  }
}

}  // namespace
}  // namespace pelorin::passes
