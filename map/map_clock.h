#pragma once

#include <QString>
#include <array>

#include "orbit/date_time.h"

/// Where the map's time comes from, and how fast it goes.
namespace pelorin::map {

/// The first step in real time comes at once, as the user sees it.
inline constexpr int kFirstStepMs = 200;

/// Seconds between steps that the menu offers, in its order. Settings may hold another number.
inline constexpr std::array<int, 6> kUpdateIntervals{60, 20, 10, 5, 2, 1};

/// Milliseconds between steps; a number of seconds that no timer can count is brought to what it can.
int StepIntervalMs(int updateIntervalS);

/// The time that a picture is named by: "mmddhhnn" at the beginning of its name, the year from the file's
/// modification date. Raises ConvertError when the name does not begin with a time, and FileError when there
/// is no such file.
orbit::TDateTime MapTimeOfPicture(const QString& path);

}  // namespace pelorin::map
