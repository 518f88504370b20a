#include "tools/countries_file.h"

#include "tools/append_value.h"

namespace pelorin::tools {

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
