#include "map/satellite_plot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "map/footprint.h"
#include "map/satellite_info.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"
#include "tests/support/tables.h"

namespace pelorin::map {
namespace {

using namespace Qt::StringLiterals;
using orbit::Degrees, orbit::Radians;

/// A hundredth of a degree is a pixel.
constexpr MapFrame kFine{36000, 18000, false};
const MeasureText kNoText = [](const QString&) { return QSize(0, 0); };

struct Place {
  double LatitudeDeg, LongitudeDeg;
};

Place Unproject(const MapFrame& frame, QPoint pixel) {
  return {90 - pixel.y() * 180.0 / frame.Height,
          pixel.x() * 360.0 / frame.Width - (frame.PacificCentred ? 0 : 180)};
}

/// Angle between two places seen from the Earth's centre, degrees.
double Apart(Place a, Place b) {
  const double dLat = Radians(a.LatitudeDeg - b.LatitudeDeg), dLon = Radians(a.LongitudeDeg - b.LongitudeDeg);
  const double h = std::pow(std::sin(dLat / 2), 2) + std::cos(Radians(a.LatitudeDeg)) *
                                                         std::cos(Radians(b.LatitudeDeg)) *
                                                         std::pow(std::sin(dLon / 2), 2);
  return Degrees(2 * std::asin(std::sqrt(h)));
}

orbit::TDateTime TimeOf(const tests::Row& row) { return orbit::DateTimeOfJulianDate(row.Number("jd")); }

TEST(SatellitePlot, MarksStandOverTheSubSatellitePoints) {
  for (const auto& row : tests::ReadTable("lookangles.csv")) {
    orbit::TSatellite satellite = tests::ReferenceSatellite(row.Text("satellite"));
    const Sky sky = SkyAt({&satellite}, TimeOf(row), 5);
    const SatellitePlot plot = PlotSatellites(sky, kFine, &satellite, kFootprintSelected, kNoText);
    ASSERT_EQ(plot.Satellites.size(), 1U);
    const SatelliteDrawing& drawing = plot.Satellites[0];
    const Place place{row.Number("sat_lat_deg"), row.Number("sat_lon_deg")};
    SCOPED_TRACE(row.Text("satellite") + " " + row.Text("utc"));
    EXPECT_LT(Apart(Unproject(kFine, drawing.Mark), place), 0.01);
    // The scan line reaches as far to the one side as to the other, twice the height at the satellite.
    const Place below{row.Number("sat_geocentric_lat_deg"), row.Number("sat_lon_deg")};
    const double reach =
        Degrees(std::atan2(2 * row.Number("sat_alt_km"), sky.Satellites[0].State.Position.w));
    bool cut = drawing.ScanLine.size() < 2;
    for (const Stroke& stroke : drawing.ScanLine) {
      EXPECT_LT(Apart(Unproject(kFine, stroke.front()), below), 0.01);
      EXPECT_LT(std::abs(stroke.back().x() - stroke.front().x()), kFine.Width / 2);
      cut = cut || stroke.size() < 3;  // by the map's side
    }
    if (cut) continue;
    const Place left = Unproject(kFine, drawing.ScanLine[0].back()),
                right = Unproject(kFine, drawing.ScanLine[1].back());
    EXPECT_NEAR(Apart(below, left), reach, 0.02);
    EXPECT_NEAR(Apart(left, right), 2 * reach, 0.03);
    // A satellite that flies on lies on no side of it: both ends are equally far from where it was.
    if (satellite.IsDeepSpace) continue;
    const Place trail = Unproject(kFine, drawing.Trail.back());
    EXPECT_NEAR(Apart(trail, left), Apart(trail, right), 0.5);
  }
}

TEST(SatelliteInfo, TellsWhatTheReferenceTableTells) {
  const auto table = tests::ReadTable("lookangles.csv");
  const struct {
    std::size_t Row;
    QString Status, Title;
  } rows[] = {
      {0, u"Lat: 54°  Lon: -1°  Alt: 818km  Az: 341°  El: 71.4°  Range: 858km  Dop: -986Hz  Sig: -100dBm"_s,
       u"NOAA 12 Az 341  El 71.4  Range 858km"_s},
      {1, u"Lat: 38°  Lon: 157°  Alt: 813km  Az: 34°  El: -25.0°  Range: 6983km  Dop: 2761Hz  Sig: 0dBm"_s,
       u"(NOAA 12) Az 34  El -25.0  Range 6983km"_s},
  };
  for (const auto& row : rows) {
    const tests::Row& fact = table[row.Row];
    orbit::TSatellite satellite = tests::ReferenceSatellite(fact.Text("satellite"));
    const SatelliteInfo info = InfoAt(
        satellite, TimeOf(fact),
        orbit::ObserverFromDegrees(fact.Number("lat_deg"), fact.Number("lon_deg"), fact.Number("height_m")));
    EXPECT_EQ(info.StatusText.toStdString(), row.Status.toStdString());
    EXPECT_EQ(info.Title.toStdString(), row.Title.toStdString());
    EXPECT_NEAR(info.ElevationDeg, fact.Number("el_deg"), 0.01);
  }
}

TEST(SatellitePlot, TheSunStandsOnTheHorizonAlongTheTerminator) {
  for (const auto& row : tests::ReadTable("sun.csv")) {
    const SatellitePlot plot = PlotSatellites(SkyAt({}, TimeOf(row), 5), kFine, nullptr, 0, kNoText);
    const double gmst = Degrees(orbit::ThetaGOfJulianDate(row.Number("jd")));
    const Place below{row.Number("almanac_dec_deg"), row.Number("almanac_ra_deg") - gmst};
    EXPECT_LT(Apart(Unproject(kFine, plot.Sun), below), 0.03) << row.Text("utc");
    std::size_t points = 0;
    for (const Stroke& stroke : plot.Terminator) {
      points += stroke.size();
      for (const QPoint point : stroke) {
        const double elevation = 90 - Apart(Unproject(kFine, point), below);
        EXPECT_NEAR(elevation, 0, 0.08) << row.Text("utc") << " x " << point.x();
      }
    }
    EXPECT_GT(points, 30U) << row.Text("utc");
  }
}

TEST(Footprint, IsACircleCutAtTheMapsSides) {
  constexpr MapFrame normal{3600, 1800, false}, pacific{3600, 1800, true};
  const struct {
    const char* Label;
    MapFrame Frame;
    Place Centre;
    double AltitudeKm;
    std::size_t Strokes, Points = 37;
  } rows[] = {
      {"whole", normal, {47, 11}, 850, 1},
      {"over 180, from the east", normal, {-20, 170}, 850, 3},
      {"over 180, from the west", normal, {-20, -170}, 850, 3},
      {"180 in the middle", pacific, {-20, -170}, 850, 1},
      {"over Greenwich", pacific, {10, 9}, 850, 3},
      {"round the north pole", normal, {80, 100}, 850, 2},
      {"close by the pole, where chords are wide", normal, {61, 20}, 850, 1, 35},
      {"round the south pole", pacific, {-85, 100}, 35800, 2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const std::vector<Stroke> strokes =
        Footprint(row.Frame, row.Centre.LatitudeDeg, row.Centre.LongitudeDeg, row.AltitudeKm);
    EXPECT_EQ(strokes.size(), row.Strokes);
    const double radius = Degrees(std::acos(6378.135 / (6378.135 + row.AltitudeKm)));
    std::size_t points = 0;
    for (const Stroke& stroke : strokes) {
      points += stroke.size();
      for (std::size_t i = 0; i < stroke.size(); ++i) {
        EXPECT_NEAR(Apart(Unproject(row.Frame, stroke[i]), row.Centre), radius, 0.08);
        const int step = stroke[i].x() - stroke[i > 0 ? i - 1 : 0].x();
        EXPECT_LE(std::abs(step), row.Frame.Width / 5);
      }
    }
    EXPECT_EQ(points, row.Points);
  }
  EXPECT_TRUE(Footprint({0, 400}, 47, 11, 850).empty());
  EXPECT_TRUE(Footprint({3, 2}, 47, 11, -1).empty());
}

TEST(SatellitePlot, LevelsSelectionAndLabels) {
  constexpr MapFrame frame{772, 436, false};
  orbit::TSatellite noaa = tests::ReferenceSatellite("NOAA 18"),
                    suomi = tests::ReferenceSatellite("SUOMI NPP");
  const orbit::TDateTime time = orbit::ParseTimeString("20180121120000");
  const Sky sky = SkyAt({&suomi, &noaa}, time, 5);
  const auto markBefore = [&](int minutes) {
    const Sky before = SkyAt({&noaa}, {time.Days - minutes / 1440.0}, 0);
    return PlotSatellites(before, frame, nullptr, 0, kNoText).Satellites[0].Mark;
  };
  for (int level = kFootprintNone; level <= kFootprintAll; ++level) {
    SCOPED_TRACE(level);
    const SatellitePlot plot = PlotSatellites(sky, frame, &noaa, level, kNoText);
    ASSERT_EQ(plot.Satellites.size(), 2U);
    const SatelliteDrawing &other = plot.Satellites[0], &chosen = plot.Satellites[1];
    const int trail = level == kFootprintAll ? 2 : 5;
    ASSERT_EQ(chosen.Trail.size(), static_cast<std::size_t>(trail));
    EXPECT_EQ(chosen.Trail.front(), markBefore(trail));
    EXPECT_EQ(chosen.Trail.back(), markBefore(1));
    EXPECT_EQ(chosen.Footprint.empty(), level == kFootprintNone);
    EXPECT_EQ(other.Footprint.empty(), level != kFootprintAll);
    EXPECT_TRUE(other.ScanLine.empty() && !chosen.ScanLine.empty());
    EXPECT_TRUE(chosen.Colour == kSelectedColour && chosen.FootprintColour == kSelectedColour);
    EXPECT_TRUE(other.Colour == kOtherColour && other.FootprintColour == kOtherFootprintColour);
  }
  EXPECT_TRUE(PlotSatellites(sky, {0, 0}, &noaa, kFootprintAll, kNoText).Satellites.empty());

  const QPoint mark = PlotSatellites(sky, frame, nullptr, 0, kNoText).Satellites[0].Mark;
  const int roomRight = frame.Width - 5 - mark.x(), roomBelow = frame.Height - 5 - mark.y();
  const std::pair<QSize, QPoint> rows[] = {{{roomRight, roomBelow}, {mark.x() + 5, mark.y()}},
                                           {{roomRight + 1, 9}, {mark.x() - roomRight - 6, mark.y()}},
                                           {{30, roomBelow + 1}, {mark.x() + 5, mark.y() - roomBelow - 6}}};
  for (const auto& [text, at] : rows) {
    const SatellitePlot plot =
        PlotSatellites(sky, frame, nullptr, 0, [&size = text](const QString&) { return size; });
    EXPECT_EQ(plot.Satellites[0].Label.TopLeft, at) << text.width() << ' ' << text.height();
  }
}

TEST(SatelliteAt, TakesTheNearestMarkAndOfTwoTheFirst) {
  constexpr MapFrame frame{100, 50, false};  // a tenth of the diagonal: √125
  orbit::TSatellite a, b;
  SatellitePlot plot;
  plot.Satellites.resize(2);
  plot.Satellites[0] = {&a, {}, {}, {20, 10}, {}, {}, {}, {}};
  plot.Satellites[1] = {&b, {}, {}, {30, 10}, {}, {}, {}, {}};
  const std::pair<QPoint, const orbit::TSatellite*> rows[] = {
      {{25, 13}, &a}, {{26, 13}, &b}, {{9, 12}, nullptr}, {{10, 14}, &a}, {{60, 40}, nullptr}};
  for (const auto& [click, found] : rows) {
    EXPECT_EQ(SatelliteAt(plot, frame, click), found) << click.x() << ' ' << click.y();
  }
  EXPECT_EQ(SatelliteAt({}, {0, 0}, {0, 0}), nullptr);
}

TEST(Sky, LeavesOutWhatHasNoPlaceAndAsksForNothingTwice) {
  const orbit::TDateTime time = orbit::ParseTimeString("20180121120000");
  orbit::TSatellite sound = tests::ReferenceSatellite("NOAA 18");
  sound.Propagator = {};  // whatever the elements were when they were read
  std::vector<orbit::TSatellite> odd(4, sound);
  odd[0].Eccentricity = std::numeric_limits<double>::quiet_NaN();
  odd[1].MeanMotion = -1;      // raises MathError
  odd[2].MeanMotion = 1.2e-9;  // at 10⁹ km
  odd[3].MeanMotion = 0.08;    // within the Earth
  for (std::size_t i = 0; i < odd.size(); ++i) odd[i].Name = "ODD " + std::to_string(i);
  const std::vector<const orbit::TSatellite*> all{&odd[0], &odd[1], &sound, &odd[2], &odd[3]};
  SkyKeeper keeper;
  const auto latitude = [&](double days) {
    return keeper.At(all, {time.Days + days}, 2).Satellites[0].Now.LatitudeDeg;
  };
  const Sky first = keeper.At(all, time, 5);
  EXPECT_EQ(NotDrawableTip(first.NotDrawable).toStdString(), "Not drawable: ODD 0, ODD 1, ODD 2, ODD 3");
  ASSERT_EQ(first.Satellites.size(), 1U);
  EXPECT_EQ(first.Find(&sound), &first.Satellites[0]);
  EXPECT_EQ(first.Find(&odd[0]), nullptr);

  sound.Epoch += 0.01;  // whoever propagates now gets another place
  EXPECT_EQ(latitude(0), first.Satellites[0].Now.LatitudeDeg);
  keeper.Forget();
  EXPECT_NE(latitude(0), first.Satellites[0].Now.LatitudeDeg);
  sound.Epoch -= 0.01;
  EXPECT_NE(latitude(1e-5), first.Satellites[0].Now.LatitudeDeg);
  EXPECT_EQ(keeper.At({&sound}, {time.Days + 1e-5}, 5).Satellites[0].Trail.size(), 5U);
  EXPECT_TRUE(keeper.At({}, time, 5).Satellites.empty());
}

}  // namespace
}  // namespace pelorin::map
