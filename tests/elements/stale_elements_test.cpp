#include "elements/stale_elements.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;

/// 2022 February 22, 12:00.
constexpr double kEpochJd = 2459633.0;

TEST(StaleElements, TheOldestSetCountsInWholeDays) {
  const QTemporaryDir folder;
  const TSatelliteList none(folder.path().toStdString());
  QFile file(folder.filePath(u"two.tle"_s));
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write(
      "OLD\r\n"
      "1 11111U 98030A   22053.50000000  .00000040  00000-0  35324-4 0  9991\r\n"
      "2 11111  98.5948  80.9236 0010543 126.9210 233.2986 14.26067512238519\r\n"
      "NEW\r\n"
      "1 22222U 98030A   22063.50000000  .00000040  00000-0  35324-4 0  9991\r\n"
      "2 22222  98.5948  80.9236 0010543 126.9210 233.2986 14.26067512238519\r\n");
  file.close();
  const TSatelliteList satellites(folder.path().toStdString());
  ASSERT_EQ(satellites.Count(), 2);
  const struct {
    double days;
    int age;
  } rows[] = {{60.0, 60}, {60.9, 60}, {61.0, 61}, {61.2, 61}, {0.9, 0}, {-0.9, 0}, {-3.5, 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(LargestElementAge(satellites, kEpochJd + row.days), row.age) << row.days;
    EXPECT_EQ(LargestElementAge(none, kEpochJd + row.days), 0);
  }
}

}  // namespace
}  // namespace pelorin::elements
