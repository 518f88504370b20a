#include "orbit/time_stamp.h"

#include <gtest/gtest.h>

#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

TEST(SteppedTime, MinutesCarryIntoHourAndDate) {
  const struct {
    const char *Label, *Before, *Date;
    int Hour, Minute;
    const char* After;
  } rows[] = {
      {"up over the year's end", "20011231235930", "20011231000000", 23, 0, "2002-01-01 00:00:00.000"},
      {"down over midnight", "20010301000000", "20010301000000", 0, 59, "2001-02-28 23:59:00.000"},
      {"up within the day", "20010412175901", "20010412000000", 17, 0, "2001-04-12 18:00:00.000"},
      {"down within the day", "20010412170059", "20010412000000", 17, 59, "2001-04-12 16:59:00.000"},
      {"hour and minute typed", "20010412175901", "20010412000000", 18, 0, "2001-04-12 18:00:00.000"},
      {"58 to 0 is no step", "20010412175801", "20010412000000", 17, 0, "2001-04-12 17:00:00.000"},
      {"date with a time in it", "20010412175837", "20010514101112", 17, 58, "2001-05-14 17:58:00.000"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", SteppedTime(ParseTimeString(row.Date), row.Hour,
                                                                    row.Minute, ParseTimeString(row.Before))),
              row.After)
        << row.Label;
  }
}

TEST(TimeStamp, NamesOfPicturesTellTheirTime) {
  const struct {
    const char *Name, *Time;  // null: not a time in the year 2019
    int Seconds;              // −1: none
  } rows[] = {
      {"05211525V.png", "2019-05-21 15:25:00", -1},
      {"0521152538.png", "2019-05-21 15:25:38", 38},
      {"0521152538-2.jpg", "2019-05-21 15:25", 38},
      {"0521152560.png", "2019-05-21 15:25", -1},
      {"20190521152538.png", nullptr, -1},
      {"02291015.jpg", nullptr, -1},
      {"0521152.png", nullptr, -1},
      {"picture.png", nullptr, -1},
      {"+5-21525.png", nullptr, -1},
      {"05211525381.png", "2019-05-21 15:25", -1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SecondsOfStamp(row.Name).value_or(-1), row.Seconds) << row.Name;
    if (row.Time) {
      EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn", TimeOfStamp(row.Name, 2019)), std::string(row.Time, 16))
          << row.Name;
    } else {
      EXPECT_THROW(TimeOfStamp(row.Name, 2019), ConvertError) << row.Name;
    }
  }
}

}  // namespace
}  // namespace pelorin::orbit
