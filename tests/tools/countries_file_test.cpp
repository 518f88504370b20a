#include "tools/countries_file.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace pelorin::tools {
namespace {

TEST(CountriesFile, IsLittleEndianWithoutHeader) {
  const QByteArray bytes =
      EncodeRecords({{RecordKind::Water, {{-10830, 3357}, {258, -2}}}, {RecordKind::Border, {{1, 2}}}});
  EXPECT_EQ(bytes.toHex(), "0200000008b2d51d0d0201feff010000000101000200");
  EXPECT_EQ(EncodeRecords(DecodeRecords(bytes)), bytes);
}

TEST(CountriesFile, GarbledBytesAreRefused) {
  for (const char* hex : {"02000000", "0200000000010002000300", "ffffffff00",
                          "0100000007"
                          "01000200"}) {
    EXPECT_THROW(DecodeRecords(QByteArray::fromHex(hex)), std::runtime_error) << hex;
  }
}

}  // namespace
}  // namespace pelorin::tools
