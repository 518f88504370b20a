#include "app/station_entry.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "orbit/scalar_math.h"

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

TEST(StationEntry, TextsBecomeAStation) {
  const struct {
    QString Typed, Understood;  // latitude; longitude; height; minimum elevation
    double LongitudeDeg, HeightKm, MinElevationDeg;
  } rows[] = {
      {u"-33.9;-70.65;520;2.5"_s, u"-33.9;-70.65;520;2.5"_s, 289.35, 0.52, 2.5},
      {u"12.3.4;1e999;;nan"_s, u"55.905;-3.2;150;1.5"_s, 356.8, 0.15, 1.5},
      {u"48,25;-11,5;1,234,5;abc"_s, u"48.25;-11.5;150;1.5"_s, 348.5, 0.15, 1.5},
      {u" 12.50 ;372.250;1e5;-0.01"_s, u"12.5;372.25;100000;0"_s, 12.25, 100, 0},
      {u"-95;-0.5;-3.1;10.01"_s, u"-90;-0.5;-3.1;10"_s, 359.5, -0.0031, 10},
  };
  for (const auto& row : rows) {
    const QStringList typed = row.Typed.split(u';');
    const Station station = EnterStation({typed[0], typed[1], typed[2], typed[3]});
    const StationTexts& texts = station.Texts;
    EXPECT_EQ(QStringList({texts.Latitude, texts.Longitude, texts.Height, texts.MinElevation}).join(u';'),
              row.Understood);
    EXPECT_NEAR(orbit::Degrees(station.Place.Latitude), texts.Latitude.toDouble(), 1e-12);
    EXPECT_NEAR(orbit::Degrees(station.Place.Longitude), row.LongitudeDeg, 1e-12);
    EXPECT_NEAR(station.Place.Height, row.HeightKm, 1e-12);
    EXPECT_EQ(station.MinElevationDeg, row.MinElevationDeg);
  }
}

}  // namespace
}  // namespace pelorin::app
