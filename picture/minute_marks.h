#pragma once

#include <QImage>
#include <optional>
#include <vector>

namespace pelorin::picture {

/// Lines a minute of the pictures that carry minute marks.
inline constexpr int kMarkedLinesPerMinute = 120;

/// Rows where the minute marks begin in the space band of a picture of the old format, in order; at least
/// two, or none when they cannot be told from noise.
///
/// A mark is four rows of the band once a minute: two black ones, then two white ones; in a dark band
/// the black ones, in a white band the white ones do not show. Where the white ones clearly come first, that
/// counts as the beginning. A mark counts only when another one lies a whole number of minutes away, to a row
/// or so. `picture` is Format_RGB32, as received: first line on top, not mirrored. The band are `columns`
/// columns from `firstColumn` on; what lies outside of the picture is left aside.
std::vector<int> FindMinuteMarks(const QImage& picture, int firstColumn, int columns);

/// Seconds to be added to the recorder's clock so that the marks lie on their second of the minute: more than
/// −30, up to 30. A clock that is off by more looks like one that is off by a minute less. `secondOfStart` is
/// that of row 0 by the recorder's clock, 0 … 60. `secondOfMarks` is when the spacecraft begins its marks:
/// they count its own minutes, which need not be ours. Those of NOAA 19 in May 2019 came 13 seconds after the
/// full minute, in two passes alike. Nothing for fewer than two marks.
std::optional<double> ClockOffsetFromMarks(const std::vector<int>& rows, double linesPerSecond,
                                           double secondOfStart, double secondOfMarks = 0);

}  // namespace pelorin::picture
