#include "orbit/julian_date.h"

#include <cmath>
#include <cstdint>

#include "orbit/element_fields.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

/// Julian date of 1899-12-30 00:00.
constexpr double kJulianDateOfDayZero = 2415018.5;

/// Units of 10^-places seconds in a day fraction, rounded.
std::int64_t RoundedUnits(double fraction, int places) {
  return std::llround(fraction * kSecondsPerDay * std::pow(10.0, places));
}

}  // namespace

double JulianDateOfYear(int year) {
  const double y = year - 1;
  const double century = std::trunc(y / 100);
  const double gregorian = 2 - century + std::trunc(century / 4);
  return std::trunc(365.25 * y) + 428 + 1720994.5 + gregorian;
}

EpochParts SplitEpoch(double epoch) {
  // Garbage in the epoch's columns must not become a date beyond every calendar, or the newest of all sets.
  if (!(epoch >= 0 && epoch < 100000)) epoch = 0;
  const double thousands = std::trunc(epoch * 0.001);
  const int yy = static_cast<int>(thousands);
  const double day = epoch - thousands * 1000;
  return {yy >= 57 ? yy + 1900 : yy + 2000, day < 367 ? day : 0};
}

double JulianDateOfEpoch(double epoch) {
  const EpochParts parts = SplitEpoch(epoch);
  return JulianDateOfYear(parts.Year) + parts.Day;
}

int DayOfYear(int year, int month, int day) {
  int days = day;
  for (int m = 1; m < month; ++m) days += DaysInMonth(year, m);
  return days;
}

double FractionOfDay(int hour, int minute, int second, int hundredths) {
  return (((second + hundredths / 100.0) / 60 + minute) / 60 + hour) / 24;
}

double JulianDateOfDateTime(TDateTime moment) {
  const DateTimeFields f = TakeApart(moment);
  return JulianDateOfYear(f.Year) + DayOfYear(f.Year, f.Month, f.Day) +
         FractionOfDay(f.Hour, f.Minute, f.Second, f.Millisecond / 10);
}

double JulianDateOfMoment(TDateTime moment) { return moment.Days + kJulianDateOfDayZero; }

TDateTime DateTimeOfJulianDate(double jd) { return {jd - kJulianDateOfDayZero}; }

std::string JulianDateToString(double jd, int places) {
  constexpr std::string_view months = "  JanFebMarAprMayJunJulAugSepOctNovDec";
  double day = std::floor(jd + 0.5);
  const std::int64_t unitsPerDay = RoundedUnits(1, places);
  // A time that rounds to midnight belongs to the next day, whose 00:00 the time text shows.
  if (RoundedUnits(jd + 0.5 - day, places) >= unitsPerDay) day += 1;
  double a = day;
  if (day >= 2299161) {
    const double alpha = std::trunc((day - 1867216.25) / 36524.25);
    a = day + 1 + alpha - std::trunc(alpha / 4);
  }
  const double b = a + 1524;
  const double c = std::trunc((b - 122.1) / 365.25);
  const double d = std::trunc(365.25 * c);
  const double e = std::trunc((b - d) / 30.6001);
  const int dayOfMonth = static_cast<int>(b - d - std::trunc(30.6001 * e));
  const int month = static_cast<int>(e < 13.5 ? e - 1 : e - 13);
  const int year = static_cast<int>(month > 2.5 ? c - 4716 : c - 4715);
  std::string text = std::to_string(year);
  if (text.size() < 4) text.insert(0, 4 - text.size(), ' ');
  text += ' ';
  text += months.substr(static_cast<std::size_t>(3 * month) - 1, 3);
  return text + ' ' + TwoDigit(dayOfMonth);
}

std::string TimeOfDayToString(double fraction, int places, bool colons) {
  const std::int64_t unitsPerSecond = RoundedUnits(1 / kSecondsPerDay, places);
  const std::int64_t units = RoundedUnits(fraction, places);
  const std::int64_t seconds = units / unitsPerSecond;
  const std::string colon = colons ? ":" : "";
  // Hour 24, which rounding can reach, is hour 0 of the next day.
  std::string text = TwoDigit(static_cast<int>(seconds / 3600 % 24)) + colon +
                     TwoDigit(static_cast<int>(seconds / 60 % 60)) + colon +
                     TwoDigit(static_cast<int>(seconds % 60));
  if (places > 0) {
    const std::string decimals = std::to_string(unitsPerSecond + units % unitsPerSecond);
    text += '.' + decimals.substr(1);
  }
  return text;
}

}  // namespace pelorin::orbit
