#include "lines/fine_lines.h"

#include <gtest/gtest.h>

#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <random>

#include "files/atomic_file.h"
#include "tests/support/folder_test.h"
#include "tools/fine_lines_file.h"

namespace pelorin::tools {
namespace {

using lines::FineLine;
using lines::FineLines;
using lines::LineKind;
using lines::LineTile;
using lines::LineTiles;

LineTiles AllTiles() {
  LineTiles tiles;
  tiles.AddBox(-90, -180, 90, 180);
  return tiles;
}

class FineLinesFile : public tests::FolderTest {
 protected:
  QString Written(const QByteArray& bytes) const {
    files::ReplaceFile(Path("Coastlines.dat"), bytes);
    return Path("Coastlines.dat");
  }
  std::vector<FineLine> ComeBack(const SourceLine& line) const {
    return FineLines::Open(Written(EncodeFineLines({line})))->Lines(AllTiles());
  }
};

/// To the file's unit.
Points HundredthsOf(const FineLine& line) {
  Points points;
  for (const auto& point : line.Points) {
    points.push_back(
        {std::round(point.LongitudeDeg * 6000) / 100, std::round(point.LatitudeDeg * 6000) / 100});
  }
  return points;
}

TEST_F(FineLinesFile, IsCutWhereLinesLeaveATileAndNowhereElse) {
  const Ring icy{1, {{-10000, -4500}, {-3000, -4600}, {4000, -4550}, {9000, -4700}}, true};
  const struct {
    const char* label;
    Points line;
    std::vector<Points> pieces;  // tile by tile
  } rows[] = {
      {"within a tile", {{10, 20}, {-0.004, 30.123}}, {{{10, 20}, {0, 30.12}}}},
      {"over a corner of four",
       {{290, 295}, {310, 305}},
       {{{290, 295}, {300, 300}}, {{300, 300}, {310, 305}}}},
      {"out and back",
       {{290, 10}, {310, 20}, {290, 30}},
       {{{290, 10}, {300, 15}}, {{300, 25}, {290, 30}}, {{300, 15}, {310, 20}, {300, 25}}}},
      {"along a side", {{300, 10}, {300, 290}}, {{{300, 10}, {300, 290}}}},
      {"east over 180°",
       {{10790, -10}, {10810, -30}},
       {{{-10800, -20}, {-10790, -30}}, {{10790, -10}, {10800, -20}}}},
      {"a turn farther", {{21590, 10}, {21610, 10}}, {{{-10, 10}, {0, 10}}, {{0, 10}, {10, 10}}}},
      {"to the pole", {{70, 5390}, {70, 5400}}, {{{70, 5390}, {70, 5400}}}},
      {"to a point", {{70, 50}, {70.001, 50}}, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    std::vector<Points> pieces;
    for (const FineLine& line : ComeBack({LineKind::Lake, row.line})) {
      EXPECT_EQ(line.Kind, LineKind::Lake);
      pieces.push_back(HundredthsOf(line));
    }
    EXPECT_EQ(pieces, row.pieces);
  }
  // Once round: every tile's width is crossed, nothing runs to the pole.
  double turnMin = 0, south = 0;
  for (const FineLine& line : ComeBack({LineKind::Coast, OutlineOf(icy)})) {
    turnMin += 60 * (line.Points.back().LongitudeDeg - line.Points.front().LongitudeDeg);
    for (const auto& point : line.Points) south = std::min(south, point.LatitudeDeg * 60);
  }
  EXPECT_NEAR(turnMin, 21600, 1e-6);
  EXPECT_NEAR(south, -4700, 1e-6);
}

TEST_F(FineLinesFile, DamageIsToldAndHarmless) {
  EXPECT_FALSE(FineLines::Open(Path("none.dat")) || FineLines::Open({}));
  const QByteArray good = EncodeFineLines({{LineKind::Border, {{0, 0}, {50, 250}, {90, 200}}}});
  constexpr qsizetype tiles = lines::kFineHeadBytes + lines::kFineIndexBytes;
  const struct {
    const char* label;
    qsizetype size, at;  // cut to the size; a bit changed at the place
    bool retag;          // the tag made to fit the index
    const char* told;
  } rows[] = {
      {"empty", 0, 0, false, "Cannot read"},
      {"short", 5, 0, false, "no file of coastlines"},
      {"another file", tiles, 0, false, "no file of coastlines"},
      {"head alone", 30, 23, false, "breaks off"},
      {"of another time", good.size(), 8, false, "version 65, not 1"},
      {"cut", good.size() - 1, tiles, false, "bytes, not"},
      {"index", good.size(), 400, false, "does not fit its tag"},
      {"a tile beyond the end", good.size(), tiles - 8, true, "outside of it"},
      {"tile", good.size(), tiles, false, "latitude 0, longitude 0"},
  };
  for (const auto& row : rows) {
    QByteArray bytes = good.first(row.size);
    if (row.size > 0) bytes[row.at] = static_cast<char>(bytes[row.at] ^ 64);
    if (row.retag) {
      const auto* index = reinterpret_cast<const std::uint8_t*>(bytes.constData()) + lines::kFineHeadBytes;
      qToLittleEndian(lines::FineSum({index, static_cast<std::size_t>(lines::kFineIndexBytes)}),
                      bytes.data() + 12);
    }
    const QString told = tests::ErrorOf([&] { FineLines::Open(Written(bytes))->Lines(AllTiles()); });
    EXPECT_TRUE(told.contains(QLatin1StringView(row.told))) << row.label << ": " << told.toStdString();
  }

  // What passes the sums by chance is still never read beyond its end, and leads nowhere outside of its tile.
  const LineTile tile{20, 30};
  std::mt19937 random(7);
  std::vector<std::uint8_t> bytes;
  int decoded = 0;
  for (int i = 0; i < 20000; ++i) {
    bytes.resize(random() % 24);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random() % (i % 2 == 0 ? 256 : 24));
    std::vector<FineLine> lines;
    decoded += lines::DecodeTile(tile, bytes, lines) && !lines.empty();
    for (const FineLine& line : lines) {
      for (const auto& point : line.Points) {
        ASSERT_TRUE(std::abs(point.LatitudeDeg - 12.5) <= 2.5 && std::abs(point.LongitudeDeg + 27.5) <= 2.5);
      }
    }
  }
  EXPECT_GT(decoded, 10);
}

TEST(LineTiles, AreThoseThatABoxOrACircleMeets) {
  const struct {
    const char* label;
    double south, west, north, east;  // or a circle: latitude, longitude, radius, 0
    std::size_t tiles;
  } rows[] = {
      {"a corner of four", 4, 4, 6, 6, 4},
      {"over 180°", 1, 179, 2, -179, 2},
      {"the same a turn on", 1, 539, 2, 541, 2},
      {"touches the next", 1, 1, 5, 2, 2},
      {"to the pole", 86, 1, 90, 2, 1},
      {"the Earth", -90, -180, 90, 180, 2592},
      {"circle over the pole", 88.9, 2, 2, 0, 72},
      {"3.4° of longitude to either side", 62, 3, 1.6, 0, 3},
  };
  for (const auto& row : rows) {
    LineTiles tiles;
    if (row.east == 0) {
      tiles.AddCircle({row.south, row.west}, row.north);
    } else {
      tiles.AddBox(row.south, row.west, row.north, row.east);
    }
    EXPECT_EQ(tiles.Count(), row.tiles) << row.label;
  }
}

}  // namespace
}  // namespace pelorin::tools
