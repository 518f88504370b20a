#include <gtest/gtest.h>

#include <QImage>
#include <QPoint>
#include <QPolygon>
#include <QString>
#include <algorithm>
#include <cstdlib>

#include "files/read_file.h"
#include "overlay/overlay_master.h"
#include "overlay/palette.h"
#include "tools/elevation_grid.h"
#include "tools/relief.h"
#include "tools/rings.h"

namespace pelorin::tools {
namespace {

const std::vector<overlay::TPolyObject>& Records() {
  static const auto records = overlay::LoadPolygons(QStringLiteral(PELORIN_BUILT_DATA "/Countries.dat"));
  return records;
}

/// What is painted last at a place: "sea" where nothing is.
std::string SurfaceAt(double latitudeDeg, double longitudeDeg) {
  const QPoint place(qRound(longitudeDeg * 60), qRound(latitudeDeg * 60));
  std::string surface = "sea";
  for (const overlay::TPolyObject& record : Records()) {
    QPolygon outline;
    for (const overlay::PolyPoint& point : record.Points) outline << QPoint(point.Longitude, point.Latitude);
    if (record.Kind == overlay::kBorderRecord || !outline.containsPoint(place, Qt::OddEvenFill)) continue;
    surface = record.Kind == overlay::kWaterRecord ? "lake" : "land";
  }
  return surface;
}

TEST(BuiltCountries, RecordsKeepTheLimits) {
  std::size_t lands = 0, lakes = 0, islandsInLakes = 0, borders = 0, largest = 0;
  for (const overlay::TPolyObject& record : Records()) {
    largest = std::max(largest, record.Points.size());
    EXPECT_GE(record.Points.size(), record.Kind == overlay::kBorderRecord ? 2U : 3U);
    for (const overlay::PolyPoint& point : record.Points) {
      ASSERT_TRUE(point.Longitude >= kWestCutMin && point.Longitude <= kEastCutMin &&
                  std::abs(point.Latitude) <= 5400);
    }
    // Drawing order: lakes over land, borders over everything.
    EXPECT_TRUE(record.Kind == overlay::kBorderRecord || borders == 0);
    ++(record.Kind == overlay::kBorderRecord  ? borders
       : record.Kind == overlay::kWaterRecord ? lakes
       : lakes == 0                           ? lands
                                              : islandsInLakes);
  }
  EXPECT_TRUE(lands > 5000 && lakes > 1500 && islandsInLakes > 50 && borders > 500)
      << lands << ' ' << lakes << ' ' << islandsInLakes << ' ' << borders;
  // The largest coast is simplified until it fits, and no further.
  EXPECT_LE(largest, static_cast<std::size_t>(overlay::kMostPolyPoints));
  EXPECT_GT(largest, static_cast<std::size_t>(overlay::kMostPolyPoints * 9 / 10));
}

TEST(BuiltCountries, PlacesAreWhatTheyAre) {
  const struct {
    const char* label;
    double latitude, longitude;
    const char* surface;
  } rows[] = {
      {"Edinburgh", 55.94, -3.2, "land"},
      {"Lake Superior", 47.6, -87.5, "lake"},
      {"Isle Royale in it", 48, -88.85, "land"},
      {"Caspian Sea, a lake here", 41.5, 51, "lake"},
      {"Moscow, in the largest record", 55.75, 37.6, "land"},
      {"South Pole, at the east edge", -89.9, 179.98, "land"},
      {"South Pole, at the west edge", -89.9, -179.98, "land"},
      {"Ross ice shelf, within the ice front", -80, -175, "land"},
      {"Ross Sea at the east edge", -76, 179.9, "sea"},
      {"Taveuni, east of 180°", -16.85, -179.97, "land"},
      {"Wrangel at the west edge", 71.2, -179.99, "land"},
      {"Wrangel at the east edge", 71.2, 179.99, "land"},
      {"Chukotka, east of 180°", 67.5, -179.9, "land"},
      {"Long Strait between them", 69.9, 179.95, "sea"},
  };
  for (const auto& row : rows) EXPECT_EQ(SurfaceAt(row.latitude, row.longitude), row.surface) << row.label;
}

TEST(BuiltCountries, NoCutIsSeenAsACoast) {
  const picture::IndexedImage master = overlay::DrawMaster(Records(), [](const QString&) {});
  for (const int column : {0, 1, overlay::kMasterWidth - 2, overlay::kMasterWidth - 1}) {
    int coasts = 0;
    for (int row = 0; row < master.Height; ++row) coasts += master.Row(row)[column] == overlay::kBoundary;
    EXPECT_LT(coasts, 20) << column;
  }
  const std::uint8_t* last = master.Row(master.Height - 1);
  EXPECT_EQ(std::count(last, last + master.Width, overlay::kBoundary), 0);
}

TEST(BuiltTopography, HasTheHeightsOfKnownPlaces) {
  const ElevationGrid grid(files::ReadFile(QStringLiteral(PELORIN_BUILT_DATA "/etopo5.elev")));
  const struct {
    const char* label;
    double latitude, longitude;
    float height;
  } rows[] = {// the nodes nearest to the places
              {"Everest", 28, 86 + 11 / 12.0, 6096}, {"Mariana Trench", 11 + 4 / 12.0, 142 + 2 / 12.0, -9905},
              {"Gulf of Guinea", 0, 0, -4876},       {"the same a turn on", 0, 360, -4876},
              {"Denver", 39.75, -105, 1658},         {"Lake Victoria", -1, 33, 1128}};
  for (const auto& row : rows)
    EXPECT_NEAR(grid.HeightM(row.latitude, row.longitude), row.height, 0.5) << row.label;
  // A quarter of the way west from one node to the next.
  EXPECT_NEAR(grid.HeightM(28, 87 - 1 / 48.0), 0.75F * grid.HeightM(28, 87) + 1524, 0.5);
}

TEST(BuiltBackdrop, ShowsLandLakeAndSeaInThreeSizes) {
  for (const auto& [name, width] :
       {std::pair("LargeUserMap.jpg", 4096), {"UserMap.jpg", 2048}, {"SmallUserMap.jpg", 1024}}) {
    SCOPED_TRACE(name);
    const QImage picture(QStringLiteral(PELORIN_BUILT_DATA "/") + QLatin1StringView(name));
    ASSERT_EQ(picture.size(), QSize(width, width / 2));
    const auto at = [&](int latitude, int longitude) {
      return picture.pixelColor(width * (180 + longitude) / 360, width * (90 - latitude) / 360);
    };
    EXPECT_GT(at(20, 10).red(), at(20, 10).blue() + 40) << "Sahara";
    EXPECT_GT(at(-2, 22).green(), at(-2, 22).blue() + 20) << "Congo";
    EXPECT_GT(at(-1, 33).blue(), at(-1, 33).green()) << "Lake Victoria";
    EXPECT_LT(at(30, -60).lightness(), at(55, 3).lightness() - 20) << "deep and shallow sea";
    EXPECT_GT(picture.pixelColor(0, width / 2 - 1).lightness(), 235) << "Antarctica, where it is cut";
  }
}

TEST(Relief, SlopesFacingNorthWestAreBright) {
  EXPECT_FLOAT_EQ(HillShade(0, 0), 1);
  EXPECT_GT(HillShade(0.5F, -0.5F), 1.2F);  // rises to the south-east, so it faces north-west
  EXPECT_LT(HillShade(-0.5F, 0.5F), 0.5F);
}

}  // namespace
}  // namespace pelorin::tools
