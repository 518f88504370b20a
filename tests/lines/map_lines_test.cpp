#include "lines/map_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "orbit/scalar_math.h"
#include "tests/support/tables.h"

namespace pelorin::lines {
namespace {

using swath::GroundPoint;
using swath::PixelPoint;

/// A plain map of 50 pixels to a degree, 2,001 by 1,001 pixels, with its middle at 5° N, 170° E: it goes
/// across 180°. Rows go on without the latitudes within `gapDeg` of the equator.
PictureView PlainView(double gapDeg = 0) {
  PictureView view{{}, {}, -0.5, -0.5, 2000.5, 1000.5};
  view.PixelOf = [gapDeg](const GroundPoint& ground) -> std::optional<PixelPoint> {
    const double east = std::remainder(ground.LongitudeDeg - 170, 360), north = ground.LatitudeDeg - 5;
    if (std::abs(east) > 22 || std::abs(north) > 12 || std::abs(north + 5) < gapDeg) return std::nullopt;
    return PixelPoint{1000 + east * 50, 500 - (north + 5 < 0 ? north + 2 * gapDeg : north) * 50};
  };
  view.GroundOf = [](const PixelPoint& pixel) -> std::optional<GroundPoint> {
    return GroundPoint{5 - (pixel.Row - 500) / 50, std::remainder(170 + (pixel.Column - 1000) / 50, 360)};
  };
  return view;
}

/// The Arctic from above, stereographic: 1,001 by 1,001 pixels round the pole, 60° N at 12 from the sides.
PictureView PolarView() {
  PictureView view{{}, {}, -0.5, -0.5, 1000.5, 1000.5};
  const double scale = 488 / std::tan(orbit::Radians(15));
  view.PixelOf = [scale](const GroundPoint& ground) -> std::optional<PixelPoint> {
    const double radius = scale * std::tan(orbit::Radians(90 - ground.LatitudeDeg) / 2);
    const double turn = orbit::Radians(ground.LongitudeDeg);
    if (ground.LatitudeDeg < 45) return std::nullopt;
    return PixelPoint{500 + radius * std::sin(turn), 500 + radius * std::cos(turn)};
  };
  view.GroundOf = [scale](const PixelPoint& pixel) -> std::optional<GroundPoint> {
    const double x = pixel.Column - 500, y = pixel.Row - 500;
    return GroundPoint{90 - 2 * orbit::Degrees(std::atan(std::hypot(x, y) / scale)),
                       orbit::Degrees(std::atan2(x, y))};
  };
  return view;
}

double Apart(const PixelPoint& a, const PixelPoint& b) {
  return std::hypot(b.Column - a.Column, b.Row - a.Row);
}

double FromLine(const PixelPoint& pixel, const PixelPoint& a, const PixelPoint& b) {
  const double dx = b.Column - a.Column, dy = b.Row - a.Row;
  const double share = ((pixel.Column - a.Column) * dx + (pixel.Row - a.Row) * dy) / (dx * dx + dy * dy);
  const double along = std::clamp(share, 0.0, 1.0);
  return Apart(pixel, {a.Column + along * dx, a.Row + along * dy});
}

TEST(PixelLines, EndAtEdgesAndGaps) {
  const struct {
    const char* label;
    double gapDeg;
    std::vector<GroundPoint> line;
    std::vector<PixelPoint> ends;  // of each pixel line
  } rows[] = {
      {"inside", 0, {{5, 170}, {6, 171}}, {{1000, 500}, {1050, 450}}},
      {"through both sides", 0, {{5, 140}, {5, 200}}, {{-0.5, 500}, {2000.5, 500}}},
      {"the same, of other turns", 0, {{5, -220}, {5, -160}}, {{-0.5, 500}, {2000.5, 500}}},
      {"out and in",
       0,
       {{14, 170}, {16, 171}, {14, 172}},
       {{1000, 50}, {1025.25, -0.5}, {1074.75, -0.5}, {1100, 50}}},
      {"past a corner", 0, {{14.95, 149.8}, {15.15, 150}}, {}},
      {"over a corner", 0, {{14.8, 149.9}, {15.1, 150.2}}, {{-0.5, 5.5}, {5.5, -0.5}}},
      {"beside it", 0, {{-10, 149}, {20, 149}}, {}},
      {"over a gap", 1.5, {{4, 170}, {-4, 172}}, {{1000, 550}, {1031.25, 675}, {1068.75, 675}, {1100, 800}}},
      {"a point", 0, {{5, 170}}, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    std::vector<PixelLine> lines;
    AddPixelLines(PlainView(row.gapDeg), row.line, lines);
    ASSERT_EQ(2 * lines.size(), row.ends.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
      EXPECT_LT(Apart(lines[i].front(), row.ends[2 * i]), 0.05);
      EXPECT_LT(Apart(lines[i].back(), row.ends[2 * i + 1]), 0.05);
    }
  }
}

TEST(MapLines, GridMeetsTheEdgesUnderItsName) {
  const MapLines map = MapLinesOf(
      PlainView(), nullptr,
      {true, true, true, 10, {{QStringLiteral("here"), {7, -171}}, {QStringLiteral("there"), {7, -149}}}});
  ASSERT_EQ(map.Places.size(), 1U);
  EXPECT_LT(Apart(map.Places[0].At, {1950, 400}), 1e-6);
  EXPECT_EQ(map.Grid.size(), 7U) << "0°, 10°N; 150°E … 170°W, each in one piece";
  EXPECT_EQ(map.Labels.size(), 14U);
  const struct {
    const char* text;
    PictureEdge edge;
    PixelPoint at;
  } rows[] = {{"0°", PictureEdge::Left, {-0.5, 750}},
              {"10°N", PictureEdge::Right, {2000.5, 250}},
              {"180°", PictureEdge::Top, {1500, -0.5}},
              {"160°E", PictureEdge::Bottom, {500, 1000.5}},
              {"170°W", PictureEdge::Top, {2000, -0.5}}};
  for (const auto& row : rows) {
    EXPECT_TRUE(std::any_of(map.Labels.begin(), map.Labels.end(), [&](const GridLabel& label) {
      return label.Text == QString::fromUtf8(row.text) && label.Edge == row.edge &&
             Apart(label.At, row.at) < 0.05;
    })) << row.text;
  }
}

TEST(MapLines, OfAPictureWithThePoleInIt) {
  const MapLines map = MapLinesOf(PolarView(), nullptr, {false, false, false, 5, {}});
  // Parallels of 60° … 85° close; those of 55° and 50° run through the corners.
  EXPECT_EQ(map.Grid.size(), 6U + 4 + 4 + 72);
  for (int i = 8; i < 14; ++i) {
    const PixelLine& circle = map.Grid[static_cast<std::size_t>(i)];
    EXPECT_LT(Apart(circle.front(), circle.back()), 0.01);
    const double radius = Apart(circle.front(), {500, 500});
    double length = 0;
    for (std::size_t k = 1; k < circle.size(); ++k) {
      const PixelPoint &a = circle[k - 1], &b = circle[k];
      ASSERT_NEAR(Apart({(a.Column + b.Column) / 2, (a.Row + b.Row) / 2}, {500, 500}), radius, 0.3);
      length += Apart(a, b);
    }
    EXPECT_NEAR(length, 2 * orbit::kPi * radius, 0.02 * radius);
  }
}

TEST(MapLines, TilesSeenHoldEveryPixelsGround) {
  for (const auto& [view, most] : {std::pair{PlainView(), 80U}, {PolarView(), 600U}}) {
    const LineTiles tiles = TilesSeen(view);
    EXPECT_LE(tiles.Count(), most);
    for (double row = view.Top; row <= view.Bottom; row += 7) {
      for (double column = view.Left; column <= view.Right; column += 7) {
        const GroundPoint ground = *view.GroundOf({column, row});
        ASSERT_TRUE(tiles.Has({static_cast<int>((ground.LatitudeDeg + 90) / kTileDeg),
                               static_cast<int>((ground.LongitudeDeg + 180) / kTileDeg) % kTileColumns}))
            << ground.LatitudeDeg << ' ' << ground.LongitudeDeg;
      }
    }
  }
}

TEST(MapLines, OfRecordingsRunThroughTheFilesPoints) {
  const auto file = FineLines::Open(QStringLiteral(PELORIN_BUILT_DATA "/Coastlines.dat"));
  ASSERT_TRUE(file);
  swath::Recording plain;
  plain.Elements = std::make_shared<const orbit::TSatellite>(tests::DemonstrationSatellite("NOAA 19"));
  plain.SeenBy = {"AVHRR", {2048, 110.8, swath::ScanLaw::EvenAngles}, 6, false};
  plain.Start = orbit::MakeDateTime(2022, 2, 23, 7, 55);
  plain.Columns = 2048;
  plain.Rows = 900;
  swath::Recording framed = plain;
  framed.Columns = 2348;
  framed.FirstColumn = 100;
  framed.Lies.Turned = true;
  swath::Recording parted = plain;
  std::vector<double> seconds;
  // A second is lost after every ninety lines, and twenty in the middle.
  for (int line = 0; line < 900; ++line) {
    seconds.push_back(line / 6.0 + std::floor(line / 90.0) + (line < 450 ? 0 : 20));
  }
  parted.LineTimesS = std::make_shared<const std::vector<double>>(seconds);
  const std::tuple<const char*, swath::Recording, double> rows[] = {
      {"plain", plain, -0.5}, {"framed", framed, 199.5}, {"parted", parted, -0.5}};
  for (const auto& [label, recording, left] : rows) {
    SCOPED_TRACE(label);
    const swath::PixelGeometry geometry(recording);
    const auto isInside = [&, from = left](const PixelPoint& p) {
      return p.Column >= from && p.Column <= from + 2048 && p.Row >= -0.5 && p.Row <= 899.5;
    };
    std::vector<std::pair<PixelPoint, PixelPoint>> steps;
    for (const PixelLine& line : MapLinesOf(recording, &*file, {true, false, false, 0, {}}).Coasts) {
      for (std::size_t i = 1; i < line.size(); ++i) {
        steps.emplace_back(line[i - 1], line[i]);
        ASSERT_TRUE(Apart(line[i - 1], line[i]) < 30 && isInside(line[i - 1]) && isInside(line[i]));
      }
    }
    const std::vector<FineLine> lines = file->Lines(TilesSeen(ViewOf(recording, geometry)));
    int checked = 0;
    for (std::size_t i = 0; i < lines.size(); i += 13) {
      const auto pixel = geometry.PixelOf(lines[i].Points.front());
      if (lines[i].Kind != LineKind::Coast || !pixel || !isInside(*pixel)) continue;
      double nearest = 99;
      for (const auto& [a, b] : steps) {
        if (std::abs(a.Row - pixel->Row) < 30) nearest = std::min(nearest, FromLine(*pixel, a, b));
      }
      ASSERT_LT(nearest, 0.3) << pixel->Column << ' ' << pixel->Row;
      ++checked;
    }
    EXPECT_GT(checked, 30);
  }
}

}  // namespace
}  // namespace pelorin::lines
