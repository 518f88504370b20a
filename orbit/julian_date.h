#pragma once

#include <string>

#include "orbit/date_time.h"

/// Julian dates: days, UTC, as doubles (a double near 2.45 million days resolves 0.00004 s).
namespace pelorin::orbit {

/// Julian date of January 0.0 of a year, that is 00:00 of 31 December of the year before (Meeus, 1991).
double JulianDateOfYear(int year);

/// Julian date of an element epoch "yyddd.dddddddd"; years 57 … 99 are 1957 … 1999, 00 … 56 are 2000 … 2056.
double JulianDateOfEpoch(double epoch);

/// The two parts of an element epoch: the four-digit year, and the day of the year with its fraction.
struct EpochParts {
  int Year;
  double Day;
};
EpochParts SplitEpoch(double epoch);

/// 1 … 366.
int DayOfYear(int year, int month, int day);

double FractionOfDay(int hour, int minute, int second, int hundredths);

/// Julian date of a moment, to the hundredth of a second (what is beyond is cut).
double JulianDateOfDateTime(TDateTime moment);

/// Julian date of a moment, as exactly as a double resolves it.
double JulianDateOfMoment(TDateTime moment);

TDateTime DateTimeOfJulianDate(double jd);

// Of the described interface; the program itself writes moments by FormatDateTime.

/// The calendar date as 11 characters, "2001 Nov 15", of a moment rounded to `places` decimals of a second
/// (Meeus, 1991).
std::string JulianDateToString(double jd, int places);

/// A fraction of a day as "hhnnss" or, with colons, "hh:nn:ss", seconds with `places` decimals.
std::string TimeOfDayToString(double fraction, int places, bool colons);

}  // namespace pelorin::orbit
