#pragma once

#include <limits>
#include <vector>

namespace pelorin::swath {

/// The moments that a decoder noted while it wrote a picture, one for each group of rows.
///
/// A weak signal damages them: many are lost, some are wrong. Rows of that time may be there, damaged, or
/// they may be left out of the picture; only the other stamps tell which.
struct LineStamps {
  std::vector<double> UnixS;  ///< seconds since 1970, UTC; what is no such time was lost
  int RowsPerStamp = 1;     ///< n: row i of a group, from −n/2 to n/2 − 1, was seen i rows from its stamp
  double RowS = 0;          ///< seconds from a row to the next; 0 when only the stamps tell
  bool RowIsExact = false;  ///< the instrument's own period; else the stamps know it better
  double MostJumpS = std::numeric_limits<double>::infinity();  ///< one alone does not jump farther
};

/// When each of a picture's rows was seen, seconds since 1970, UTC; they increase. NaN where that is not
/// known. `firstRow` is where its row 0 lies among the rows that the stamps are of.
///
/// Stamps that no recording could have are dropped: rows cannot follow each other faster than the instrument
/// turns. What is lost between two that are as far apart in time as in rows is filled in; where more time has
/// passed, rows were left out somewhere, and those between stay NaN. At the ends a few groups are added.
std::vector<double> MomentsOfRows(const LineStamps& stamps, double firstRow, int rows);

}  // namespace pelorin::swath
