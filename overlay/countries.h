#pragma once

#include <QString>
#include <cstdint>
#include <vector>

#include "files/file_error.h"

/// `Countries.dat`: coasts, lakes and borders as polygon records (docs/formats.md).
namespace pelorin::overlay {

/// A point in minutes of arc, east and north positive.
struct PolyPoint {
  std::int16_t Longitude, Latitude;

  bool operator==(const PolyPoint&) const = default;
};

/// The kinds of record that we make; readers know more (TPolyObject).
inline constexpr std::uint8_t kLandRecord = 0;
inline constexpr std::uint8_t kBorderRecord = 1;
inline constexpr std::uint8_t kWaterRecord = 8;

/// Records may hold this many points; the master's drawing counts on it.
inline constexpr int kMostPolyPoints = 15000;

/// One record. The box, in minutes of arc, always holds the point (0, 0): each side starts there and a point
/// only widens the side of its own sign.
struct TPolyObject {
  int MaxLatitude = 0, MinLatitude = 0, MaxLongitude = 0, MinLongitude = 0;
  std::uint8_t Kind = 0;
  std::vector<PolyPoint> Points;

  bool IsOpenLine() const { return (Kind & 1) != 0; }
  bool IsLand() const { return (Kind & 0xFE) == 0 || (Kind & 0xFE) == 4; }
  bool IsWater() const { return (Kind & 0xFE) == 8; }
};

/// All records in file order; an empty file has none. A file that breaks off within a record, or whose counts
/// cannot be, raises FileError naming it, and so does one that cannot be read.
std::vector<TPolyObject> LoadPolygons(const QString& path);

/// What tells one `Countries.dat` from another: the CRC-32 of the file, 1 instead of 0. Raises FileError.
std::uint32_t CountriesTag(const QString& path);

}  // namespace pelorin::overlay
