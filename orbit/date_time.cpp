#include "orbit/date_time.h"

#include <array>
#include <chrono>
#include <cmath>

#include "orbit/element_fields.h"
#include "orbit/number_text.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days kDayZero = std::chrono::year{1899} / 12 / 30;
constexpr double kMillisecondsPerDay = 1000 * kSecondsPerDay;
constexpr double kMostDays = 9e6;

}  // namespace

int DaysInMonth(int year, int month) {
  constexpr std::array<int, 12> lengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return lengths[static_cast<std::size_t>(month - 1)] + (month == 2 && leap ? 1 : 0);
}

TDateTime MakeDateTime(int year, int month, int day, int hour, int minute, int second, int millisecond) {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) {
    throw ConvertError("There is no such date: year " + std::to_string(year) + ", month " +
                       std::to_string(month) + ", day " + std::to_string(day));
  }
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59 || millisecond < 0 ||
      millisecond > 999) {
    throw ConvertError("There is no such time: hour " + std::to_string(hour) + ", minute " +
                       std::to_string(minute) + ", second " + std::to_string(second));
  }
  const sys_days date = std::chrono::year{year} / month / day;
  const int ofDay = ((hour * 60 + minute) * 60 + second) * 1000 + millisecond;
  return {static_cast<double>((date - kDayZero).count()) + ofDay / kMillisecondsPerDay};
}

DateTimeFields TakeApart(TDateTime moment) {
  // Some 25,000 years either way: beyond, no calendar holds.
  const double sane = moment.Days > -kMostDays && moment.Days < kMostDays ? moment.Days : 0;
  const double milliseconds = std::round(sane * kMillisecondsPerDay);
  const double wholeDays = std::floor(milliseconds / kMillisecondsPerDay);
  const int rest = static_cast<int>(milliseconds - wholeDays * kMillisecondsPerDay);
  const std::chrono::year_month_day date{kDayZero + days{static_cast<int>(wholeDays)}};
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          rest / 3600000,
          rest / 60000 % 60,
          rest / 1000 % 60,
          rest % 1000};
}

TDateTime DatePart(TDateTime moment) { return {std::floor(moment.Days)}; }

std::string FormatDateTime(std::string_view pattern, TDateTime moment) {
  constexpr std::string_view months = "JanFebMarAprMayJunJulAugSepOctNovDec";
  const DateTimeFields fields = TakeApart(moment);
  std::string text;
  const auto take = [&pattern](std::string_view word) {
    if (!pattern.starts_with(word)) return false;
    pattern.remove_prefix(word.size());
    return true;
  };
  while (!pattern.empty()) {
    if (take("yyyy")) {
      text += TwoDigit(fields.Year / 100) + TwoDigit(fields.Year % 100);
    } else if (take("mmm")) {
      text += months.substr(static_cast<std::size_t>(fields.Month - 1) * 3, 3);
    } else if (take("mm")) {
      text += TwoDigit(fields.Month);
    } else if (take("dd")) {
      text += TwoDigit(fields.Day);
    } else if (take("hh")) {
      text += TwoDigit(fields.Hour);
    } else if (take("nn")) {
      text += TwoDigit(fields.Minute);
    } else if (take("ss")) {
      text += TwoDigit(fields.Second);
    } else if (take("zzz")) {
      text += ThreeDigit(fields.Millisecond);
    } else {
      text += pattern.front();
      pattern.remove_prefix(1);
    }
  }
  return text;
}

TDateTime NowUTC() {
  using namespace std::chrono;
  const auto sinceDayZero = system_clock::now() - time_point_cast<system_clock::duration>(kDayZero);
  return {duration<double, days::period>(sinceDayZero).count()};
}

TDateTime ParseTimeString(std::string_view text, TDateTime now) {
  if (text.size() < 8 || text.size() > 14 || text.size() % 2 != 0) {
    throw ConvertError("'" + std::string(text) + "' is not a time as in 02231015 or 20220223101530");
  }
  int year = TakeApart(now).Year;
  if (const int head = DigitsAt(text, 0, 4); head >= 1231 && text.size() > 10) {
    year = head;
    text.remove_prefix(4);
  }
  const int second = text.size() > 8 ? DigitsAt(text, 8, 2) : 0;
  return MakeDateTime(year, DigitsAt(text, 0, 2), DigitsAt(text, 2, 2), DigitsAt(text, 4, 2),
                      DigitsAt(text, 6, 2), second);
}

}  // namespace pelorin::orbit
