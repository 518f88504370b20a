#include "tools/countries_file.h"

#include <QtEndian>
#include <stdexcept>

namespace pelorin::tools {
namespace {

constexpr qsizetype HeadBytes = 5;
constexpr qsizetype PointBytes = 4;

template <typename T>
void AppendValue(QByteArray& bytes, T value) {
  const T stored = qToLittleEndian(value);
  bytes.append(reinterpret_cast<const char*>(&stored), sizeof stored);
}

RecordKind KindOf(char byte) {
  const auto kind = static_cast<RecordKind>(byte);
  if (kind == RecordKind::Land || kind == RecordKind::Border || kind == RecordKind::Water) return kind;
  throw std::runtime_error("unknown kind of record");
}

}  // namespace

QByteArray EncodeRecords(const std::vector<CountryRecord>& records) {
  QByteArray bytes;
  for (const CountryRecord& record : records) {
    AppendValue(bytes, static_cast<std::int32_t>(record.Points.size()));
    AppendValue(bytes, static_cast<std::uint8_t>(record.Kind));
    for (const FilePoint& point : record.Points) {
      AppendValue(bytes, point.Longitude);
      AppendValue(bytes, point.Latitude);
    }
  }
  return bytes;
}

std::vector<CountryRecord> DecodeRecords(const QByteArray& bytes) {
  std::vector<CountryRecord> records;
  qsizetype at = 0;
  while (at < bytes.size()) {
    if (bytes.size() - at < HeadBytes) throw std::runtime_error("cut short within a record's head");
    const auto count = qFromLittleEndian<std::int32_t>(bytes.constData() + at);
    CountryRecord record{KindOf(bytes[at + 4]), {}};
    at += HeadBytes;
    if (count < 0 || count > (bytes.size() - at) / PointBytes) {
      throw std::runtime_error("cut short within a record's points");
    }
    record.Points.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i, at += PointBytes) {
      record.Points.push_back({qFromLittleEndian<std::int16_t>(bytes.constData() + at),
                               qFromLittleEndian<std::int16_t>(bytes.constData() + at + 2)});
    }
    records.push_back(std::move(record));
  }
  return records;
}

}  // namespace pelorin::tools
