#pragma once

#include <QByteArray>
#include <vector>

#include "overlay/countries.h"

namespace pelorin::tools {

/// A record of `Countries.dat` as its maker has it.
struct CountryRecord {
  std::uint8_t Kind = overlay::kLandRecord;
  std::vector<overlay::PolyPoint> Points;
};

/// The bytes of the file: records one after another, little-endian, without a header. overlay/countries reads
/// them.
QByteArray EncodeRecords(const std::vector<CountryRecord>& records);

}  // namespace pelorin::tools
