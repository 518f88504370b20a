#include "tools/fine_lines_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "tools/append_value.h"

namespace pelorin::tools {
namespace {

using lines::kFineUnitsPerTile;

constexpr double kUnitsPerMin = lines::kFineUnitsPerDeg / 60.0;

/// Where a line goes, in the file's units: X from 180° W, of any turn; Y from the south pole.
using Way = std::vector<GridPoint>;

/// What the file has of each tile.
using Tiles = std::array<QByteArray, lines::kTileCount>;

std::int64_t DownToTile(std::int64_t units, std::int64_t tile) {
  return units >= 0 ? units / tile : -((-units + tile - 1) / tile);
}

/// Adds where the way from one point to the next crosses the sides between tiles of one axis, as parts of it.
void AddCrossings(std::int64_t from, std::int64_t to, std::vector<double>& parts) {
  const auto [low, high] = std::minmax(from, to);
  const std::int64_t tile = kFineUnitsPerTile;
  for (std::int64_t side = (DownToTile(low, tile) + 1) * tile; side < high; side += tile) {
    parts.push_back(static_cast<double>(side - from) / static_cast<double>(to - from));
  }
}

/// The rounded line with a point wherever it crosses from tile to tile: each step stays within one.
Way StepsOf(const Points& line) {
  Way way;
  const auto add = [&way](const GridPoint& point) {
    if (way.empty() || way.back() != point) way.push_back(point);
  };
  for (const PointMin& point : line) {
    const GridPoint to{std::llround((point.Longitude + 10800) * kUnitsPerMin),
                       std::llround((point.Latitude + 5400) * kUnitsPerMin)};
    if (!way.empty()) {
      const GridPoint from = way.back();
      std::vector<double> parts;
      AddCrossings(from.X, to.X, parts);
      AddCrossings(from.Y, to.Y, parts);
      std::sort(parts.begin(), parts.end());
      for (const double part : parts) {
        add({from.X + std::llround(part * static_cast<double>(to.X - from.X)),
             from.Y + std::llround(part * static_cast<double>(to.Y - from.Y))});
      }
    }
    add(to);
  }
  return way;
}

/// The tile of a step; its column may be of any turn. What runs along a side lies in the tile to the north or
/// east of it.
lines::LineTile TileOf(const GridPoint& from, const GridPoint& to) {
  const std::int64_t twoTiles = 2 * std::int64_t{kFineUnitsPerTile};
  return {std::clamp(static_cast<int>(DownToTile(from.Y + to.Y, twoTiles)), 0, lines::kTileRows - 1),
          static_cast<int>(DownToTile(from.X + to.X, twoTiles))};
}

void AppendNumber(std::uint32_t number, QByteArray& bytes) {
  for (; number >= 0x80; number >>= 7) bytes.append(static_cast<char>(number | 0x80));
  bytes.append(static_cast<char>(number));
}

void AppendDifference(std::int64_t difference, QByteArray& bytes) {
  const std::int64_t folded = difference >= 0 ? 2 * difference : -2 * difference - 1;
  AppendNumber(static_cast<std::uint32_t>(folded), bytes);
}

void AppendPiece(lines::LineKind kind, const lines::LineTile& tile, const Way& piece, Tiles& tiles) {
  constexpr int columns = lines::kTileColumns;
  const lines::LineTile stored{tile.Row, ((tile.Column % columns) + columns) % columns};
  QByteArray& bytes = tiles[stored.Number()];
  AppendNumber(static_cast<std::uint32_t>(piece.size() << 2) | static_cast<std::uint32_t>(kind), bytes);
  GridPoint last{std::int64_t{tile.Column} * kFineUnitsPerTile, std::int64_t{tile.Row} * kFineUnitsPerTile};
  for (const GridPoint& point : piece) {
    AppendDifference(point.X - last.X, bytes);
    AppendDifference(point.Y - last.Y, bytes);
    last = point;
  }
}

void AppendLine(const SourceLine& line, Tiles& tiles) {
  const Way way = StepsOf(line.Line);
  Way piece;
  for (std::size_t i = 1; i < way.size(); ++i) {
    if (piece.empty()) piece.push_back(way[i - 1]);
    piece.push_back(way[i]);
    const lines::LineTile tile = TileOf(way[i - 1], way[i]);
    if (i + 1 < way.size()) {
      const lines::LineTile next = TileOf(way[i], way[i + 1]);
      if (next.Row == tile.Row && next.Column == tile.Column) continue;
    }
    AppendPiece(line.Kind, tile, piece, tiles);
    piece.clear();
  }
}

std::uint32_t SumOf(const QByteArray& bytes) {
  return lines::FineSum(
      {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
}

}  // namespace

Points OutlineOf(const Ring& ring) {
  Points line = ring.Outline;
  PointMin end = line.front();
  // Without a jump; the coast of Antarctica begins again a turn farther.
  end.Longitude += 21600 * std::round((line.back().Longitude - end.Longitude) / 21600);
  line.push_back(end);
  return line;
}

QByteArray EncodeFineLines(const std::vector<SourceLine>& lines) {
  Tiles tiles;
  for (const SourceLine& line : lines) AppendLine(line, tiles);
  QByteArray index, content;
  for (const QByteArray& tile : tiles) {
    AppendValue(index,
                static_cast<std::uint32_t>(lines::kFineHeadBytes + lines::kFineIndexBytes + content.size()));
    AppendValue(index, static_cast<std::uint32_t>(tile.size()));
    AppendValue(index, SumOf(tile));
    content += tile;
  }
  QByteArray bytes(lines::kFineMagic);
  AppendValue(bytes, lines::kFineVersion);
  AppendValue(bytes, SumOf(index));
  AppendValue(bytes, static_cast<std::uint64_t>(lines::kFineHeadBytes + index.size() + content.size()));
  return bytes + index + content;
}

}  // namespace pelorin::tools
