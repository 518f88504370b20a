#include "orbit/time_stamp.h"

#include <algorithm>

#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

constexpr std::size_t kStampToMinute = 8, kStampToSecond = 10;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

TDateTime CutToMinute(TDateTime moment) {
  const DateTimeFields fields = TakeApart(moment);
  return MakeDateTime(fields.Year, fields.Month, fields.Day, fields.Hour, fields.Minute);
}

TDateTime CutToSecond(TDateTime moment) {
  const DateTimeFields fields = TakeApart(moment);
  return MakeDateTime(fields.Year, fields.Month, fields.Day, fields.Hour, fields.Minute, fields.Second);
}

std::string StampOf(TDateTime moment) { return FormatDateTime("mmddhhnn", moment); }

TDateTime TimeOfStamp(std::string_view name, int year) {
  try {
    return ParseTimeString(name.substr(0, kStampToMinute), MakeDateTime(year, 1, 1));
  } catch (const ConvertError& error) {
    throw ConvertError("The name of " + std::string(name) +
                       " does not begin with a month, day, hour and minute as in 02231015.  " + error.what());
  }
}

std::optional<int> SecondsOfStamp(std::string_view name) {
  const auto end = std::find_if_not(name.begin(), name.end(), IsDigit);
  if (end - name.begin() != std::ptrdiff_t{kStampToSecond}) return std::nullopt;
  const int seconds = (name[kStampToMinute] - '0') * 10 + (name[kStampToMinute + 1] - '0');
  if (seconds > 59) return std::nullopt;
  return seconds;
}

TDateTime SteppedTime(TDateTime pickedDate, int hour, int minute, TDateTime before) {
  const DateTimeFields was = TakeApart(before);
  int minutes = hour * 60 + minute;
  if (hour == was.Hour && was.Minute == 59 && minute == 0) minutes += 60;
  if (hour == was.Hour && was.Minute == 0 && minute == 59) minutes -= 60;
  return {DatePart(pickedDate).Days + minutes / kMinutesPerDay};
}

}  // namespace pelorin::orbit
