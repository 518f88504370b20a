#pragma once

#include <QByteArray>
#include <cstdint>
#include <vector>

#include "tools/rings.h"

/// `Countries.dat`: records one after another, little-endian: point count (4 bytes), kind (1 byte), then
/// longitude and latitude of each point (2 bytes each, signed) in minutes of arc.
namespace pelorin::tools {

/// How a record is drawn. What is drawn later covers what was drawn before.
enum class RecordKind : std::uint8_t { Land = 0, Border = 1, Water = 8 };

struct CountryRecord {
  RecordKind Kind = RecordKind::Land;
  std::vector<FilePoint> Points;
};

QByteArray EncodeRecords(const std::vector<CountryRecord>& records);

/// Throws std::runtime_error when the bytes end within a record, or hold a kind that is not one of ours.
std::vector<CountryRecord> DecodeRecords(const QByteArray& bytes);

}  // namespace pelorin::tools
