#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "align/coast_strip.h"

/// Where a picture lies in the strip of ground that its satellite passed over: windows of the picture are
/// laid on every place of the strip, and vote for the places where a coast in the strip shows in them.
namespace pelorin::align {

/// A line that stands otherwise than it should.
struct AcrossMove {
  double UniformCells = 0;  ///< all columns are so much farther on in the strip
  double RollDeg = 0;
  /// What both come to: by how much each column of cells is farther on.
  std::vector<double> CellsOfColumn;
};

/// What is tried.
struct VoteGrid {
  /// By how much the swath's last column is farther on along the flight, in cells, and its first one less
  /// far; in order.
  std::vector<double> YawCells;
  /// Families of neighbours: the moves of one are in order, and nothing lies between two families.
  std::vector<std::vector<AcrossMove>> Across;
};

/// A place in the strip.
struct VotePeak {
  int Shift = 0;  ///< of the picture's first row, in cells from the strip's first row
  double YawCells = 0;
  AcrossMove Across;
  double Votes = 0;
};

struct ShiftVotes {
  std::vector<float> Best;  ///< for every shift, by the best of what is tried across and in yaw
  VotePeak Peak;            ///< within the shifts that are allowed
  /// Where the two halves of the windows, those of a chess board, have their peaks near it.
  int HalfShifts[2] = {0, 0};
  /// Windows of the picture that have a coast of the strip in them in the middle of what is allowed.
  int CoastWindows = 0;
};

/// Whether a picture is large enough for a window.
bool HasWindows(const PictureCells& picture);

/// Called with the share of the work that is done, 0 … 1; false ends the work.
using AfterStep = std::function<bool(double share)>;

/// The votes for all shifts at which the picture lies wholly in the strip, of one or more pictures of the
/// same lines, which have windows. `first` … `last` are those that are allowed. Nothing when the work was
/// ended.
std::optional<ShiftVotes> VotesInStrip(std::span<const PictureCells> pictures, const CellPlane& strip,
                                       const VoteGrid& grid, int first, int last, const AfterStep& afterStep);

}  // namespace pelorin::align
