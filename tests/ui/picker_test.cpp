#include <gtest/gtest.h>

#include <QDateTimeEdit>
#include <QTest>

#include "session/picker_time.h"

namespace pelorin::session {
namespace {

TEST(Picker, TakesWhatIsTypedHoweverItIsWritten) {
  const struct {
    const char* Label;
    const char* Format;
    const char* Keys;  ///< after everything has been selected
    const char* Shown;
  } rows[] = {
      {"time in digits", "HH:mm", "1525", "15:25"},
      {"time as it is shown", "HH:mm", "15:21", "15:21"},
      {"time with one digit", "HH:mm", "7:05", "07:05"},
      {"parts left with the Tab key", "HH:mm", "07\t51", "07:51"},
      {"seconds too", "HH:mm:ss", "01:02:03", "01:02:03"},
      {"date in digits", "yyyy MMM dd", "20220223", "2022 Feb 23"},
      {"date as standards have it", "yyyy MMM dd", "2019-05-21", "2019 May 21"},
      {"date as it is shown", "yyyy MMM dd", "2019 May 21", "2019 May 21"},
      {"last months", "yyyy MMM dd", "2021/12/31", "2021 Dec 31"},
      {"months of one digit", "yyyy MMM dd", "2021/1/3", "2021 Jan 03"},
      {"a month without that day", "yyyy MMM dd", "2021-2", "2021 Feb 28"},
  };
  for (const auto& row : rows) {
    QDateTimeEdit picker(QDateTime(QDate(2020, 10, 31), QTime(11, 30, 40), Qt::UTC));
    SetUpPicker(&picker, QLatin1StringView(row.Format));
    picker.show();
    picker.setFocus();
    picker.selectAll();
    for (const char* key = row.Keys; *key != 0; ++key) QTest::keyClick(&picker, *key);
    picker.interpretText();
    EXPECT_EQ(picker.text().toStdString(), row.Shown) << row.Label;
  }
}

}  // namespace
}  // namespace pelorin::session
