#pragma once

#include <QString>

#include "orbit/date_time.h"

namespace pelorin::swath {

/// What the start of a recording is known from.
enum class StartFrom {
  Pass,        ///< the minute of its pass; no picture tells a better one
  NameMinute,  ///< the minute in the picture's name
  NameSecond,  ///< the second in the picture's name
};

/// What a received picture is a picture of: whose pass, when its lines were received, and how they are
/// stored. The pixels are somebody else's. A better guess at any of it is another Recording.
struct Recording {
  QString Satellite;       ///< its name; empty for none
  orbit::TDateTime Start;  ///< UTC of the first line, by the recorder's clock
  StartFrom StartIsFrom = StartFrom::Pass;
  double OffsetS = 0;         ///< to be added to Start: what that clock was off
  int Rows = 0, Columns = 0;  ///< of the picture; 0 while there is none
  bool SouthBound = true;     ///< stored as received; false: turned by 180°, as north-bound pictures are

  /// UTC of the first line.
  orbit::TDateTime FirstLine() const { return {Start.Days + OffsetS / orbit::kSecondsPerDay}; }
};

/// Both begin at the same second, by their recorders' clocks.
bool BeginTogether(const Recording& one, const Recording& other);

/// Both are of one pass of one satellite, and begin with the same line. The channels of a recording are the
/// same one, and so it is with another offset.
bool IsSameRecording(const Recording& one, const Recording& other);

/// The row in which a line lies that was received as number `line`, from 0. North-bound pictures are turned:
/// their first line is the last of their `rows`.
constexpr int RowOfLine(int line, int rows, bool southBound) { return southBound ? line : rows - 1 - line; }

}  // namespace pelorin::swath
