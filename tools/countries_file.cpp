#include "tools/countries_file.h"

#include <QtEndian>

namespace pelorin::tools {
namespace {

template <typename T>
void AppendValue(QByteArray& bytes, T value) {
  const T stored = qToLittleEndian(value);
  bytes.append(reinterpret_cast<const char*>(&stored), sizeof stored);
}

}  // namespace

QByteArray EncodeRecords(const std::vector<CountryRecord>& records) {
  QByteArray bytes;
  for (const CountryRecord& record : records) {
    AppendValue(bytes, static_cast<std::int32_t>(record.Points.size()));
    AppendValue(bytes, record.Kind);
    for (const overlay::PolyPoint& point : record.Points) {
      AppendValue(bytes, point.Longitude);
      AppendValue(bytes, point.Latitude);
    }
  }
  return bytes;
}

}  // namespace pelorin::tools
