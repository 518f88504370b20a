#include "tools/countries_file.h"

#include <gtest/gtest.h>

namespace pelorin::tools {
namespace {

TEST(CountriesFile, IsLittleEndianWithoutHeader) {
  const QByteArray bytes = EncodeRecords(
      {{overlay::kWaterRecord, {{-10830, 3357}, {258, -2}}}, {overlay::kBorderRecord, {{1, 2}}}});
  EXPECT_EQ(bytes.toHex(), "0200000008b2d51d0d0201feff010000000101000200");
}

}  // namespace
}  // namespace pelorin::tools
