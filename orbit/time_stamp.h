#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orbit/date_time.h"

/// The times by which pictures are named, and times as they are stepped in a picker.
namespace pelorin::orbit {

/// The moment with its seconds cut off.
TDateTime CutToMinute(TDateTime moment);

/// The moment with what is less than a second cut off.
TDateTime CutToSecond(TDateTime moment);

/// "mmddhhnn".
std::string StampOf(TDateTime moment);

/// The time at the beginning of a picture's name, "mmddhhnn"; such names have no year. Raises ConvertError,
/// which tells the name.
TDateTime TimeOfStamp(std::string_view name, int year);

/// The seconds of a name that begins with "mmddhhnnss" and no further digit; nothing if it does not.
std::optional<int> SecondsOfStamp(std::string_view name);

/// The moment that two pickers show, to the minute, once the user has stepped one of them. A minute that was
/// stepped past the hour's end, in either direction, takes hour and date along; `before` is what they showed
/// until now.
TDateTime SteppedTime(TDateTime pickedDate, int hour, int minute, TDateTime before);

}  // namespace pelorin::orbit
