#pragma once

#include <compare>
#include <string>
#include <string_view>

namespace pelorin::orbit {

inline constexpr double kMinutesPerDay = 1440;
inline constexpr double kSecondsPerDay = 86400;

/// A moment in UTC: days since 1899-12-30 00:00.
struct TDateTime {
  double Days = 0;

  auto operator<=>(const TDateTime&) const = default;
};

/// A moment taken apart, rounded to the millisecond. Month and day count from 1.
struct DateTimeFields {
  int Year, Month, Day, Hour, Minute, Second, Millisecond;
};

/// Days of a month in the Gregorian calendar.
int DaysInMonth(int year, int month);

/// A moment put together; a field out of its range raises ConvertError.
TDateTime MakeDateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                       int millisecond = 0);

DateTimeFields TakeApart(TDateTime moment);

/// 00:00 of the moment's day.
TDateTime DatePart(TDateTime moment);

/// Writes a moment by a pattern of "yyyy", "mmm" (English month name, three letters), "mm", "dd", "hh", "nn"
/// (minutes), "ss" and "zzz" (milliseconds); every other character stands for itself. Seconds are cut, not
/// rounded.
std::string FormatDateTime(std::string_view pattern, TDateTime moment);

/// The system clock, in UTC.
TDateTime NowUTC();

/// Reads "mmddhhnnss" or "yyyymmddhhnnss", with or without the seconds (then 0). Without a year it is the
/// year of `now`. The first four characters of a text of more than ten are a year when their value is 1231 or
/// more: no "mmdd" exceeds December 31, and a text of up to ten characters has no room for a year. A field
/// that is no number, or no such date or time, raises ConvertError.
TDateTime ParseTimeString(std::string_view text, TDateTime now = NowUTC());

}  // namespace pelorin::orbit
