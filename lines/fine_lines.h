#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "files/file_error.h"
#include "files/mapped_file.h"
#include "lines/line_tiles.h"
#include "swath/ground_track.h"

/// `Coastlines.dat`: coasts, lakes and borders to 0.1 minutes of arc, in tiles (docs/formats.md).
namespace pelorin::lines {

enum class LineKind : std::uint8_t {
  Coast,   ///< where land meets the sea; at Antarctica the front of its ice
  Lake,    ///< shores of lakes, of islands in them, and of ponds on those
  Border,  ///< between countries
};
inline constexpr int kLineKinds = 3;

/// An open line; a closed one ends where it began. Points within a tile, its edges included. A line that goes
/// on in the next tile begins there with the very point that it ends with here. The sides of tiles are never
/// drawn.
struct FineLine {
  LineKind Kind = LineKind::Coast;
  std::vector<swath::GroundPoint> Points;  ///< two or more
};

/// Units in which the file counts: hundredths of a minute of arc, 18.5 m.
inline constexpr int kFineUnitsPerDeg = 6000;
inline constexpr int kFineUnitsPerTile = kTileDeg * kFineUnitsPerDeg;

/// The head of the file, and an entry of the index that follows it; everything in the file is little-endian.
inline constexpr char kFineMagic[] = "PELLINES";  ///< without the closing 0
inline constexpr std::uint32_t kFineVersion = 1;
inline constexpr std::int64_t kFineHeadBytes = 24;
inline constexpr std::int64_t kFineEntryBytes = 12;
inline constexpr std::int64_t kFineIndexBytes = kFineEntryBytes * kTileCount;

/// CRC-32, as the file has it of its index and of every tile.
std::uint32_t FineSum(std::span<const std::uint8_t> bytes);

/// Adds a tile's lines as the file has them; false when the bytes are none. Longitudes are
/// [WestDeg, WestDeg + 5].
bool DecodeTile(const LineTile& tile, std::span<const std::uint8_t> bytes, std::vector<FineLine>& lines);

/// The file seen in memory, for this object's life.
class FineLines {
 public:
  /// Nothing when the file is not there. One that is damaged, or of another version, raises FileError naming
  /// it. The head and the index are checked; tiles are when they are read.
  static std::optional<FineLines> Open(const QString& path);

  /// The lines of those tiles, tile by tile. A damaged tile raises FileError.
  std::vector<FineLine> Lines(const LineTiles& tiles) const;

  /// What tells one such file from another.
  std::uint32_t Tag() const;

 private:
  FineLines(QString path, files::MappedFile file) : path_(std::move(path)), file_(std::move(file)) {}

  std::optional<QString> Fault() const;
  std::uint32_t Number(std::int64_t at) const;
  std::span<const std::uint8_t> Bytes(std::int64_t at, std::int64_t count) const;

  QString path_;
  files::MappedFile file_;
};

/// The file at a path, which is empty where none was found; or for the user why there is none.
struct FoundFineLines {
  std::optional<FineLines> Lines;
  QString Problem;
};
FoundFineLines FindFineLines(const QString& path);

}  // namespace pelorin::lines
