#include <gtest/gtest.h>

#include <QImage>
#include <QPoint>
#include <QPolygon>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "files/read_file.h"
#include "lines/fine_lines.h"
#include "orbit/scalar_math.h"
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

/// Minutes of arc from a place to the nearest line of a kind in its tiles; 99 when there is none.
double NearestLineMin(lines::LineKind kind, double latitude, double longitude) {
  static const auto coastlines = lines::FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"));
  lines::LineTiles tiles;
  tiles.AddCircle({latitude, longitude}, 0.1);
  const double narrow = std::cos(orbit::Radians(latitude));
  double nearest = 99;
  for (const lines::FineLine& line : coastlines->Lines(tiles)) {
    for (std::size_t i = 1; i < line.Points.size() && line.Kind == kind; ++i) {
      const auto from = line.Points[i - 1], to = line.Points[i];
      const double dx = (to.LongitudeDeg - from.LongitudeDeg) * narrow,
                   dy = to.LatitudeDeg - from.LatitudeDeg;
      const double x = (longitude - from.LongitudeDeg) * narrow, y = latitude - from.LatitudeDeg;
      const double part = std::clamp((x * dx + y * dy) / (dx * dx + dy * dy), 0.0, 1.0);
      nearest = std::min(nearest, 60 * std::hypot(x - part * dx, y - part * dy));
    }
  }
  return nearest;
}

TEST(BuiltCoastlines, RunWhereCoastsAre) {
  using enum lines::LineKind;
  const struct {
    const char* label;
    lines::LineKind kind;
    double latitude, longitude, nearest, farthest;  // minutes from the next line
  } rows[] = {
      {"Cape of Good Hope", Coast, -34.357, 18.474, 0, 0.4},
      {"Land's End", Coast, 50.066, -5.715, 0, 0.1},
      {"Gibraltar, Europa Point", Coast, 36.109, -5.346, 0, 0.1},
      {"Cabo da Roca", Coast, 38.781, -9.499, 0, 0.1},
      {"Taveuni at 180°, no cut", Coast, -16.85, 180, 0.5, 10},
      {"Antarctica on land at 180°", Coast, -86, 180, 99, 99},
      {"Lake Geneva at Ouchy", Lake, 46.506, 6.627, 0, 0.35},
      {"in its middle", Lake, 46.45, 6.55, 2, 5},
      {"Isle Royale's south-west end", Lake, 47.855, -89.23, 0, 1},
      {"France and Spain at Le Perthus", Border, 42.4635, 2.863, 0, 1},
      {"Canada and the USA in the plains, on a parallel", Border, 49, -100.3, 0, 0.1},
  };
  for (const auto& row : rows) {
    const double minutes = NearestLineMin(row.kind, row.latitude, row.longitude);
    EXPECT_TRUE(minutes >= row.nearest && minutes <= row.farthest) << row.label << ": " << minutes;
  }
}

TEST(BuiltCoastlines, NoEdgeOfABinOrATileIsDrawn) {
  lines::LineTiles all;
  all.AddBox(-90, -180, 90, 180);
  // The source's bins are 2°, our tiles 5°. A real coast hits a whole degree twice in a row by chance.
  double alongEdgesDeg = 0;
  std::size_t points = 0;
  const auto onEdge = [](double a, double b) { return a == b && a == std::round(a); };
  for (const auto& line :
       lines::FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"))->Lines(all)) {
    points += line.Points.size();
    if (line.Kind == lines::LineKind::Border) continue;  // some do run along whole degrees
    for (std::size_t i = 1; i < line.Points.size(); ++i) {
      const auto from = line.Points[i - 1], to = line.Points[i];
      ASSERT_TRUE(from.LatitudeDeg > -89 && from.LatitudeDeg < 84);
      if (onEdge(from.LongitudeDeg, to.LongitudeDeg))
        alongEdgesDeg += std::abs(to.LatitudeDeg - from.LatitudeDeg);
      if (onEdge(from.LatitudeDeg, to.LatitudeDeg))
        alongEdgesDeg += std::abs(to.LongitudeDeg - from.LongitudeDeg);
    }
  }
  EXPECT_LT(alongEdgesDeg, 0.2);
  EXPECT_GT(points, 1'000'000U);
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
