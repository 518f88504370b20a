#include "overlay/countries.h"

#include <zlib.h>

#include <algorithm>
#include <bit>
#include <cstring>

#include "files/read_file.h"

namespace pelorin::overlay {
namespace {

constexpr qsizetype kHeadBytes = 5;

std::uint32_t LittleEndian(const char* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = count - 1; i >= 0; --i) value = value << 8 | static_cast<std::uint8_t>(bytes[i]);
  return value;
}

std::int16_t Coordinate(const char* bytes) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(LittleEndian(bytes, 2)));
}

}  // namespace

std::vector<TPolyObject> LoadPolygons(const QString& path) {
  const QByteArray bytes = files::ReadFile(path);
  const auto damaged = [&path](qsizetype at, const QString& what) {
    return files::FileError(
        QStringLiteral("%1 is damaged: %2 at byte %3. Please restore the file from the installation.")
            .arg(path, what)
            .arg(at));
  };
  std::vector<TPolyObject> polygons;
  qsizetype at = 0;
  while (at < bytes.size()) {
    if (bytes.size() - at < kHeadBytes) throw damaged(at, QStringLiteral("the file breaks off"));
    const auto count = static_cast<std::int32_t>(LittleEndian(bytes.constData() + at, 4));
    TPolyObject polygon;
    polygon.Kind = static_cast<std::uint8_t>(bytes[at + 4]);
    at += kHeadBytes;
    if (at == bytes.size()) break;  // a five-byte trailer
    if (count < 0 || count > kMostPolyPoints) {
      throw damaged(at - kHeadBytes, QStringLiteral("a record of %1 points").arg(count));
    }
    if ((bytes.size() - at) / 4 < count) throw damaged(at, QStringLiteral("the file breaks off"));
    polygon.Points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i, at += 4) {
      const PolyPoint point{Coordinate(bytes.constData() + at), Coordinate(bytes.constData() + at + 2)};
      polygon.MaxLatitude = std::max<int>(polygon.MaxLatitude, point.Latitude);
      polygon.MinLatitude = std::min<int>(polygon.MinLatitude, point.Latitude);
      polygon.MaxLongitude = std::max<int>(polygon.MaxLongitude, point.Longitude);
      polygon.MinLongitude = std::min<int>(polygon.MinLongitude, point.Longitude);
      polygon.Points.push_back(point);
    }
    polygons.push_back(std::move(polygon));
  }
  return polygons;
}

std::uint32_t CountriesTag(const QString& path) {
  const QByteArray bytes = files::ReadFile(path);
  const auto sum =
      crc32(0, reinterpret_cast<const Bytef*>(bytes.constData()), static_cast<uInt>(bytes.size()));
  return std::max(static_cast<std::uint32_t>(sum), std::uint32_t{1});
}

}  // namespace pelorin::overlay
