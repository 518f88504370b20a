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
  std::size_t lands = 0, lakes = 0, islandsInLakes = 0, borders = 0;
  for (const overlay::TPolyObject& record : Records()) {
    EXPECT_LE(record.Points.size(), static_cast<std::size_t>(overlay::kMostPolyPoints));
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
}

TEST(BuiltCountries, PlacesAreWhatTheyAre) {
  struct Row {
    const char* label;
    double latitude, longitude;
    const char* surface;
  };
  const Row rows[] = {
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
  for (const Row& row : rows) EXPECT_EQ(SurfaceAt(row.latitude, row.longitude), row.surface) << row.label;
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
  struct Row {
    const char* label;
    double latitude, longitude;
    float height;
  };
  // The nodes nearest to the places.
  const Row rows[] = {
      {"Everest", 28, 86 + 11 / 12.0, 6096}, {"Mariana Trench", 11 + 4 / 12.0, 142 + 2 / 12.0, -9905},
      {"Gulf of Guinea", 0, 0, -4876},       {"the same a turn on", 0, 360, -4876},
      {"Denver", 39.75, -105, 1658},         {"Lake Victoria", -1, 33, 1128}};
  for (const Row& row : rows)
    EXPECT_NEAR(grid.HeightM(row.latitude, row.longitude), row.height, 0.5) << row.label;
  // A quarter of the way west from one node to the next.
  EXPECT_NEAR(grid.HeightM(28, 87 - 1 / 48.0), 0.75F * grid.HeightM(28, 87) + 1524, 0.5);
}

TEST(BuiltBackdrop, HasThreeSizes) {
  for (const auto& [name, width] :
       {std::pair("LargeUserMap.jpg", 4096), {"UserMap.jpg", 2048}, {"SmallUserMap.jpg", 1024}}) {
    const QImage picture(QStringLiteral(PELORIN_BUILT_DATA "/") + QLatin1StringView(name));
    ASSERT_EQ(picture.size(), QSize(width, width / 2)) << name;
    const QColor sahara = picture.pixelColor(width * 190 / 360, width * 70 / 360);
    EXPECT_GT(sahara.red(), sahara.blue() + 40) << name;
    EXPECT_GT(picture.pixelColor(0, width / 2 - 1).lightness(), 235) << name;  // Antarctica, where it is cut
  }
}

}  // namespace
}  // namespace pelorin::tools
