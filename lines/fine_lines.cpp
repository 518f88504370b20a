#include "lines/fine_lines.h"

#include <zlib.h>

#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <utility>

namespace pelorin::lines {
namespace {

constexpr std::int64_t kVersionAt = 8, kTagAt = 12, kSizeAt = 16;

files::FileError Damaged(const QString& path, const QString& what) {
  return files::FileError(
      QStringLiteral("%1 is damaged: %2. Please restore the file from the installation.").arg(path, what));
}

/// Reads numbers of seven bits a byte, the lowest first; the eighth bit says that there are more.
class NumberReader {
 public:
  explicit NumberReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  bool AtEnd() const { return at_ == bytes_.size(); }
  std::size_t Left() const { return bytes_.size() - at_; }

  /// False beyond the end, and for a number that does not fit.
  bool Read(std::uint32_t& number) {
    number = 0;
    for (int shift = 0; shift < 28 && at_ < bytes_.size(); shift += 7) {
      const std::uint8_t byte = bytes_[at_++];
      number |= static_cast<std::uint32_t>(byte & 0x7F) << shift;
      if (byte < 0x80) return true;
    }
    return false;
  }

  /// Adds a difference to a coordinate: its sign is the number's lowest bit. False when the sum is outside of
  /// the tile.
  bool Move(int& coordinate) {
    std::uint32_t number = 0;
    if (!Read(number)) return false;
    const auto size = static_cast<int>(number >> 1);
    coordinate += (number & 1) != 0 ? -size - 1 : size;
    return coordinate >= 0 && coordinate <= kFineUnitsPerTile;
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t at_ = 0;
};

}  // namespace

std::uint32_t FineSum(std::span<const std::uint8_t> bytes) {
  return static_cast<std::uint32_t>(crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
}

bool DecodeTile(const LineTile& tile, std::span<const std::uint8_t> bytes, std::vector<FineLine>& lines) {
  NumberReader reader(bytes);
  while (!reader.AtEnd()) {
    std::uint32_t head = 0;
    if (!reader.Read(head)) return false;
    const std::uint32_t kind = head & 3, count = head >> 2;
    // Every point takes two bytes at least: no memory for more than there can be.
    if (kind >= kLineKinds || count < 2 || count > reader.Left() / 2) return false;
    FineLine line{static_cast<LineKind>(kind), {}};
    line.Points.reserve(count);
    int x = 0, y = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
      if (!reader.Move(x) || !reader.Move(y)) return false;
      line.Points.push_back({tile.SouthDeg() + static_cast<double>(y) / kFineUnitsPerDeg,
                             tile.WestDeg() + static_cast<double>(x) / kFineUnitsPerDeg});
    }
    lines.push_back(std::move(line));
  }
  return true;
}

std::optional<FineLines> FineLines::Open(const QString& path) {
  if (path.isEmpty() || !QFileInfo::exists(path)) return std::nullopt;
  auto file = files::MappedFile::Open(path);
  if (!file) throw files::FileError(QStringLiteral("Cannot read %1").arg(path));
  FineLines lines(path, std::move(*file));
  if (const auto fault = lines.Fault()) throw Damaged(path, *fault);
  return lines;
}

std::optional<QString> FineLines::Fault() const {
  constexpr std::int64_t firstTile = kFineHeadBytes + kFineIndexBytes;
  if (file_.Size() < static_cast<std::int64_t>(sizeof kFineMagic - 1) ||
      std::memcmp(file_.Data(), kFineMagic, sizeof kFineMagic - 1) != 0) {
    return QStringLiteral("it is no file of coastlines");
  }
  if (file_.Size() < firstTile) return QStringLiteral("it breaks off");
  if (const std::uint32_t version = Number(kVersionAt); version != kFineVersion) {
    return QStringLiteral("it is of version %1, not %2").arg(version).arg(kFineVersion);
  }
  if (const auto size = qFromLittleEndian<std::uint64_t>(file_.Data() + kSizeAt);
      size != static_cast<std::uint64_t>(file_.Size())) {
    return QStringLiteral("it has %1 bytes, not %2").arg(file_.Size()).arg(size);
  }
  if (FineSum(Bytes(kFineHeadBytes, kFineIndexBytes)) != Tag()) {
    return QStringLiteral("its index does not fit its tag");
  }
  for (std::int64_t entry = kFineHeadBytes; entry < firstTile; entry += kFineEntryBytes) {
    const std::int64_t start = Number(entry), length = Number(entry + 4);
    if (start < firstTile || start + length > file_.Size()) {
      return QStringLiteral("a tile lies outside of it");
    }
  }
  return std::nullopt;
}

std::vector<FineLine> FineLines::Lines(const LineTiles& tiles) const {
  std::vector<FineLine> lines;
  for (LineTile tile; tile.Row < kTileRows; ++tile.Row) {
    for (tile.Column = 0; tile.Column < kTileColumns; ++tile.Column) {
      if (!tiles.Has(tile)) continue;
      const std::int64_t entry = kFineHeadBytes + static_cast<std::int64_t>(tile.Number()) * kFineEntryBytes;
      const auto bytes = Bytes(Number(entry), Number(entry + 4));
      if (FineSum(bytes) != Number(entry + 8) || !DecodeTile(tile, bytes, lines)) {
        throw Damaged(
            path_,
            QStringLiteral("the tile at latitude %1, longitude %2").arg(tile.SouthDeg()).arg(tile.WestDeg()));
      }
    }
  }
  return lines;
}

std::uint32_t FineLines::Tag() const { return Number(kTagAt); }

std::uint32_t FineLines::Number(std::int64_t at) const {
  return qFromLittleEndian<std::uint32_t>(file_.Data() + at);
}

std::span<const std::uint8_t> FineLines::Bytes(std::int64_t at, std::int64_t count) const {
  return {file_.Data() + at, static_cast<std::size_t>(count)};
}

FoundFineLines FindFineLines(const QString& path) {
  FoundFineLines found;
  try {
    if (!path.isEmpty()) found.Lines = FineLines::Open(path);
  } catch (const files::FileError& error) {
    found.Problem = error.Text();
    return found;
  }
  if (!found.Lines) {
    found.Problem = QStringLiteral("Coastlines.dat, which has the coasts, was not found; install it again.");
  }
  return found;
}

}  // namespace pelorin::lines
